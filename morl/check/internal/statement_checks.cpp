// SPDX-License-Identifier: MIT
// Statements.
#include "morl/ast/stage.h"
#include "morl/check/internal/pass_checker.h"
#include "morl/translator/internal/bindings.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ns_ruke {
namespace {

using Kind = ScopeEntry::Kind;

/// What follows the point of 'v.xy'; null for other expressions.
const MorlVariable* MemberOf(const MorlExpression& expression)
{
    if (expression.unitType != TOKEN_BINARY_OPERATION) {
        return nullptr;
    }
    const auto& operation = static_cast<const MorlBinaryOperation&>(expression);
    const bool isMember = operation.operatorToken == TOKEN_MEMBER && operation.right != nullptr &&
                          operation.right->unitType == TOKEN_IDENTIFIER;
    return isMember ? static_cast<const MorlVariable*>(operation.right) : nullptr;
}

}  // namespace

PassChecker::PassChecker(const PassCheckInput& newInput, WarningList& newWarnings)
    : input(newInput),
      warnings(newWarnings),
      flow(newWarnings, [this](int from, int wanted) { return DoesNodeBuildOn(from, wanted); })
{
    constexpr std::size_t kUsualTerms = 32;
    terms.reserve(kUsualTerms);
    values.reserve(kUsualTerms);
}

void PassChecker::Run()
{
    hasFaults =
        std::any_of(input.link.origins.begin(), input.link.origins.end(),
                    [](const LinkOrigin& origin) { return !origin.node->GetFaults().empty(); });
    hasLostCode =
        hasFaults || std::any_of(input.link.origins.begin(), input.link.origins.end(),
                                 [](const LinkOrigin& origin) {
                                     const MorlProgram* program = origin.node->Program();
                                     return program != nullptr && !program->lostCode.empty();
                                 });
    if (IsOfOtherStage()) {
        return;
    }
    const std::vector<MorlDeclare*>& outputs = input.linked.outputs;
    const auto isAutomatic = [](const MorlDeclare* output) {
        return BindingToken(output) == TOKEN_TEXAUTO;
    };
    hasAutoTexcoords = input.pass.stage == kVertexStage &&
                       std::any_of(outputs.begin(), outputs.end(), isAutomatic);
    DeclareGlobals(input.linked.inputs, &LinkOrigin::inputs, Kind::Input);
    DeclareGlobals(input.linked.outputs, &LinkOrigin::outputs, Kind::Output);
    DeclareGlobals(input.linked.uniforms, &LinkOrigin::uniforms, Kind::Uniform);
    CheckRepetitions();
    CheckCopies();
    scope.BeginBlock();
    const std::vector<MorlSentence*>& sentences = input.linked.mainFunction->sentences;
    std::size_t i = 0;
    for (std::size_t origin = 0; origin < input.link.origins.size(); ++origin) {
        node = static_cast<int>(origin);
        for (; i < input.link.origins[origin].sentences; ++i) {
            Statement(sentences[i]);
        }
    }
    CheckOutputs();
    CheckLimits();
    flow.Finish();
}

/// The number by which the values of a variable are followed. Where code is lost, what assigns or
/// reads it may be.
int PassChecker::Follow(const ScopeEntry& entry, bool isAssigned)
{
    return hasLostCode ? FlowChecker::kNotFollowed : flow.Declare(entry, isAssigned);
}

void PassChecker::CheckName(std::string_view name, std::uint32_t offset)
{
    if (IsReservedWord(name, input.target)) {
        Warn(CheckKind::ReservedName, offset, name);
    }
}

void PassChecker::DeclareLocal(const std::string& name, ENUM_TOKEN token, bool isArray,
                               std::uint32_t offset, Kind kind, bool isAssigned)
{
    CheckName(name, offset);
    const ValueType type = KeywordMap::TypeOf(token);
    if (type.base == ValueBase::Int && type.IsVector()) {
        Warn(CheckKind::IntVector, offset, std::string(KeywordMap::WordOf(type)));
    }
    ScopeEntry entry = {name, kind, type, isArray, false, node, offset};
    entry.variable = kind == Kind::Local ? Follow(entry, isAssigned) : entry.variable;
    const ScopeEntry* other = scope.Declare(entry);
    const bool isRepeated =
        other != nullptr && (other->depth == scope.Depth() || other->kind == Kind::Input ||
                             other->kind == Kind::Output);
    if (isRepeated) {
        Warn(CheckKind::RepeatedName, offset, name, HintOfRepetition(*other, offset));
    } else if (other != nullptr && other->kind == Kind::Uniform) {
        Warn(CheckKind::HiddenUniform, offset, name);
    }
    if (name[0] == 'i' || name[0] == 'r') {
        CheckCopied(name, offset);
    }
}

/// Where a name is declared already; for one that a '#for' repeats, how to tell them apart.
std::string PassChecker::HintOfRepetition(const ScopeEntry& other, std::uint32_t offset) const
{
    if (other.node == node && other.offset == offset) {
        return "; a '#for' repeats it: put its counter into the name";
    }
    return other.node == node ? std::string()
                              : "; '" + warnings.NodeName(other.node) + "' declares it, too";
}

void PassChecker::Statements(const std::vector<MorlSentence*>& sentences)
{
    scope.BeginBlock();
    for (const MorlSentence* sentence : sentences) {
        Statement(sentence);
    }
    scope.EndBlock();
}

void PassChecker::Statement(const MorlSentence* sentence)
{
    flow.NextStatement();
    switch (sentence != nullptr ? sentence->unitType : TOKEN_NONE) {
    case TOKEN_DEFINITION_SENTENCE: {
        const auto& definition = static_cast<const MorlDefinitionSentence&>(*sentence);
        Expression(definition.arraySize);
        DeclareLocal(definition.name, definition.varType, definition.arraySize != nullptr,
                     definition.offset, Kind::Local, false);
        break;
    }
    case TOKEN_ASSIGN:
        Assignment(static_cast<const MorlAssignSentence&>(*sentence), Kind::Local);
        break;
    case TOKEN_IF:
    case TOKEN_ELSE:
        If(static_cast<const MorlIfSentence&>(*sentence));
        break;
    case TOKEN_FOR:
        For(static_cast<const MorlForSentence&>(*sentence));
        break;
    case TOKEN_SPECIAL_SENTENCE:
        flow.Discard();
        break;
    default:
        break;
    }
}

void PassChecker::Assignment(const MorlAssignSentence& assignment, Kind kind)
{
    const MorlExpression* target = assignment.target;
    const bool declares = assignment.varType != TOKEN_NONE;
    ScopeEntry* entry = target != nullptr && !declares ? AssignedEntry(*target) : nullptr;
    const int variable = entry != nullptr ? entry->variable : FlowChecker::kNotFollowed;
    flow.BeginAssignment(variable);
    declaredName = declares && target != nullptr && target->unitType == TOKEN_IDENTIFIER
                       ? std::string_view(static_cast<const MorlVariable*>(target)->name)
                       : std::string_view();
    isInitialiser = declares && assignment.value != nullptr &&
                    assignment.value->unitType == TOKEN_FUNCTION_CALL;
    const ValueType value = Expression(assignment.value);
    isInitialiser = false;
    declaredName = {};
    if (target == nullptr) {
        return;
    }
    if (!declares) {
        CheckAssigned(assignment, Target(*target, entry), value);
        flow.EndAssignment(variable, AssignedComponents(*target),
                           assignment.operatorToken != TOKEN_ASSIGN, {node, target->offset});
    } else if (target->unitType == TOKEN_IDENTIFIER) {
        CheckAssigned(assignment, KeywordMap::TypeOf(assignment.varType), value);
        DeclareLocal(static_cast<const MorlVariable*>(target)->name, assignment.varType, false,
                     target->offset, kind, true);
    }
}

void PassChecker::CheckAssigned(const MorlAssignSentence& assignment, ValueType target,
                                ValueType value)
{
    if (!target.IsNumeric() || !value.IsNumeric() || assignment.value == nullptr) {
        return;
    }
    CheckInt(*assignment.value, value, target);
    if (target.base == ValueBase::Int && value.base == ValueBase::Float) {
        Warn(CheckKind::FloatForInt, assignment.value->offset);
    }
    const bool mayWiden = assignment.operatorToken != TOKEN_ASSIGN && value.IsNumber();
    if (target.IsMatrix() || value.IsMatrix() || target.rows == value.rows || mayWiden) {
        return;
    }
    Warn(CheckKind::WidthMismatch, assignment.offset,
         "a '" + std::string(KeywordMap::WordOf(target)) + "' is given a '" +
             std::string(KeywordMap::WordOf(value)) + "'");
}

/// The variable that is assigned, or has an element or a member assigned; null: not known.
ScopeEntry* PassChecker::AssignedEntry(const MorlExpression& target)
{
    const MorlExpression* base = &target;
    while (base != nullptr &&
           (base->unitType == TOKEN_BINARY_OPERATION || base->unitType == TOKEN_UNARY_OPERATION)) {
        base = base->unitType == TOKEN_UNARY_OPERATION
                   ? static_cast<const MorlUnaryOperation*>(base)->operand
                   : static_cast<const MorlBinaryOperation*>(base)->left;
    }
    assignedName = base;
    if (base == nullptr || base->unitType != TOKEN_IDENTIFIER) {
        return nullptr;
    }
    ScopeEntry* entry = scope.Find(static_cast<const MorlVariable*>(base)->name);
    if (entry == nullptr) {
        return nullptr;
    }
    entry->isWritten = true;
    if (entry->kind == Kind::Uniform) {
        Warn(CheckKind::AssignedUniform, base->offset, entry->name);
    }
    if (entry->isArray && base == &target) {
        Warn(CheckKind::WholeArray, base->offset, entry->name);
    }
    if (entry->kind == Kind::LoopVariable && !isStep) {
        Warn(CheckKind::LoopForm, base->offset, {}, "; leave its counter alone in its body");
    }
    return entry;
}

/// The type of what is assigned.
ValueType PassChecker::Target(const MorlExpression& target, const ScopeEntry* entry)
{
    if (target.unitType == TOKEN_UNARY_OPERATION) {
        return Expression(static_cast<const MorlUnaryOperation&>(target).operand);
    }
    if (const MorlVariable* member = MemberOf(target)) {
        CheckOnce(*member);
    }
    const bool isPlain = entry != nullptr && !entry->isArray && target.unitType == TOKEN_IDENTIFIER;
    return isPlain ? entry->type : Expression(&target);
}

/// What part of a variable gets a new value. An element that is computed counts as all of it.
FlowChecker::Components PassChecker::AssignedComponents(const MorlExpression& target) const
{
    const MorlVariable* member = MemberOf(target);
    const bool isWhole =
        member == nullptr || static_cast<const MorlBinaryOperation&>(target).left != assignedName;
    return isWhole ? FlowChecker::kAll : FlowChecker::ComponentsOf(member->name);
}

/// A target takes each component once.
void PassChecker::CheckOnce(const MorlVariable& member)
{
    const std::string& name = member.name;
    for (std::size_t i = 1; i < name.size(); ++i) {
        if (name.find(name[i]) < i) {
            Warn(CheckKind::RepeatedComponent, member.offset, name);
            return;
        }
    }
}

void PassChecker::If(const MorlIfSentence& sentence)
{
    const ValueType condition = Expression(sentence.condition);
    if (condition.IsNumeric() && condition.base != ValueBase::Bool) {
        Warn(CheckKind::ConditionType, sentence.offset);
    }
    FlowChecker::If branch = flow.BeginIf();
    Statements(sentence.sentences);
    flow.BeginElse(branch);
    Statements(sentence.elseSentences);
    flow.EndIf(branch);
}

void PassChecker::For(const MorlForSentence& sentence)
{
    scope.BeginBlock();
    const std::size_t outside = scope.Entries().size();
    if (sentence.init != nullptr && sentence.init->unitType == TOKEN_ASSIGN) {
        Assignment(static_cast<const MorlAssignSentence&>(*sentence.init), Kind::LoopVariable);
    }
    flow.BeginLoop();
    flow.NextStatement();
    Expression(sentence.condition);
    const bool hasCounter = scope.Entries().size() > outside;
    CheckLoop(sentence, hasCounter ? &scope.Entries().back() : nullptr);
    Statements(sentence.sentences);
    if (sentence.step != nullptr) {
        flow.NextStatement();
        isStep = true;
        Assignment(*sentence.step, Kind::Local);
        isStep = false;
    }
    flow.EndLoop();
    scope.EndBlock();
}

// What WebGL and many devices take is set out in appendix A of the standard of GLSL ES 1.00: a
// counter of the loop's own, constants, and no other change of the counter. A loop whose end is
// computed has a warning of its own.
void PassChecker::CheckLoop(const MorlForSentence& sentence, const ScopeEntry* counter)
{
    if (DependsOnData(sentence.condition)) {
        Warn(CheckKind::LoopBound, sentence.offset);
        return;
    }
    if (counter == nullptr) {
        Warn(CheckKind::LoopForm, sentence.offset, {}, "; begin it with 'int i = 0'");
        return;
    }
    const std::string_view name = counter->name;
    const auto& init = static_cast<const MorlAssignSentence&>(*sentence.init);
    if (DependsOnData(init.value, kAndCounters)) {
        Warn(CheckKind::LoopForm, init.value->offset, {}, "; begin at a constant");
        return;
    }
    CheckLoopCondition(sentence, name);
    if (sentence.step == nullptr || sentence.step->target == nullptr) {
        return;
    }
    const MorlExpression& target = *sentence.step->target;
    const MorlExpression* stepped = target.unitType == TOKEN_UNARY_OPERATION
                                        ? static_cast<const MorlUnaryOperation&>(target).operand
                                        : &target;
    const ENUM_TOKEN token = sentence.step->operatorToken;
    const bool isOwn = stepped != nullptr && stepped->unitType == TOKEN_IDENTIFIER &&
                       static_cast<const MorlVariable*>(stepped)->name == name;
    const bool isSum =
        token == TOKEN_NONE || token == TOKEN_PLUS_ASSIGN || token == TOKEN_MINUS_ASSIGN;
    if (!isOwn || !isSum ||
        (token != TOKEN_NONE && DependsOnData(sentence.step->value, kAndCounters))) {
        Warn(CheckKind::LoopForm, target.offset, {},
             "; step by 'i++', 'i--', 'i += CONSTANT' or 'i -= CONSTANT'");
    }
}

/// The counter, a comparison, and a constant.
void PassChecker::CheckLoopCondition(const MorlForSentence& sentence, std::string_view counter)
{
    const std::size_t first = terms.size();
    AppendTerms(sentence.condition, terms);
    const auto isCounter = [counter](const Term& term) {
        return term.operand->unitType == TOKEN_IDENTIFIER && term.minusSigns == 0 &&
               static_cast<const MorlVariable*>(term.operand)->name == counter;
    };
    bool isPlain = terms.size() > first + 1 && isCounter(terms[first]);
    for (std::size_t i = first + 1; i < terms.size(); ++i) {
        const bool isComparison =
            terms[i].operatorToken >= TOKEN_LESS && terms[i].operatorToken <= TOKEN_NOT_EQUAL;
        const bool isCalculation =
            terms[i].operatorToken >= TOKEN_PLUS && terms[i].operatorToken <= TOKEN_MODULO;
        isPlain = isPlain && (i == first + 1 ? isComparison : isCalculation) &&
                  !DependsOnData(terms[i].operand, kAndCounters);
    }
    terms.resize(first);
    if (!isPlain) {
        Warn(CheckKind::LoopForm, sentence.condition->offset, {},
             "; compare its counter with a constant, as in 'i < 8'");
    }
}

}  // namespace ns_ruke
