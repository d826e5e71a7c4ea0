// SPDX-License-Identifier: MIT
// Macro conditions, and the expansion of macro blocks.
#include "morl/core/internal/graphics_log.h"
#include "morl/core/limits.h"
#include "morl/core/messages.h"
#include "morl/core/string_helper.h"
#include "morl/linker/morl_linker.h"

#include "morl/linker/internal/calculate.h"

#include <limits>
#include <memory>
#include <utility>

namespace ns_ruke {
namespace {

/// Truncates toward zero. NaN, and any value that a 32-bit integer cannot hold, becomes the
/// smallest integer.
int ToInt32(float value)
{
    constexpr float kLimit = 2147483648.0F;
    return value > -kLimit && value < kLimit ? static_cast<int>(value)
                                             : std::numeric_limits<int>::min();
}

// The remainder with the sign of the dividend; 0 where it does not exist.
float Modulo(float left, float right)
{
    const int dividend = ToInt32(left);
    const int divisor = ToInt32(right);
    if (divisor == 0 || divisor == -1) {
        return 0.0F;
    }
    return static_cast<float>(dividend % divisor);
}

float Truth(bool value)
{
    return value ? 1.0F : 0.0F;
}

}  // namespace

float Calculate(ENUM_TOKEN operatorToken, float left, float right)
{
    switch (operatorToken) {
    case TOKEN_PLUS:
        return left + right;
    case TOKEN_MINUS:
        return left - right;
    case TOKEN_MULTIPLY:
        return left * right;
    case TOKEN_DIVIDE:
        return left / right;
    case TOKEN_MODULO:
        return Modulo(left, right);
    case TOKEN_LESS:
        return Truth(left < right);
    case TOKEN_LESS_EQUAL:
        return Truth(left <= right);
    case TOKEN_GREATER:
        return Truth(left > right);
    case TOKEN_GREATER_EQUAL:
        return Truth(left >= right);
    case TOKEN_EQUAL:
        return Truth(left == right);
    case TOKEN_NOT_EQUAL:
        return Truth(left != right);
    case TOKEN_AND:
        return Truth(left != 0.0F && right != 0.0F);
    case TOKEN_OR:
        return Truth(left != 0.0F || right != 0.0F);
    default:
        return 0.0F;
    }
}

float MorlLinker::Evaluate(Macros& macros, const MorlExpression* expression)
{
    linkReport = nullptr;
    loopValues.clear();
    return CalExpression(macros, expression);
}

// Calls and increments count as 0, as does anything else that is not arithmetic on macros.
float MorlLinker::CalExpression(Macros& macros, const MorlExpression* expression)
{
    ++work;
    if (expression == nullptr) {
        return 0.0F;
    }
    switch (expression->unitType) {
    case TOKEN_BINARY_OPERATION:
        return CalBinaryOperation(macros, static_cast<const MorlBinaryOperation*>(expression));
    case TOKEN_PARENTHESISE_EXPRESSION:
        return CalParenthesiseExpression(
            macros, static_cast<const MorlParenthesiseExpression*>(expression));
    case TOKEN_IDENTIFIER:
        return CalVariable(macros, static_cast<const MorlVariable*>(expression));
    case TOKEN_NUMBER:
        return CalNumber(macros, static_cast<const MorlNumber*>(expression));
    default:
        return 0.0F;
    }
}

// "&&" and "||" evaluate their right side only when it matters. The operands of what is no
// operator, such as an index, are not looked at.
float MorlLinker::CalBinaryOperation(Macros& macros, const MorlBinaryOperation* operation)
{
    const ENUM_TOKEN token = operation->operatorToken;
    const bool isLogical = token == TOKEN_AND || token == TOKEN_OR;
    if (!isLogical && (token < TOKEN_PLUS || token > TOKEN_NOT_EQUAL || token == TOKEN_MEMBER)) {
        return 0.0F;
    }
    // That of a prefix minus is null, and counts as 0.
    const float left = CalExpression(macros, operation->left);
    const bool isDecided = isLogical && (left != 0.0F) == (token == TOKEN_OR);
    return isDecided ? Truth(token == TOKEN_OR)
                     : Calculate(token, left, CalExpression(macros, operation->right));
}

float MorlLinker::CalParenthesiseExpression(Macros& macros,
                                            const MorlParenthesiseExpression* expression)
{
    return CalExpression(macros, expression->expression);
}

// A value set by a loop or a macro assignment hides the request's macro of the same name. An
// unknown name counts as 0.
float MorlLinker::CalVariable(Macros& macros, const MorlVariable* variable)
{
    const auto loopValue = loopValues.find(variable->name);
    if (loopValue != loopValues.end()) {
        MorlNumber number;
        number.value = loopValue->second;
        return CalNumber(macros, &number);
    }
    NoteMacro(variable->name, variable->offset);
    const auto macro = macros.find(variable->name);
    return macro != macros.end() ? static_cast<float>(macro->second) : 0.0F;
}

void MorlLinker::NoteMacro(const std::string& name, std::uint32_t offset)
{
    if (linkReport != nullptr) {
        const int node = static_cast<int>(linkReport->origins.size());
        linkReport->usedMacros.try_emplace(name, LinkPlace{node, offset});
    }
}

// The digits after the point are read as an integer, which is divided by 10 while it is greater
// than 1: 2.5 is 2.5, but 1.1 is 2 and 0.05 is 0.5. Conditions in existing nodes depend on this.
float MorlLinker::CalNumber(Macros& /*macros*/, const MorlNumber* number)
{
    const auto whole = static_cast<float>(StringHelper::ConvertToInt32(number->value));
    if (number->value.find('.') == std::string::npos) {
        return whole;
    }
    const std::string digits = StringHelper::Split(number->value, ".", false)[1];
    auto fraction = static_cast<float>(StringHelper::ConvertToInt32(digits));
    while (fraction > 1.0F) {
        fraction /= 10.0F;
    }
    return whole + fraction;
}

// Whether the expansion may continue. The first time it may not, this is reported with the name of
// the running loop or, outside loops, the name that was to be substituted.
bool MorlLinker::HasWorkLeftOrReport(const std::string& name)
{
    if (!exhausted && work > kMaxLinkWork) {
        exhausted = true;
        LogGraphicsError(messages::kTooMuchExpansion + (currentLoop.empty() ? name : currentLoop));
    }
    return !exhausted;
}

// Whether one more iteration may run. Once a bound is reached, no further iteration of this link
// runs.
bool MorlLinker::BeginIterationOrReport(const std::string& varName)
{
    ++work;
    if (!HasWorkLeftOrReport(varName) || tooManyIterations || !HasLimitLeftOrReport(varName)) {
        return false;
    }
    if (iterations == kMaxLoopIterations) {
        tooManyIterations = true;
        LogGraphicsError(messages::kTooManyIterations + varName);
        return false;
    }
    ++iterations;
    return true;
}

// Whether the host lets one more iteration run. If not, nothing more is expanded.
bool MorlLinker::HasLimitLeftOrReport(const std::string& varName)
{
    if (limits.IsCancelled()) {
        end = RequestEnd::Cancelled;
        exhausted = true;
    } else if (limits.loopWork != 0 && loopWork + (work - loopStart) > limits.loopWork) {
        LogGraphicsError(messages::kOverLoopWork + varName);
        end = RequestEnd::TooMuchWork;
        exhausted = true;
    }
    return !exhausted;
}

// Runs `body` for every value of a `#for` group whose name is a macro of the request. Afterwards
// the name has no loop value, not even that of an enclosing loop of the same name.
template <class Group, class Body>
void MorlLinker::Repeat(Macros& macros, Group* group, const Body& body)
{
    NoteMacro(group->varName, group->offset);
    const auto bound = macros.find(group->varName);
    if (bound == macros.end()) {
        return;
    }
    group->end = bound->second;
    const std::string outerLoop = std::exchange(currentLoop, group->varName);
    if (outerLoop.empty()) {
        loopStart = work;
    }
    for (int i = group->start; i < group->end && BeginIterationOrReport(group->varName); ++i) {
        loopValues[group->varName] = StringHelper::ConvertToString(i, 10);
        body();
    }
    if (outerLoop.empty()) {
        loopWork += work - loopStart;
    }
    currentLoop = outerLoop;
    loopValues.erase(group->varName);
}

// The members of a `#for` group are merged as they are: macro groups among them are not expanded.
void MorlLinker::ProcessDeclare(Macros& macros, std::vector<MorlDeclare*>& declares,
                                MorlDeclare* declare, bool /*flag*/)
{
    ++work;
    if (declare->unitType == TOKEN_MARCO_IF_DECLARE) {
        const auto* group = static_cast<const MorlMarcoIfDeclare*>(declare);
        const bool taken = CalExpression(macros, group->condition) != 0.0F;
        for (MorlDeclare* member : taken ? group->declares : group->elseDeclares) {
            ProcessDeclare(macros, declares, member, false);
        }
    } else if (declare->unitType == TOKEN_MARCO_FOR_DECLARE) {
        auto* group = static_cast<MorlMarcoForDeclare*>(declare);
        Repeat(macros, group, [&] {
            for (MorlDeclare* member : group->declares) {
                MergeDeclare(declares, member, false);
            }
        });
    } else {
        MergeDeclare(declares, declare, false);
    }
}

// Link copies the macros once and hands the copy on, so that this costs nothing for most
// statements.
void MorlLinker::UseMacros(const Macros& macros)
{
    if (&macros != &macroValues && !(macros.empty() && macroValues.empty())) {
        macroValues = macros;
    }
}

void MorlLinker::ProcessSentence(Macros& macros, std::vector<MorlSentence*>& sentences,
                                 MorlSentence* sentence, bool /*flag*/)
{
    UseMacros(macros);
    const ENUM_TOKEN kind = sentence != nullptr ? sentence->unitType : TOKEN_NONE;
    if (kind == TOKEN_MARCO_IF_SENTENCE) {
        ++work;
        const auto* group = static_cast<const MorlMarcoIfSentence*>(sentence);
        const bool taken = CalExpression(macros, group->condition) != 0.0F;
        for (MorlSentence* member : taken ? group->sentences : group->elseSentences) {
            ProcessSentence(macros, sentences, member, false);
        }
    } else if (kind == TOKEN_MARCO_FOR_SENTENCE) {
        auto* group = static_cast<MorlMarcoForSentence*>(sentence);
        Repeat(macros, group, [&] {
            for (MorlSentence* member : group->sentences) {
                ProcessSentence(macros, sentences, member, false);
            }
        });
    } else if (kind == TOKEN_MARCO_ASSIGN_SENTENCE) {
        ++work;
        ExecuteAssignment(macros, static_cast<const MorlMarcoAssignSentence*>(sentence));
    } else {
        AppendSentence(sentences, sentence);
    }
}

// The value holds until the link, or a `#for` over the same name, ends. The operator is ignored
// ("+=" acts like "="), and only a plain name can be set.
void MorlLinker::ExecuteAssignment(Macros& macros, const MorlMarcoAssignSentence* sentence)
{
    if (sentence->target == nullptr || sentence->target->unitType != TOKEN_IDENTIFIER) {
        return;
    }
    const auto* target = static_cast<const MorlVariable*>(sentence->target);
    const int value = ToInt32(CalExpression(macros, sentence->value));
    loopValues[target->name] = StringHelper::ConvertToString(value, 10);
}

}  // namespace ns_ruke
