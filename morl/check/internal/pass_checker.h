// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/sentences.h"
#include "morl/check/internal/flow_checker.h"
#include "morl/check/internal/pass_check.h"
#include "morl/check/internal/scope.h"
#include "morl/check/internal/terms.h"
#include "morl/check/internal/warning_list.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace ns_ruke {

/// Checks the linked program of one pass, statement by statement.
class PassChecker {
public:
    PassChecker(const PassCheckInput& newInput, WarningList& newWarnings);

    void Run();

private:
    /// The types of the arguments of a call.
    struct Arguments {
        const ValueType* begin() const { return types; }
        const ValueType* end() const { return types + count; }
        const ValueType& operator[](std::size_t i) const { return types[i]; }
        std::size_t size() const { return count; }
        bool empty() const { return count == 0; }

        const ValueType* types;
        std::size_t count;
    };

    class Counter;

    // Declarations: declaration_checks.cpp.
    void DeclareGlobals(const std::vector<MorlDeclare*>& list, std::size_t LinkOrigin::*end,
                        ScopeEntry::Kind kind);
    void CheckGlobal(const MorlDeclare& declare, ScopeEntry::Kind kind);
    void CheckSampler(const MorlDeclare& declare);
    void CheckSemantic(const MorlDeclare& declare, ScopeEntry::Kind kind);
    void CheckCopies();
    void CheckCopied(std::string_view name, std::uint32_t offset);
    void CheckRepetitions();
    void CheckOutputs();
    void CheckPlace(const MorlDeclare& declare, ScopeEntry::Kind kind, ENUM_TOKEN binding);
    bool IsOfOtherStage();
    void CheckFirstColor();
    std::int64_t ElementsOf(const MorlDeclare& declare) const;
    void CheckLimits();

    // Statements: statement_checks.cpp.
    void DeclareLocal(const std::string& name, ENUM_TOKEN token, bool isArray, std::uint32_t offset,
                      ScopeEntry::Kind kind, bool isAssigned);
    std::string HintOfRepetition(const ScopeEntry& other, std::uint32_t offset) const;
    void CheckName(std::string_view name, std::uint32_t offset);
    void Statements(const std::vector<MorlSentence*>& sentences);
    void Statement(const MorlSentence* sentence);  ///< may be null
    void Assignment(const MorlAssignSentence& assignment, ScopeEntry::Kind kind);
    void CheckAssigned(const MorlAssignSentence& assignment, ValueType target, ValueType value);
    ScopeEntry* AssignedEntry(const MorlExpression& target);
    ValueType Target(const MorlExpression& target, const ScopeEntry* entry);
    FlowChecker::Components AssignedComponents(const MorlExpression& target) const;
    void CheckOnce(const MorlVariable& member);
    int Follow(const ScopeEntry& entry, bool isAssigned);
    void If(const MorlIfSentence& sentence);
    void For(const MorlForSentence& sentence);
    void CheckLoop(const MorlForSentence& sentence, const ScopeEntry* counter);
    void CheckLoopCondition(const MorlForSentence& sentence, std::string_view counter);

    // Expressions: expression_checks.cpp.
    ValueType Expression(const MorlExpression* expression);
    ValueType Operations(int level);
    ValueType Postfix();
    FlowChecker::Components NextComponents() const;
    ValueType Member(ValueType value, const MorlExpression& member);
    void CheckMember(ValueType value, const std::string& name, std::uint32_t offset);
    ValueType Operand(const MorlExpression& operand);
    ValueType Variable(const MorlVariable& variable,
                       FlowChecker::Components components = FlowChecker::kAll);
    ValueType Index(const MorlBinaryOperation& operation);
    ValueType Combine(const Term& term, ValueType left, ValueType right,
                      const MorlExpression& leftOperand);
    ValueType CombineNumbers(const Term& term, ValueType left, ValueType right,
                             const MorlExpression& leftOperand);
    /// Warns if `operand` is an integer and the other value is a float.
    void CheckInt(const MorlExpression& operand, ValueType own, ValueType other)
    {
        if (own.base == ValueBase::Int && other.base == ValueBase::Float) {
            WarnOfInt(operand);
        }
    }
    void WarnOfInt(const MorlExpression& operand);
    static constexpr bool kAndCounters = true;
    bool DependsOnData(const MorlExpression* expression, bool countsCounters = false);
    void ReportUnknownName(const MorlVariable& variable);
    std::string WordAt(std::uint32_t offset) const;
    std::string HintForUnknown(const std::string& name);
    std::string HintOfOwnNode(const std::string& name) const;
    std::string HintOfDropped(const std::string& name) const;
    std::string HintOfLaterNode(const std::string& name) const;
    bool BuildsOn(const std::string& from, const std::string& wanted) const;
    bool DoesNodeBuildOn(int from, int wanted) const;

    // Calls: call_checks.cpp.
    ValueType Call(const MorlFunctionCall& call);
    ValueType CallOf(const MorlFunctionCall& call, const Arguments& arguments, bool isWhole);
    ValueType Constructor(const MorlFunctionCall& call, const Arguments& arguments);
    ValueType MatrixHelper(const MorlFunctionCall& call);
    ValueType Multiply(const MorlFunctionCall& call, const Arguments& arguments);
    bool IsPlainNumber(const MorlExpression& operand);
    bool IsScaled(const MorlExpression* product);
    ValueType Sample(const MorlFunctionCall& call, const Arguments& arguments);
    void CheckSampled(const MorlFunctionCall& call, const Arguments& arguments);
    ValueType Intrinsic(const MorlFunctionCall& call, const Arguments& arguments);

    void Warn(CheckKind kind, std::uint32_t offset, std::string_view name = {},
              std::string_view hint = {})
    {
        warnings.Add(kind, node, offset, name, hint);
    }

    const PassCheckInput& input;
    WarningList& warnings;
    Scope scope;
    FlowChecker flow;
    const MorlExpression* assignedName = nullptr;  ///< the name in the target of an assignment
    std::vector<Term> terms;        ///< of the expressions that are being checked, inner ones last
    std::vector<ValueType> values;  ///< of the arguments of calls that are being checked
    std::size_t at = 0;             ///< the next term
    std::size_t end = 0;            ///< of the terms of the innermost expression
    int node = -1;                  ///< of what is being checked: an index into the link's list
    bool hasLostCode = false;       ///< whether a node has, so that assignments may be missing
    bool hasFaults = false;         ///< whether a node has some, so that names may be missing
    std::vector<ScopeEntry> componentNames;  ///< inputs and outputs that are called like members
    std::set<std::pair<int, std::string>> toldNames;  ///< that are not declared, by node
    std::unordered_set<int> takenRegisters;           ///< of samplers that come before
    std::set<std::pair<ScopeEntry::Kind, ENUM_TOKEN>> takenSemantics;  ///< likewise
    bool hasAutoTexcoords = false;                                     ///< among the outputs
    std::string_view declaredName;  ///< of the variable whose initial value is being checked
    bool isStep = false;            ///< checking the step of a `for`
    bool isInitialiser = false;     ///< checking a call that is the whole initialiser
};

/// Whether an expression has one of these operators outside of parentheses and calls.
bool HasOperator(const MorlExpression* expression, std::initializer_list<ENUM_TOKEN> operators);

}  // namespace ns_ruke
