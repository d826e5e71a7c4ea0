// SPDX-License-Identifier: MIT
// The names and the types of expressions, as far as they can be known.
#include "morl/ast/stage.h"
#include "morl/check/internal/hint_words.h"
#include "morl/check/internal/lost_code_checks.h"
#include "morl/check/internal/pass_checker.h"
#include "morl/core/nearest.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
#include <set>
#include <string_view>

namespace ns_ruke {
namespace {

/// How tightly the targets bind an operator; the loosest is 0.
int LevelOf(ENUM_TOKEN token)
{
    switch (token) {
    case TOKEN_AND:
    case TOKEN_OR:
        return 0;
    case TOKEN_PLUS:
    case TOKEN_MINUS:
        return 2;
    case TOKEN_MULTIPLY:
    case TOKEN_DIVIDE:
    case TOKEN_MODULO:
        return 3;
    default:
        return 1;
    }
}

/// Whether a comparison takes the outcome of another one for a number.
bool IsChained(ENUM_TOKEN token, ValueType left, ValueType right)
{
    const bool areBoth = left.base == ValueBase::Bool && right.base == ValueBase::Bool;
    const bool isEquality = token == TOKEN_EQUAL || token == TOKEN_NOT_EQUAL;
    return (left.base == ValueBase::Bool || right.base == ValueBase::Bool) &&
           !(areBoth && isEquality);
}

const MorlExpression* WithoutParentheses(const MorlExpression* expression)
{
    while (expression != nullptr && expression->unitType == TOKEN_PARENTHESISE_EXPRESSION) {
        expression = static_cast<const MorlParenthesiseExpression*>(expression)->expression;
    }
    return expression;
}

bool IsMultiplyCall(const MorlExpression& expression)
{
    return expression.unitType == TOKEN_FUNCTION_CALL &&
           static_cast<const MorlFunctionCall&>(expression).functionToken == TOKEN_MUL;
}

/// Whether an integer is divided by one that leaves a rest.
bool HasRemainder(const MorlExpression& left, const MorlExpression& right)
{
    if (left.unitType != TOKEN_NUMBER || right.unitType != TOKEN_NUMBER) {
        return false;
    }
    const std::string& dividend = static_cast<const MorlNumber&>(left).value;
    const std::string& divisor = static_cast<const MorlNumber&>(right).value;
    if ((dividend + divisor).find('.') != std::string::npos) {
        return false;
    }
    const long long by = std::strtoll(divisor.c_str(), nullptr, 10);
    return by != 0 && std::strtoll(dividend.c_str(), nullptr, 10) % by != 0;
}

/// The local variable that a statement declares; empty: none.
std::string_view LocalOf(const MorlSentence* sentence)
{
    if (sentence == nullptr) {
        return {};
    }
    if (sentence->unitType == TOKEN_DEFINITION_SENTENCE) {
        return static_cast<const MorlDefinitionSentence*>(sentence)->name;
    }
    if (sentence->unitType != TOKEN_ASSIGN) {
        return {};
    }
    const auto* assignment = static_cast<const MorlAssignSentence*>(sentence);
    const MorlExpression* target = assignment->target;
    const bool declares = assignment->varType != TOKEN_NONE && target != nullptr &&
                          target->unitType == TOKEN_IDENTIFIER;
    return declares ? std::string_view(static_cast<const MorlVariable*>(target)->name)
                    : std::string_view();
}

/// The statement that declares a local variable, in blocks, too; null: none.
const MorlSentence* FindLocal(const std::vector<MorlSentence*>& sentences, std::string_view name)
{
    for (const MorlSentence* sentence : sentences) {
        if (sentence == nullptr) {
            continue;
        }
        if (LocalOf(sentence) == name) {
            return sentence;
        }
        const MorlSentence* inner = nullptr;
        if (sentence->unitType == TOKEN_IF || sentence->unitType == TOKEN_ELSE) {
            const auto& branch = static_cast<const MorlIfSentence&>(*sentence);
            inner = FindLocal(branch.sentences, name);
            inner = inner != nullptr ? inner : FindLocal(branch.elseSentences, name);
        } else if (sentence->unitType == TOKEN_FOR) {
            const auto& loop = static_cast<const MorlForSentence&>(*sentence);
            inner = LocalOf(loop.init) == name ? loop.init : FindLocal(loop.sentences, name);
        }
        if (inner != nullptr) {
            return inner;
        }
    }
    return nullptr;
}

/// What stands in for a variable that GLSL has built in.
std::string HintForBuiltIn(std::string_view name)
{
    if (name == "gl_Position") {
        return "; assign an output: 'out float4 oProjPos : SV_Position;'";
    }
    return name == "gl_FragColor" || name == "gl_FragData"
               ? "; assign an output: 'out float4 oColor : COLOR0;'"
               : "; hand its value on from the vertex pass, or set it as a uniform";
}

}  // namespace

bool HasOperator(const MorlExpression* expression, std::initializer_list<ENUM_TOKEN> operators)
{
    if (expression == nullptr || expression->unitType != TOKEN_BINARY_OPERATION) {
        return false;
    }
    const auto& operation = static_cast<const MorlBinaryOperation&>(*expression);
    if (operation.operatorToken == TOKEN_INDEX) {
        return false;
    }
    const bool isOne =
        operation.left != nullptr &&
        std::find(operators.begin(), operators.end(), operation.operatorToken) != operators.end();
    return isOne || HasOperator(operation.left, operators) ||
           HasOperator(operation.right, operators);
}

ValueType PassChecker::Expression(const MorlExpression* expression)
{
    if (expression == nullptr) {
        return {};
    }
    if (expression->unitType != TOKEN_BINARY_OPERATION) {
        return Operand(*expression);
    }
    // Most operations are a member of a variable, which needs no list of terms.
    const auto& operation = static_cast<const MorlBinaryOperation&>(*expression);
    if (operation.operatorToken == TOKEN_MEMBER && operation.left != nullptr &&
        operation.left->unitType == TOKEN_IDENTIFIER && operation.right != nullptr &&
        operation.right->unitType == TOKEN_IDENTIFIER) {
        const auto& member = static_cast<const MorlVariable&>(*operation.right);
        return Member(Variable(static_cast<const MorlVariable&>(*operation.left),
                               FlowChecker::ComponentsOf(member.name)),
                      member);
    }
    const std::size_t outerAt = at;
    const std::size_t outerEnd = end;
    at = terms.size();
    const std::size_t first = at;
    AppendTerms(expression, terms);
    end = terms.size();
    const ValueType type = at < end ? Operations(0) : ValueType();
    terms.resize(first);
    at = outerAt;
    end = outerEnd;
    return type;
}

// The terms from here on that operators of this level and tighter ones connect.
ValueType PassChecker::Operations(int level)
{
    const MorlExpression* const leftOperand = terms[at].operand;
    ValueType value = Postfix();
    while (at < end && LevelOf(terms[at].operatorToken) >= level) {
        const Term term = terms[at];
        const ValueType right = Operations(LevelOf(term.operatorToken) + 1);
        value = Combine(term, value, right, *leftOperand);
    }
    return value;
}

// An operand with its members.
ValueType PassChecker::Postfix()
{
    const MorlExpression& operand = *terms[at].operand;
    if (terms[at].minusSigns + (terms[at].operatorToken == TOKEN_MINUS ? 1 : 0) > 1) {
        Warn(CheckKind::DoubleMinus, operand.offset);
    }
    ++at;
    ValueType value = operand.unitType == TOKEN_IDENTIFIER
                          ? Variable(static_cast<const MorlVariable&>(operand), NextComponents())
                          : Operand(operand);
    while (at < end && terms[at].operatorToken == TOKEN_MEMBER) {
        const MorlExpression& member = *terms[at].operand;
        ++at;
        if (IsMultiplyCall(operand)) {
            Warn(CheckKind::MulMember, operand.offset);
        }
        value = Member(value, member);
    }
    return value;
}

/// The components of the operand that the next term reads.
FlowChecker::Components PassChecker::NextComponents() const
{
    const bool isMember = at < end && terms[at].operatorToken == TOKEN_MEMBER &&
                          terms[at].operand->unitType == TOKEN_IDENTIFIER;
    return isMember ? FlowChecker::ComponentsOf(
                          static_cast<const MorlVariable*>(terms[at].operand)->name)
                    : FlowChecker::kAll;
}

ValueType PassChecker::Member(ValueType value, const MorlExpression& member)
{
    if (member.unitType != TOKEN_IDENTIFIER) {
        return {};
    }
    const std::string& name = static_cast<const MorlVariable&>(member).name;
    for (const ScopeEntry& entry : componentNames) {
        if (entry.name == name) {
            warnings.Add(CheckKind::CopiedName, entry.node, entry.offset, entry.name);
        }
    }
    CheckMember(value, name, member.offset);
    if (!value.IsVector()) {
        return {};
    }
    const std::size_t count = name.size();
    return count <= 4 ? ValueType{value.base, static_cast<std::uint8_t>(count), 1} : ValueType();
}

void PassChecker::CheckMember(ValueType value, const std::string& name, std::uint32_t offset)
{
    const bool isScalar = value.base == ValueBase::Float && value.IsNumber();
    if (!isScalar && !value.IsVector()) {
        return;
    }
    if (name.find_first_not_of("stpq") == std::string::npos) {
        Warn(CheckKind::ComponentNames, offset, name);
        return;
    }
    const FlowChecker::Components read = FlowChecker::ComponentsOf(name);
    const bool areMixed = name.find_first_not_of("xyzw") != std::string::npos &&
                          name.find_first_not_of("rgba") != std::string::npos;
    if (name.size() > 4 || areMixed || read >= 1U << value.rows) {
        Warn(CheckKind::ComponentRange, offset, name,
             name.size() > 4 ? "; there are four at most"
             : areMixed      ? "; they are 'xyzw' or 'rgba', one or the other"
                             : "; it is a '" + std::string(KeywordMap::WordOf(value)) + "'");
        return;
    }
    if (isScalar) {
        Warn(CheckKind::ScalarMember, offset, name);
    }
}

ValueType PassChecker::Operand(const MorlExpression& operand)
{
    switch (operand.unitType) {
    case TOKEN_IDENTIFIER:
        return Variable(static_cast<const MorlVariable&>(operand));
    case TOKEN_NUMBER: {
        const std::string& value = static_cast<const MorlNumber&>(operand).value;
        const bool isFloat = value.find('.') != std::string::npos;
        return {isFloat ? ValueBase::Float : ValueBase::Int, 1, 1};
    }
    case TOKEN_PARENTHESISE_EXPRESSION:
        return Expression(static_cast<const MorlParenthesiseExpression&>(operand).expression);
    case TOKEN_FUNCTION_CALL:
        return Call(static_cast<const MorlFunctionCall&>(operand));
    case TOKEN_UNARY_OPERATION:
        Warn(CheckKind::PostfixValue, operand.offset);
        return Expression(static_cast<const MorlUnaryOperation&>(operand).operand);
    case TOKEN_BINARY_OPERATION:
        return Index(static_cast<const MorlBinaryOperation&>(operand));
    default:
        return {};
    }
}

ValueType PassChecker::Variable(const MorlVariable& variable, FlowChecker::Components components)
{
    ScopeEntry* entry = scope.Find(variable.name);
    if (entry == nullptr) {
        ReportUnknownName(variable);
        return {};
    }
    entry->isRead = true;
    if (&variable != assignedName) {
        flow.Read(entry->variable, components, {node, variable.offset});
    }
    return entry->isArray ? ValueType() : entry->type;
}

// After a parse fault the lost code may hold the declaration; say nothing.
void PassChecker::ReportUnknownName(const MorlVariable& variable)
{
    const std::string& name = variable.name;
    const std::string written = WordAt(variable.offset);
    for (const std::string* word : {&name, &written}) {
        if (input.pass.macros.count(*word) > 0 || input.link.usedMacros.count(*word) > 0) {
            Warn(CheckKind::MacroAsValue, variable.offset, *word);
            return;
        }
    }
    if (hasFaults || !toldNames.emplace(node, name).second) {
        return;
    }
    Warn(CheckKind::UndeclaredName, variable.offset, name,
         written == name || written.empty() ? HintForUnknown(name)
                                            : "; a '#for' has made it of '" + written +
                                                  "', which has the name of its macro in it");
}

/// The name at a place of the node, as its author has written it. A '#for' writes others.
std::string PassChecker::WordAt(std::uint32_t offset) const
{
    const std::string& content = input.link.origins[static_cast<std::size_t>(node)].node->Content();
    const std::size_t first = std::min<std::size_t>(offset, content.size());
    std::size_t last = first;
    while (last < content.size() && (IsWordCharacter(content[last]) || content[last] == '#')) {
        ++last;
    }
    return content.substr(first, last - first);
}

/// Where a name that is not declared may be: a letter away, or in another node.
std::string PassChecker::HintForUnknown(const std::string& name)
{
    if (!warnings.WantsHint()) {
        return {};
    }
    const std::string foreign = HintInWords(name);
    if (!foreign.empty()) {
        return "; " + foreign;
    }
    std::string dropped = HintOfDropped(name);
    if (!dropped.empty()) {
        return dropped;
    }
    if (name == declaredName) {
        return "; its own initial value cannot read it";
    }
    std::vector<std::string_view> names;
    for (const ScopeEntry& entry : scope.Entries()) {
        names.push_back(entry.name);
    }
    const std::string nearest = NearestName(names, name);
    std::string meant = DidYouMean(nearest, "; ");
    // One letter more or less is a slip.
    if (!nearest.empty() && nearest.size() + 1 >= name.size() &&
        nearest.size() <= name.size() + 1) {
        return meant;
    }
    std::string below = HintOfOwnNode(name);
    if (!below.empty()) {
        return below;
    }
    std::string later = HintOfLaterNode(name);
    if (!later.empty()) {
        return later;
    }
    const std::string declaring =
        input.index.FindDeclaring(input.nodes, name, input.pass.stage, input.pass.nodeNames);
    const std::string& here = input.link.origins[static_cast<std::size_t>(node)].node->Name();
    if (!declaring.empty() && !BuildsOn(declaring, here)) {
        return "; add the node '" + declaring + "', which declares it";
    }
    if (name.compare(0, 3, "gl_") == 0) {
        return HintForBuiltIn(name);
    }
    if (name[0] == '#' &&
        name.find_first_not_of("0123456789abcdefABCDEF", 1) != std::string::npos) {
        return "; macros are set by '$NAME = VALUE;'";
    }
    if (name[0] == '#') {
        return "; a colour is a vector, as 'float3(1.0, 0.0, 0.0)'";
    }
    return meant.empty() ? "; give it a type, or declare it as 'uniform'" : meant;
}

/// A comparison that stands where the name was to be given a value.
std::string PassChecker::HintOfDropped(const std::string& name) const
{
    const MorlNode& here = *input.link.origins[static_cast<std::size_t>(node)].node;
    const MorlLostCode* dropped = FindDropped(here, name);
    if (dropped == nullptr) {
        return {};
    }
    const std::size_t next = here.Content().find_first_not_of(" \t", dropped->offset + name.size());
    return next == std::string::npos || here.Content().compare(next, 2, "==") != 0
               ? ""
               : "; line " + std::to_string(here.PlaceOf(dropped->offset).line) +
                     " does not declare it: '=' assigns";
}

/// A local variable of this name that the node itself declares, in a block or too late.
std::string PassChecker::HintOfOwnNode(const std::string& name) const
{
    const std::vector<LinkOrigin>& origins = input.link.origins;
    const auto here = static_cast<std::size_t>(node);
    const std::vector<MorlSentence*>& all = input.linked.mainFunction->sentences;
    const std::size_t first = here == 0 ? 0 : origins[here - 1].sentences;
    const std::vector<MorlSentence*> own(
        all.begin() + static_cast<std::ptrdiff_t>(first),
        all.begin() + static_cast<std::ptrdiff_t>(origins[here].sentences));
    const MorlSentence* declaration = FindLocal(own, name);
    return declaration == nullptr
               ? ""
               : "; what the node's line " +
                     std::to_string(origins[here].node->PlaceOf(declaration->offset).line) +
                     " declares can be used below it, up to the end of its block";
}

/// A local variable of this name that a node of the pass declares, but too late.
std::string PassChecker::HintOfLaterNode(const std::string& name) const
{
    const std::vector<LinkOrigin>& origins = input.link.origins;
    const std::vector<MorlSentence*>& sentences = input.linked.mainFunction->sentences;
    const LinkOrigin& here = origins[static_cast<std::size_t>(node)];
    for (std::size_t i = static_cast<std::size_t>(node) + 1; i < origins.size(); ++i) {
        const auto first =
            sentences.begin() + static_cast<std::ptrdiff_t>(origins[i - 1].sentences);
        const auto last = sentences.begin() + static_cast<std::ptrdiff_t>(origins[i].sentences);
        const bool declaresIt = std::any_of(
            first, last, [&](const MorlSentence* sentence) { return LocalOf(sentence) == name; });
        if (!declaresIt) {
            continue;
        }
        const std::string& later = origins[i].node->Name();
        return BuildsOn(later, here.node->Name())
                   ? "; '" + later + "', which declares it, builds on this node, so it comes later"
                   : "; '" + later + "', which declares it, comes later: build on it ('ref')";
    }
    return {};
}

bool PassChecker::DoesNodeBuildOn(int from, int wanted) const
{
    return BuildsOn(warnings.NodeName(from), warnings.NodeName(wanted));
}

/// Whether a node refers to another one, or to one that does. References to no node do not count.
bool PassChecker::BuildsOn(const std::string& from, const std::string& wanted) const
{
    std::set<std::string> seen = {from};
    std::vector<std::string> waiting = {from};
    while (!waiting.empty()) {
        const auto found = input.nodes.find(waiting.back());
        waiting.pop_back();
        if (found == input.nodes.end() || found->second == nullptr) {
            continue;
        }
        for (const std::string& reference : found->second->References()) {
            if (reference == wanted) {
                return true;
            }
            if (seen.insert(reference).second) {
                waiting.push_back(reference);
            }
        }
    }
    return false;
}

ValueType PassChecker::Index(const MorlBinaryOperation& operation)
{
    const bool isName = operation.left != nullptr && operation.left->unitType == TOKEN_IDENTIFIER;
    const std::string name =
        isName ? static_cast<const MorlVariable*>(operation.left)->name : std::string();
    ScopeEntry* found = isName ? scope.Find(name) : nullptr;
    const bool isArray = found != nullptr && found->isArray;
    if (isArray) {
        found->isRead = true;
        if (operation.left != assignedName) {
            flow.Read(found->variable, FlowChecker::kAll, {node, operation.left->offset});
        }
    }
    const ValueType indexed = isArray ? found->type : Expression(operation.left);
    if (Expression(operation.right).base == ValueBase::BoneIndex) {
        Warn(CheckKind::BoneIndex, operation.right->offset, "an index of bones");
    }
    if (isArray) {
        if (input.pass.stage == kFragmentStage && DependsOnData(operation.right)) {
            Warn(CheckKind::ComputedIndex, operation.offset, name);
        }
        return indexed;
    }
    if (indexed.IsMatrix()) {
        Warn(CheckKind::MatrixIndex, operation.offset);
        return {ValueBase::Float, indexed.columns, 1};
    }
    return indexed.IsVector() ? ValueType{indexed.base, 1, 1} : ValueType();
}

// Whether the value is more than constants and, unless they count, the variables of loops. A name
// that is not declared has a warning of its own.
bool PassChecker::DependsOnData(const MorlExpression* expression, bool countsCounters)
{
    expression = WithoutParentheses(expression);
    if (expression == nullptr) {
        return false;
    }
    switch (expression->unitType) {
    case TOKEN_IDENTIFIER: {
        const ScopeEntry* entry = scope.Find(static_cast<const MorlVariable*>(expression)->name);
        return entry != nullptr &&
               (countsCounters || entry->kind != ScopeEntry::Kind::LoopVariable);
    }
    case TOKEN_BINARY_OPERATION: {
        const auto& operation = static_cast<const MorlBinaryOperation&>(*expression);
        const bool isMember = operation.operatorToken == TOKEN_MEMBER;
        return DependsOnData(operation.left, countsCounters) ||
               (!isMember && DependsOnData(operation.right, countsCounters));
    }
    case TOKEN_FUNCTION_CALL: {
        const auto& arguments = static_cast<const MorlFunctionCall*>(expression)->arguments;
        return std::any_of(arguments.begin(), arguments.end(), [&](const MorlExpression* one) {
            return DependsOnData(one, countsCounters);
        });
    }
    default:
        return false;
    }
}

ValueType PassChecker::Combine(const Term& term, ValueType left, ValueType right,
                               const MorlExpression& leftOperand)
{
    switch (LevelOf(term.operatorToken)) {
    case 0:
        return kBool;
    case 1:
        if (IsChained(term.operatorToken, left, right)) {
            Warn(CheckKind::ChainedCompare, term.offset);
        } else if (left.IsVector() || right.IsVector()) {
            Warn(CheckKind::VectorCompare, term.offset);
        } else {
            CheckInt(*term.operand, right, left);
            CheckInt(leftOperand, left, right);
        }
        return kBool;
    default:
        return CombineNumbers(term, left, right, leftOperand);
    }
}

ValueType PassChecker::CombineNumbers(const Term& term, ValueType left, ValueType right,
                                      const MorlExpression& leftOperand)
{
    const ENUM_TOKEN token = term.operatorToken;
    const bool isTorn = token == TOKEN_DIVIDE || (token == TOKEN_MULTIPLY && !left.IsNumber());
    if (isTorn && IsMultiplyCall(*term.operand)) {
        Warn(CheckKind::MulOperand, term.operand->offset);
    }
    if (token == TOKEN_MODULO) {
        Warn(CheckKind::Modulo, term.offset);
    }
    if (token == TOKEN_DIVIDE && left.base == ValueBase::Int &&
        HasRemainder(leftOperand, *term.operand)) {
        Warn(CheckKind::IntDivision, term.offset);
    }
    if (!left.IsNumeric() || !right.IsNumeric()) {
        return {};
    }
    if (left.IsMatrix() || right.IsMatrix()) {
        if (token == TOKEN_MULTIPLY && !left.IsNumber() && !right.IsNumber()) {
            const bool areMatrices = left.IsMatrix() && right.IsMatrix();
            Warn(areMatrices ? CheckKind::MatrixProduct : CheckKind::VectorTimesMatrix,
                 term.offset);
        }
        return left.IsMatrix() && !right.IsVector() ? left : right;
    }
    CheckInt(*term.operand, right, left);
    CheckInt(leftOperand, left, right);
    if (left.IsVector() && right.IsVector() && left.rows != right.rows) {
        Warn(CheckKind::WidthMismatch, term.offset,
             "a '" + std::string(KeywordMap::WordOf(left)) + "' meets a '" +
                 std::string(KeywordMap::WordOf(right)) + "'");
    }
    const ValueBase base = left.base == right.base ? left.base : ValueBase::Float;
    return {base, std::max(left.rows, right.rows), 1};
}

void PassChecker::WarnOfInt(const MorlExpression& operand)
{
    const MorlExpression& inner = *WithoutParentheses(&operand);
    std::string name = "this value";
    if (inner.unitType == TOKEN_NUMBER) {
        name = static_cast<const MorlNumber&>(inner).value;
    } else if (inner.unitType == TOKEN_IDENTIFIER) {
        name = static_cast<const MorlVariable&>(inner).name;
    }
    Warn(CheckKind::IntForFloat, inner.offset, name);
}

}  // namespace ns_ruke
