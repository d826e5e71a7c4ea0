// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/program.h"
#include "morl/compiler/morl_node.h"
#include "morl/core/export.h"
#include "morl/core/name_map.h"
#include "morl/core/request_limits.h"
#include "morl/linker/link_report.h"
#include "morl/linker/loop_values.h"

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ns_ruke {

/// Joins the programs of several nodes into one: orders the nodes by their references, decides
/// `#if` blocks and unrolls `#for` blocks, executes macro assignments, drops declarations whose
/// name is taken, and copies what remains with the loop values substituted into names.
///
/// The node programs stay unchanged, except for the loop bounds that are written into their `#for`
/// groups and the costs of copies; so two linkers must not work on the same nodes at the same time.
class MORL_API MorlLinker {
public:
    MorlLinker();
    MorlLinker(const MorlLinker&) = default;
    MorlLinker& operator=(const MorlLinker&) = default;
    virtual ~MorlLinker();

    /// Merges the programs of `nodes` into `program`.
    /// @param target not used: linking is the same for every target.
    /// @param macros the values for `#if` conditions and `#for` bounds.
    /// @param nodes not owned; empty afterwards. Nodes in a reference cycle, and nodes that depend
    ///        on them, are reported in one error line and left out.
    /// @param program receives copies, which it owns. It also receives the nodes' own function
    ///        objects; from then on it owns none of its functions (see MorlProgramOwnership).
    void Link(std::string target, std::unordered_map<std::string, int>& macros,
              std::vector<MorlNode*>& nodes, MorlProgram& program);

    /// Like Link, but refers to those declarations and statements of the nodes of which a copy
    /// would be the same. `program` is then only valid while the programs of the nodes are.
    /// @param program must have no declarations and no statements yet.
    /// @param report receives what a report of the request needs; null: nothing is noted.
    /// @return RequestEnd::Written, or which of the limits was reached; `program` is then
    ///         incomplete.
    RequestEnd LinkShared(std::unordered_map<std::string, int>& macros,
                          std::vector<MorlNode*>& nodes, MorlProgram& program,
                          LinkReport* report = nullptr, const RequestLimits& newLimits = {});

    /// The value of an expression of macros, as conditions have it.
    /// @param expression null counts as 0.
    float Evaluate(std::unordered_map<std::string, int>& macros, const MorlExpression* expression);

private:
    using Macros = std::unordered_map<std::string, int>;

    // Order and merge.
    void MergePrograms(Macros& macros, std::vector<MorlNode*>& nodes, MorlProgram& program);
    std::vector<MorlNode*> TakeOrdered(std::vector<MorlNode*>& nodes);
    void ReportCycle(const std::vector<MorlNode*>& list, const std::vector<MorlNode*>& ordered);
    bool CheckNodeReference(std::unordered_set<std::string>& linked,
                            std::unordered_set<std::string>& all, MorlNode* node);
    static void ReserveLists(const std::vector<MorlNode*>& nodes, MorlProgram& program);
    void MergeProgram(MorlNode* node, Macros& macros, MorlProgram& program);
    void ProcessFunction(Macros& macros, std::vector<MorlFunction*>& functions,
                         MorlFunction* function, bool flag);

    // Declarations.
    void MergeDeclare(std::vector<MorlDeclare*>& declares, MorlDeclare* declare,
                      bool reportConflict);
    bool IsDeclared(const std::vector<MorlDeclare*>& declares, const std::string& name);
    void AppendDeclare(std::vector<MorlDeclare*>& declares, MorlDeclare* declare);
    void ProcessDeclare(Macros& macros, std::vector<MorlDeclare*>& declares, MorlDeclare* declare,
                        bool flag);

    // Macro statements.
    void ProcessSentence(Macros& macros, std::vector<MorlSentence*>& sentences,
                         MorlSentence* sentence, bool flag);
    void AppendSentence(std::vector<MorlSentence*>& sentences, MorlSentence* sentence);
    void UseMacros(const Macros& macros);
    void ExecuteAssignment(Macros& macros, const MorlMarcoAssignSentence* sentence);
    template <class Group, class Body>
    void Repeat(Macros& macros, Group* group, const Body& body);
    bool BeginIterationOrReport(const std::string& varName);
    bool HasLimitLeftOrReport(const std::string& varName);
    bool HasWorkLeftOrReport(const std::string& name);

    // Evaluation. A null expression counts as 0.
    float CalExpression(Macros& macros, const MorlExpression* expression);
    float CalBinaryOperation(Macros& macros, const MorlBinaryOperation* operation);
    float CalParenthesiseExpression(Macros& macros, const MorlParenthesiseExpression* expression);
    float CalVariable(Macros& macros, const MorlVariable* variable);
    void NoteMacro(const std::string& name, std::uint32_t offset);
    float CalNumber(Macros& macros, const MorlNumber* number);

    // Deep copies, owned by the caller. A null unit is copied as null.
    MorlUnit* CopyMorlUnit(const MorlUnit* unit);
    MorlUnit* CopyByKind(const MorlUnit* unit);
    MorlFunction* CopyFunction(const MorlFunction* function);
    MorlDeclare* CopyDeclare(const MorlDeclare* declare);
    MorlRegister* CopyRegister(const MorlRegister* binding);
    MorlFunctionCall* CopyFunctionCall(const MorlFunctionCall* call);
    MorlUnaryOperation* CopyUnaryOperation(const MorlUnaryOperation* operation);
    MorlBinaryOperation* CopyBinaryOperation(const MorlBinaryOperation* operation);
    MorlParenthesiseExpression* CopyParenthesiseExpression(
        const MorlParenthesiseExpression* expression);
    MorlVariable* CopyVariable(const MorlVariable* variable);
    MorlNumber* CopyNumber(const MorlNumber* number);
    MorlEmptySentence* CopyEmptySentence(const MorlEmptySentence* sentence);
    MorlSpecialSentence* CopySpecialSentence(const MorlSpecialSentence* sentence);
    MorlSingleCommentSentence* CopySingleCommentSentence(const MorlSingleCommentSentence* sentence);
    MorlMultiCommentSentence* CopyMultiCommentSentence(const MorlMultiCommentSentence* sentence);
    MorlDefinitionSentence* CopyDefinitionSentence(const MorlDefinitionSentence* sentence);
    MorlAssignSentence* CopyAssignSentence(const MorlAssignSentence* sentence);
    MorlIfSentence* CopyIfSentence(const MorlIfSentence* sentence);
    MorlElseIfSentence* CopyElseIfSentence(const MorlElseIfSentence* sentence);
    MorlForSentence* CopyForSentence(const MorlForSentence* sentence);
    template <class Unit>
    Unit* CopyChild(const Unit* unit);
    template <class Unit>
    void Append(std::vector<Unit*>& list, Unit* unit, std::vector<MorlUnit*>* owner,
                bool isConstant);
    MorlDeclare* CopyElement(const MorlDeclare* declare);
    MorlSentence* CopyElement(const MorlSentence* sentence);
    void CopyBranches(const MorlIfSentence* from, MorlIfSentence& to);
    void CopyName(const std::string& from, std::string& to);
    void SubstituteLoopValues(std::string& name);

    LoopValues loopValues;
    Macros macroValues;
    /// A list of declarations whose names are known.
    struct KnownList {
        const std::vector<MorlDeclare*>* list;
        std::size_t known;  ///< how many declarations of the list
    };
    static constexpr std::size_t kMostLists = 32;
    std::vector<KnownList> lists;
    NameMap<unsigned> declaredNames;  ///< which of the lists have each name, as bits

    // The state of the current link.
    LinkReport* linkReport = nullptr;  ///< null: nobody asked for it
    MorlProgram* sharing = nullptr;    ///< the linked program if it may refer to the nodes' trees
    std::string currentLoop;           ///< the name of the running `#for`; empty if none
    std::size_t iterations = 0;        ///< of `#for`
    std::size_t work = 0;              ///< in units of kMaxLinkWork
    bool tooManyIterations = false;    ///< kMaxLoopIterations was reached and reported
    bool exhausted = false;     ///< nothing more is expanded: kMaxLinkWork or a limit was reached
    RequestLimits limits;       ///< of the host
    std::size_t loopStart = 0;  ///< `work` when the outermost running loop began
    std::size_t loopWork = 0;   ///< of the loops that have ended
    RequestEnd end = RequestEnd::Written;  ///< which limit was reached, if one was
};

}  // namespace ns_ruke
