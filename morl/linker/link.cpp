// SPDX-License-Identifier: MIT
// The order of the nodes, and the merging of their programs.
#include "morl/ast/internal/ownership.h"
#include "morl/core/internal/graphics_log.h"
#include "morl/core/log_scope.h"
#include "morl/core/messages.h"
#include "morl/linker/morl_linker.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <string_view>
#include <utility>

namespace ns_ruke {
namespace {

/// Puts nodes, identified by their index in the list, into the order in which they are merged:
/// always the first node in the list whose references have all been placed. For each node it counts
/// the references that are still missing, so that no node is examined in vain.
class NodeOrder {
public:
    /// @param nodes must outlive this object, and so must their names.
    explicit NodeOrder(const std::vector<MorlNode*>& nodes) : missing(nodes.size())
    {
        dependents.reserve(nodes.size());
    }

    /// All names are added before the first reference.
    void AddName(std::string_view name) { dependents[name]; }

    /// A reference to a name that is not listed, or a second one to the same name, does not count.
    void AddReference(std::size_t node, std::string_view name)
    {
        const auto found = dependents.find(name);
        if (found == dependents.end()) {
            return;
        }
        std::vector<std::size_t>& nodes = found->second;
        if (nodes.empty() || nodes.back() != node) {
            nodes.push_back(node);
            ++missing[node];
        }
    }

    /// Call this for each node once all its references have been added.
    void AddIfReady(std::size_t node)
    {
        if (missing[node] == 0) {
            ready.push(node);
        }
    }

    bool HasReady() const { return !ready.empty(); }

    std::size_t TakeReady()
    {
        const std::size_t node = ready.top();
        ready.pop();
        return node;
    }

    /// Nodes that refer to this name stop waiting for it.
    void PlaceName(std::string_view name)
    {
        for (const std::size_t node : std::exchange(dependents[name], {})) {
            --missing[node];
            AddIfReady(node);
        }
    }

private:
    std::unordered_map<std::string_view, std::vector<std::size_t>> dependents;  ///< by name
    std::vector<std::size_t> missing;  ///< how many names each node still waits for
    std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> ready;
};

/// Up to this number, scanning the nodes again and again costs less than counting references.
constexpr std::size_t kFewNodes = 16;

}  // namespace

MorlLinker::MorlLinker() = default;
MorlLinker::~MorlLinker() = default;

void MorlLinker::Link(std::string /*target*/, Macros& macros, std::vector<MorlNode*>& nodes,
                      MorlProgram& program)
{
    sharing = nullptr;
    linkReport = nullptr;
    MergePrograms(macros, nodes, program);
}

void MorlLinker::LinkShared(Macros& macros, std::vector<MorlNode*>& nodes, MorlProgram& program,
                            LinkReport* report)
{
    linkReport = report;
    program.ownership.elements = false;
    sharing = &program;
    MergePrograms(macros, nodes, program);
}

void MorlLinker::MergePrograms(Macros& macros, std::vector<MorlNode*>& nodes, MorlProgram& program)
{
    loopValues.clear();
    currentLoop.clear();
    iterations = 0;
    work = 0;
    tooManyIterations = false;
    exhausted = false;
    declaredNames.clear();
    AddNames(program.inputs, 0);
    AddNames(program.outputs, 0);
    AddNames(program.uniforms, 0);
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

// The nodes in the order in which they are merged, as far as they become ready: always the first
// one whose references are all placed.
std::vector<MorlNode*> MorlLinker::OrderByScanning(std::vector<MorlNode*> waiting)
{
    std::vector<MorlNode*> ordered;
    ordered.reserve(waiting.size());
    const auto hasNamed = [](const std::vector<MorlNode*>& nodes, const std::string& name) {
        return std::any_of(nodes.begin(), nodes.end(),
                           [&name](const MorlNode* node) { return node->name == name; });
    };
    const auto isReady = [&](const MorlNode* node) {
        return std::none_of(node->references.begin(), node->references.end(),
                            [&](const std::string& name) {
                                return hasNamed(waiting, name) && !hasNamed(ordered, name);
                            });
    };
    for (auto next = std::find_if(waiting.begin(), waiting.end(), isReady); next != waiting.end();
         next = std::find_if(waiting.begin(), waiting.end(), isReady)) {
        ordered.push_back(*next);
        waiting.erase(next);
    }
    return ordered;
}

// The same for many nodes.
std::vector<MorlNode*> MorlLinker::OrderByCounting(const std::vector<MorlNode*>& list)
{
    NodeOrder order(list);
    for (const MorlNode* node : list) {
        order.AddName(node->name);
    }
    for (std::size_t i = 0; i < list.size(); ++i) {
        for (const std::string& name : list[i]->references) {
            order.AddReference(i, name);
        }
        order.AddIfReady(i);
    }
    std::vector<MorlNode*> ordered;
    ordered.reserve(list.size());
    while (order.HasReady()) {
        MorlNode* node = list[order.TakeReady()];
        ordered.push_back(node);
        order.PlaceName(node->name);
    }
    return ordered;
}

// Empties the list. Nodes that never become ready are reported and left out.
std::vector<MorlNode*> MorlLinker::TakeOrdered(std::vector<MorlNode*>& nodes)
{
    const std::vector<MorlNode*> list = std::move(nodes);
    nodes.clear();
    if (list.empty()) {
        return {};
    }
    std::vector<MorlNode*> ordered =
        list.size() <= kFewNodes ? OrderByScanning(list) : OrderByCounting(list);
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
        all.insert(node->name);
    }
    for (const MorlNode* node : ordered) {
        linked.insert(node->name);
    }
    std::string message = messages::kReferenceCycle;
    const char* separator = "";
    for (MorlNode* node : list) {
        if (!CheckNodeReference(linked, all, node)) {
            message.append(separator).append(node->name);
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
        node->references.begin(), node->references.end(),
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
        const MorlProgram* source = node->program;
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
    const MorlProgram* source = node->program;
    if (source == nullptr) {
        return;
    }
    const LogScope scope(node->name);
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
