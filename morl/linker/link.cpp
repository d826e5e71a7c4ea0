// SPDX-License-Identifier: MIT
// The order of the nodes, and the merging of their programs.
#include "morl/ast/internal/ownership.h"
#include "morl/core/internal/graphics_log.h"
#include "morl/core/limits.h"
#include "morl/core/log_scope.h"
#include "morl/core/messages.h"
#include "morl/linker/morl_linker.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace ns_ruke {
namespace {

/// Puts nodes into the order in which they are merged: always the first node in the list whose
/// references have all been placed. For each node it counts the names that are still missing, so
/// that no node is examined in vain.
class NodeOrder {
public:
    explicit NodeOrder(const std::vector<MorlNode*>& newNodes)
        : nodes(newNodes), missing(nodes.size(), 0)
    {
        for (const MorlNode* node : nodes) {
            waiting[node->Name()] = 0;
        }
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            for (const std::string& name : nodes[i]->References()) {
                AddReference(i, name);
            }
            AddIfReady(i);
        }
    }

    std::vector<MorlNode*> Run()
    {
        std::vector<MorlNode*> ordered;
        ordered.reserve(nodes.size());
        while (!ready.empty()) {
            std::pop_heap(ready.begin(), ready.end(), std::greater<>());
            MorlNode* node = nodes[ready.back()];
            ready.pop_back();
            ordered.push_back(node);
            for (std::size_t i = std::exchange(*waiting.Find(node->Name()), 0); i != 0;
                 i = references[i - 1].next) {
                --missing[references[i - 1].node];
                AddIfReady(references[i - 1].node);
            }
        }
        return ordered;
    }

private:
    struct Reference {
        std::size_t node;  ///< that refers to the name
        std::size_t next;  ///< reference to the same name, counted from 1; 0: none
    };

    /// A reference to a name that is not listed, or a second one to the same name, does not count.
    void AddReference(std::size_t node, std::string_view name)
    {
        std::size_t* const last = waiting.Find(name);
        if (last == nullptr || (*last != 0 && references[*last - 1].node == node)) {
            return;
        }
        references.push_back({node, *last});
        *last = references.size();
        ++missing[node];
    }

    void AddIfReady(std::size_t node)
    {
        if (missing[node] == 0) {
            ready.push_back(node);
            std::push_heap(ready.begin(), ready.end(), std::greater<>());
        }
    }

    const std::vector<MorlNode*>& nodes;
    NameMap<std::size_t> waiting;       ///< the last reference to each name, counted from 1
    std::vector<Reference> references;  ///< to names of nodes in the list
    std::vector<std::size_t> missing;   ///< how many names each node still waits for
    std::vector<std::size_t> ready;     ///< a heap, the first node on top
};

}  // namespace

MorlLinker::MorlLinker() = default;
MorlLinker::~MorlLinker() = default;

void MorlLinker::Link(std::string /*target*/, Macros& macros, std::vector<MorlNode*>& nodes,
                      MorlProgram& program)
{
    sharing = nullptr;
    linkReport = nullptr;
    limits = RequestLimits();
    MergePrograms(macros, nodes, program);
}

RequestEnd MorlLinker::LinkShared(Macros& macros, std::vector<MorlNode*>& nodes,
                                  MorlProgram& program, LinkReport* report,
                                  const RequestLimits& newLimits)
{
    linkReport = report;
    limits = newLimits;
    program.ownership.elements = false;
    sharing = &program;
    MergePrograms(macros, nodes, program);
    return end;
}

void MorlLinker::MergePrograms(Macros& macros, std::vector<MorlNode*>& nodes, MorlProgram& program)
{
    loopValues.clear();
    currentLoop.clear();
    iterations = 0;
    work = 0;
    loopWork = 0;
    end = RequestEnd::Written;
    tooManyIterations = false;
    exhausted = false;
    declaredNames.Clear();
    lists.clear();
    UseMacros(macros);
    program.ownership.functions = false;
    const std::vector<MorlNode*> ordered = TakeOrdered(nodes);
    ReserveLists(ordered, program);
    if (linkReport != nullptr) {
        linkReport->origins.reserve(ordered.size());
    }
    for (MorlNode* node : ordered) {
        MergeProgram(node, macroValues, program);
        if (linkReport != nullptr) {
            const std::size_t sentences =
                program.mainFunction != nullptr ? program.mainFunction->sentences.size() : 0;
            linkReport->origins.push_back({node, program.inputs.size(), program.outputs.size(),
                                           program.uniforms.size(), sentences});
        }
    }
}

// Empties the list. Nodes that never become ready are reported and left out.
std::vector<MorlNode*> MorlLinker::TakeOrdered(std::vector<MorlNode*>& nodes)
{
    const std::vector<MorlNode*> list = std::move(nodes);
    nodes.clear();
    if (list.empty()) {
        return {};
    }
    std::vector<MorlNode*> ordered = NodeOrder(list).Run();
    if (ordered.size() < list.size()) {
        ReportCycle(list, ordered);
    }
    return ordered;
}

// Reports the nodes that never become ready.
void MorlLinker::ReportCycle(const std::vector<MorlNode*>& list,
                             const std::vector<MorlNode*>& ordered)
{
    std::unordered_set<std::string> all;
    std::unordered_set<std::string> linked;
    for (const MorlNode* node : list) {
        all.insert(node->Name());
    }
    for (const MorlNode* node : ordered) {
        linked.insert(node->Name());
    }
    std::string message = messages::kReferenceCycle;
    const char* separator = "";
    for (MorlNode* node : list) {
        if (!CheckNodeReference(linked, all, node)) {
            message.append(separator).append(node->Name());
            separator = ", ";
        }
    }
    LogGraphicsError(message);
}

// Whether every node of `all` that the node refers to is in `linked`. References to other nodes do
// not count. This is the rule that defines the order, but checking it for all nodes again and again
// would take quadratic time, so TakeOrdered counts instead.
bool MorlLinker::CheckNodeReference(std::unordered_set<std::string>& linked,
                                    std::unordered_set<std::string>& all, MorlNode* node)
{
    return std::none_of(
        node->References().begin(), node->References().end(),
        [&](const std::string& name) { return all.count(name) != 0 && linked.count(name) == 0; });
}

// Macro groups count as one element each, so the lists may still grow.
void MorlLinker::ReserveLists(const std::vector<MorlNode*>& nodes, MorlProgram& program)
{
    std::size_t inputs = 0;
    std::size_t outputs = 0;
    std::size_t uniforms = 0;
    std::size_t sentences = 0;
    for (const MorlNode* node : nodes) {
        const MorlProgram* source = node->Program();
        inputs += source != nullptr ? source->inputs.size() : 0;
        outputs += source != nullptr ? source->outputs.size() : 0;
        uniforms += source != nullptr ? source->uniforms.size() : 0;
        const MorlFunction* main = source != nullptr ? source->mainFunction : nullptr;
        sentences += main != nullptr ? main->sentences.size() : 0;
    }
    ReserveMore(program.inputs, inputs);
    ReserveMore(program.outputs, outputs);
    ReserveMore(program.uniforms, uniforms);
    if (program.mainFunction != nullptr) {
        ReserveMore(program.mainFunction->sentences, sentences);
    }
}

// A node without a program, or without a `main`, contributes what it has.
void MorlLinker::MergeProgram(MorlNode* node, Macros& macros, MorlProgram& program)
{
    const MorlProgram* source = node->Program();
    if (source == nullptr) {
        return;
    }
    const LogScope scope(node->Name());
    for (MorlDeclare* declare : source->inputs) {
        ProcessDeclare(macros, program.inputs, declare, false);
    }
    for (MorlDeclare* declare : source->outputs) {
        ProcessDeclare(macros, program.outputs, declare, true);
    }
    for (MorlDeclare* declare : source->uniforms) {
        ProcessDeclare(macros, program.uniforms, declare, false);
    }
    for (MorlFunction* function : source->functions) {
        ProcessFunction(macros, program.functions, function, false);
    }
    if (source->mainFunction == nullptr || program.mainFunction == nullptr) {
        return;
    }
    std::vector<MorlSentence*>& sentences = program.mainFunction->sentences;
    for (MorlSentence* sentence : source->mainFunction->sentences) {
        ProcessSentence(macros, sentences, sentence, false);
    }
}

// The first declaration of a name wins. The new name is compared before substitution with existing
// names after substitution, so inside a `#for` every copy is added, no matter how often the group
// is merged.
void MorlLinker::MergeDeclare(std::vector<MorlDeclare*>& declares, MorlDeclare* declare,
                              bool reportConflict)
{
    ++work;
    if (!IsDeclared(declares, declare->name)) {
        AppendDeclare(declares, declare);
        return;
    }
    if (linkReport != nullptr && linkReport->repetitions.size() < kMaxRepetitions) {
        linkReport->repetitions.push_back({declare, static_cast<int>(linkReport->origins.size())});
    }
    if (reportConflict) {
        LogGraphicsError(messages::kDeclare + declare->name + messages::kConflicts);
    }
}

// Catches up with what has been added to the list. A name has one bit for each list that has it.
bool MorlLinker::IsDeclared(const std::vector<MorlDeclare*>& declares, const std::string& name)
{
    auto list = std::find_if(lists.begin(), lists.end(),
                             [&](const KnownList& known) { return known.list == &declares; });
    if (list == lists.end() ? lists.size() == kMostLists : list->known > declares.size()) {
        declaredNames.Clear();
        lists.clear();
        list = lists.end();
    }
    if (list == lists.end()) {
        list = lists.insert(list, {&declares, 0});
    }
    const unsigned bit = 1U << static_cast<unsigned>(list - lists.begin());
    for (; list->known < declares.size(); ++list->known) {
        declaredNames[declares[list->known]->name] |= bit;
    }
    const unsigned* const known = declaredNames.Find(name);
    return known != nullptr && (*known & bit) != 0;
}

// Passes functions on unchanged. That includes the groups of `#if` blocks, because the parser gives
// them a different kind from the one tested here. It makes no difference: no back end writes
// functions.
void MorlLinker::ProcessFunction(Macros& macros, std::vector<MorlFunction*>& functions,
                                 MorlFunction* function, bool /*flag*/)
{
    if (function->unitType != TOKEN_MARCO_IF) {
        functions.push_back(function);
        return;
    }
    const auto* group = static_cast<const MorlMarcoIfFunction*>(function);
    const bool taken = CalExpression(macros, group->condition) != 0.0F;
    const std::vector<MorlFunction*>& chosen = taken ? group->functions : group->elseFunctions;
    functions.insert(functions.end(), chosen.begin(), chosen.end());
}

}  // namespace ns_ruke
