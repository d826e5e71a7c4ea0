// SPDX-License-Identifier: MIT
// The names and the types of expressions, as far as they can be known.
#include "morl/ast/stage.h"
#include "morl/check/internal/pass_checker.h"
#include "morl/core/nearest.h"

#include <algorithm>
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
    if (!value.IsVector()) {
        return {};
    }
    const std::size_t count = name.size();
    return count <= 4 ? ValueType{value.base, static_cast<std::uint8_t>(count), 1} : ValueType();
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
    if (input.pass.macros.count(name) > 0 || input.link.usedMacros.count(name) > 0) {
        Warn(CheckKind::MacroAsValue, variable.offset, name);
        return;
    }
    if (hasFaults || !warnings.IsNew(CheckKind::UndeclaredName, node, variable.offset)) {
        return;
    }
    Warn(CheckKind::UndeclaredName, variable.offset, name, HintForUnknown(name));
}

/// Where a name that is not declared may be: a letter away, or in another node.
std::string PassChecker::HintForUnknown(const std::string& name)
{
    if (!warnings.WantsHint()) {
        return {};
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
    return name.compare(0, 3, "gl_") == 0
               ? "; declare an output, such as 'out float4 oColor : COLOR0;'"
               : meant;
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

// Whether the value is more than constants and the variables of loops.
bool PassChecker::DependsOnData(const MorlExpression* expression)
{
    expression = WithoutParentheses(expression);
    if (expression == nullptr) {
        return false;
    }
    switch (expression->unitType) {
    case TOKEN_IDENTIFIER: {
        const ScopeEntry* entry = scope.Find(static_cast<const MorlVariable*>(expression)->name);
        return entry != nullptr && entry->kind != ScopeEntry::Kind::LoopVariable;
    }
    case TOKEN_BINARY_OPERATION: {
        const auto& operation = static_cast<const MorlBinaryOperation&>(*expression);
        const bool isMember = operation.operatorToken == TOKEN_MEMBER;
        return DependsOnData(operation.left) || (!isMember && DependsOnData(operation.right));
    }
    case TOKEN_FUNCTION_CALL: {
        const auto& arguments = static_cast<const MorlFunctionCall*>(expression)->arguments;
        return std::any_of(arguments.begin(), arguments.end(),
                           [this](const MorlExpression* one) { return DependsOnData(one); });
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
        if (left.IsVector() && right.IsVector()) {
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
    if (!left.IsNumeric() || !right.IsNumeric()) {
        return {};
    }
    if (left.IsMatrix() || right.IsMatrix()) {
        if (token == TOKEN_MULTIPLY && !left.IsNumber() && !right.IsNumber()) {
            Warn(CheckKind::MatrixProduct, term.offset);
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
