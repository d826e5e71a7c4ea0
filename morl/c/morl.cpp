// SPDX-License-Identifier: MIT
// The C interface: checks what hosts pass, and keeps exceptions on this side.
#include "morl/c/morl.h"

#include "morl/ast/unit.h"
#include "morl/c/internal/result.h"
#include "morl/compiler/log_line.h"
#include "morl/compiler/morl_compiler.h"
#include "morl/compiler/node_source.h"
#include "morl/compiler/program_report.h"
#include "morl/compiler/report_text.h"
#include "morl/core/internal/read_file.h"
#include "morl/core/log_system.h"
#include "morl/core/messages.h"
#include "morl/core/string_helper.h"
#include "morl/translator/targets.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <system_error>
#include <utility>

namespace {

/// Strings that a host sees as texts.
struct TextList {
    void Set(std::vector<std::string> newStrings)
    {
        std::vector<morl_text> newTexts = ns_ruke::ToTexts(newStrings);
        // Moved strings stay where they are.
        strings = std::move(newStrings);
        texts = std::move(newTexts);
    }

    std::vector<std::string> strings;
    std::vector<morl_text> texts;
};

/// A compiler that knows its handle, for the log.
class HostedCompiler : public ns_ruke::MorlCompiler {
public:
    explicit HostedCompiler(const morl_compiler& newHandle)
        : MorlCompiler(std::vector<ns_ruke::NodeText>()), handle(newHandle)
    {
    }

    const morl_compiler& handle;
};

}  // namespace

/// A compiler, and what its last calls have returned or complained about.
struct morl_compiler : ns_ruke::Handle {
    static constexpr ns_ruke::HandleKind kKind = ns_ruke::HandleKind::Compiler;

    morl_compiler() : Handle(kKind), compiler(*this) {}

    HostedCompiler compiler;
    std::string message;
    std::vector<ns_ruke::NodeTextFault> nodeFaults;
    std::vector<ns_ruke::ReportFault> requestFaults;
    std::vector<morl_fault> faults;   ///< made from one of these
    std::atomic<bool> isBusy{false};  ///< a call is under way
    TextList names;                   ///< of all nodes
    TextList loaded;                  ///< of the nodes that were loaded last
    TextList references;              ///< of the node that was got last, as its name and content
    std::string nodeName;
    std::string nodeContent;
    std::string nodeSource;  ///< written last, likewise the next two
    std::string nodesOfSource;
    std::string sourceOfNodes;
};

namespace ns_ruke {
namespace {

/// Where a structure has ended in version 2.0: the smallest that hosts pass. Later versions append
/// to structures, and change nothing here.
template <class Structure>
constexpr std::size_t kFirstSize = 0;

template <>
constexpr std::size_t kFirstSize<morl_fault> = offsetof(morl_fault, hint) +
                                               sizeof(morl_fault::hint);
template <>
constexpr std::size_t kFirstSize<morl_node> = offsetof(morl_node, y) + sizeof(morl_node::y);
template <>
constexpr std::size_t kFirstSize<morl_request> = offsetof(morl_request, cancel) +
                                                 sizeof(morl_request::cancel);
template <>
constexpr std::size_t kFirstSize<morl_place> = offsetof(morl_place, reserved) +
                                               sizeof(morl_place::reserved);
template <>
constexpr std::size_t kFirstSize<morl_declare> = offsetof(morl_declare, repeated_by_count) +
                                                 sizeof(morl_declare::repeated_by_count);
template <>
constexpr std::size_t kFirstSize<morl_macro> = offsetof(morl_macro, is_set) +
                                               sizeof(morl_macro::is_set);
template <>
constexpr std::size_t kFirstSize<morl_warning> = offsetof(morl_warning, column) +
                                                 sizeof(morl_warning::column);
template <>
constexpr std::size_t kFirstSize<morl_output> = offsetof(morl_output, constant_bytes) +
                                                sizeof(morl_output::constant_bytes);
template <>
constexpr std::size_t kFirstSize<morl_program_uniform> = offsetof(morl_program_uniform, fragment) +
                                                         sizeof(morl_program_uniform::fragment);
template <>
constexpr std::size_t kFirstSize<morl_varying> = offsetof(morl_varying, input) +
                                                 sizeof(morl_varying::input);
template <>
constexpr std::size_t kFirstSize<morl_program_info> = offsetof(morl_program_info, warning_count) +
                                                      sizeof(morl_program_info::warning_count);

/// Ends a call with a status that is not MORL_OK.
struct CallFailure {
    morl_status status;
    std::string message;
};

[[noreturn]] void Refuse(const std::string& message)
{
    throw CallFailure{MORL_INVALID_ARGUMENT, message};
}

/// Runs the body of a call for a compiler, and turns what it throws into a status and a message.
template <class Body>
morl_status Run(morl_compiler& handle, const Body& body) noexcept
{
    handle.faults.clear();
    try {
        body(handle);
        return MORL_OK;
    } catch (CallFailure& failure) {
        handle.message = std::move(failure.message);
        return failure.status;
    } catch (const std::bad_alloc&) {
        handle.message = "out of memory";  // short enough to need none
        return MORL_OUT_OF_MEMORY;
    } catch (...) {
        handle.message = "internal error";  // likewise
        return MORL_FAILED;
    }
}

/// The same for one call at a time: the function that logs cannot call the compiler that logs.
template <class Body>
morl_status Call(morl_compiler* handle, const Body& body) noexcept
{
    if (!IsHandle(handle)) {
        return MORL_INVALID_ARGUMENT;
    }
    if (handle->isBusy.exchange(true)) {
        return MORL_BUSY;
    }
    const morl_status status = Run(*handle, body);
    handle->isBusy = false;
    return status;
}

/// Checks a list or a text that a host has passed.
/// @param what the name of its argument or member
/// @param of what it consists of
void CheckList(const void* list, std::size_t count, const std::string& what, const char* of)
{
    if (count > MORL_MOST) {
        Refuse("the size of " + what + " is " + std::to_string(count) +
               ": lists and texts need their own sizes, at most " + std::to_string(MORL_MOST));
    }
    if (list == nullptr && count > 0) {
        Refuse(what + " is null, but should have " + std::to_string(count) + " " + of);
    }
}

std::string ToString(const morl_text& text, const std::string& what)
{
    CheckList(text.data, text.size, what, "bytes");
    return text.size > 0 ? std::string(text.data, text.size) : std::string();
}

/// The name of an element of a list, for messages.
std::string ElementOf(const char* list, std::size_t index)
{
    return list + ("[" + std::to_string(index)) + "]";
}

void CheckNotNull(const void* pointer, const char* what)
{
    if (pointer == nullptr) {
        Refuse(std::string(what) + " is null");
    }
}

/// Whether a host has passed a structure with its size.
template <class Structure>
bool HasSize(const Structure* structure)
{
    static_assert(kFirstSize<Structure> > 0);
    return structure != nullptr && structure->size >= kFirstSize<Structure> &&
           structure->size <= MORL_MOST;
}

/// Checks a structure that begins with its size.
template <class Structure>
void CheckSize(const Structure* structure, const char* what)
{
    CheckNotNull(structure, what);
    if (!HasSize(structure)) {
        Refuse(std::string(what) + ".size is " + std::to_string(structure->size) +
               ", and should be sizeof(morl_" + what + "): " + std::to_string(sizeof(Structure)));
    }
}

std::vector<std::string> ToStrings(const morl_text* list, std::size_t count, const char* what)
{
    CheckList(list, count, what, "elements");
    std::vector<std::string> strings;
    strings.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        strings.push_back(ToString(list[i], ElementOf(what, i)));
    }
    return strings;
}

std::unordered_map<std::string, int> ToMap(const morl_value* list, std::size_t count,
                                           const char* what)
{
    CheckList(list, count, what, "elements");
    std::unordered_map<std::string, int> map;
    for (std::size_t i = 0; i < count; ++i) {
        map[ToString(list[i].name, ElementOf(what, i))] = list[i].value;
    }
    return map;
}

RequestLimits ToLimits(const morl_request& request)
{
    // Hosts share a plain number, which is an atomic one wherever this is so.
    using Flag = std::atomic<std::int32_t>;
    static_assert(sizeof(Flag) == sizeof(std::int32_t) && Flag::is_always_lock_free);
    return {request.most_loop_work, request.most_text_bytes,
            reinterpret_cast<const Flag*>(request.cancel)};
}

PassProperty ToPass(const morl_request& request)
{
    PassProperty pass;
    pass.nodeNames = ToStrings(request.nodes, request.node_count, "request.nodes");
    pass.macros = ToMap(request.macros, request.macro_count, "request.macros");
    pass.samplerRegisters = ToMap(request.samplers, request.sampler_count, "request.samplers");
    CheckList(request.semantics, request.semantic_count, "request.semantics", "elements");
    for (std::size_t i = 0; i < request.semantic_count; ++i) {
        const morl_semantic& entry = request.semantics[i];
        const std::string element = ElementOf("request.semantics", i);
        pass.semantics[ToString(entry.name, element)] = ToString(entry.semantic, element);
    }
    pass.target = ToString(request.target, "request.target");
    if (request.stage != MORL_VERTEX && request.stage != MORL_FRAGMENT) {
        Refuse("request.stage is " + std::to_string(request.stage) +
               ", and should be MORL_VERTEX or MORL_FRAGMENT");
    }
    pass.stage = request.stage;
    if (request.reserved != 0) {
        Refuse("request.reserved is not 0: set all that you do not use to 0");
    }
    pass.limits = ToLimits(request);
    return pass;
}

/// Lets a host see the faults of a call that fails.
template <class Fault>
void Show(const std::vector<Fault>& faults, morl_compiler& handle)
{
    for (const Fault& fault : faults) {
        handle.faults.push_back(ToFault(fault));
    }
}

/// Ends a call whose nodes have faults.
void RefuseFaults(morl_compiler& handle, std::vector<NodeTextFault> faults)
{
    if (!faults.empty()) {
        handle.nodeFaults = std::move(faults);
        Show(handle.nodeFaults, handle);
        throw CallFailure{MORL_NODES_REFUSED, NodeTextError(handle.nodeFaults).what()};
    }
}

void LoadText(morl_compiler& handle, const NodeText& text)
{
    NodeTextResult result = handle.compiler.LoadNodes(text);
    RefuseFaults(handle, std::move(result.faults));
    handle.loaded.Set(std::move(result.nodes));
}

/// The node of a source, with its name. Refuses the call if the header has faults.
NodeSource ReadSource(morl_compiler& handle, const std::string& file, std::string name,
                      const std::string& text)
{
    std::vector<NodeSourceFault> found;
    NodeSource source = ReadNodeSource(text, found);
    if (!source.hasName) {
        source.name = std::move(name);
    }
    std::vector<NodeTextFault> faults;
    for (const NodeSourceFault& fault : found) {
        if (!fault.isWarning) {
            faults.push_back({file, source.name, fault.line, fault.column, fault.text});
        }
    }
    RefuseFaults(handle, std::move(faults));
    return source;
}

void LoadSource(morl_compiler& handle, const NodeSource& source)
{
    handle.compiler.SetNode(source.name, source.content, source.references,
                            static_cast<float>(source.x), static_cast<float>(source.y));
    handle.loaded.Set({source.name});
}

/// The only node of a text. Refuses the call if the text has faults, or more or fewer nodes.
NodeSource ReadOneNode(morl_compiler& handle, const NodeText& text)
{
    std::vector<NodeTextFault> faults;
    std::vector<NodeSource> nodes = ReadNodeText(text, faults);
    if (faults.empty() && nodes.size() != 1) {
        faults.push_back({text.name, "", 1, 1, messages::kNotOneNode});
    }
    RefuseFaults(handle, std::move(faults));
    return std::move(nodes.front());
}

/// Why a request was not written.
morl_status StatusOf(RequestEnd end)
{
    switch (end) {
    case RequestEnd::Written:
        return MORL_OK;
    case RequestEnd::Refused:
        return MORL_REFUSED;
    case RequestEnd::Cancelled:
        return MORL_CANCELLED;
    default:
        return MORL_LIMIT_REACHED;
    }
}

/// The faults of the nodes come first; the last one is why the request has ended.
std::string MessageOf(const PassReport& report)
{
    if (report.end == RequestEnd::Cancelled) {
        return "cancelled";
    }
    if (report.end != RequestEnd::Refused) {
        return report.faults.back().text;
    }
    std::string message = report.faults.front().text;
    if (StringHelper::StartWith(message, messages::kUnknownTarget, false)) {
        const char* separator = " (the targets are ";
        for (const std::string& target : MorlTargets()) {
            message.append(std::exchange(separator, ", ")).append(target);
        }
        message += ")";
    }
    return message;
}

[[noreturn]] void EndRequest(morl_compiler& handle, PassReport report)
{
    CallFailure failure{StatusOf(report.end), MessageOf(report)};
    handle.requestFaults = std::move(report.faults);
    Show(handle.requestFaults, handle);
    throw std::move(failure);
}

std::unique_ptr<morl_result> Compile(morl_compiler& handle, const morl_request& request)
{
    PassProperty pass = ToPass(request);
    ShaderOutput output;
    PassReport report;
    std::vector<ReportWarning> warnings;
    const bool wantsReport = request.wants_report != 0;
    const bool isWritten =
        wantsReport && request.wants_warnings != 0
            ? handle.compiler.CompileReported(pass, output, report, warnings)
            : handle.compiler.CompileReported(pass, output, report,
                                              wantsReport ? ReportParts::All : ReportParts::Faults);
    if (!isWritten) {
        EndRequest(handle, std::move(report));
    }
    if (!wantsReport) {
        report.faults.clear();
    }
    return std::make_unique<morl_result>(pass, wantsReport, std::move(output), std::move(report),
                                         std::move(warnings));
}

const MorlNode& FindNode(const morl_compiler& handle, const morl_text& name)
{
    const std::string wanted = ToString(name, "name");
    const MorlNode* node = handle.compiler.FindNode(wanted);
    if (node == nullptr) {
        throw CallFailure{MORL_NOT_FOUND, messages::kUnknownNode + wanted};
    }
    return *node;
}

/// Gives a host what a structure of this library has, as far as the host's structure goes. What
/// only the host's has becomes 0.
template <class Structure>
void CopyOut(Structure from, Structure* to)
{
    const std::size_t size = to->size;
    from.size = size;
    std::memset(static_cast<void*>(to), 0, size);
    std::memcpy(static_cast<void*>(to), &from, std::min(size, sizeof(Structure)));
}

/// Gives a host what a structure of this library has, if it has room for it.
template <class Structure>
morl_status Give(Structure from, Structure* to)
{
    if (!HasSize(to)) {
        return MORL_INVALID_ARGUMENT;
    }
    CopyOut(from, to);
    return MORL_OK;
}

/// Gives a host an element of a list.
template <class Element, class Structure>
morl_status GiveElement(const std::vector<Element>& list, std::size_t index,
                        Structure (*convert)(const Element&), Structure* to)
{
    if (!HasSize(to)) {
        return MORL_INVALID_ARGUMENT;
    }
    return index < list.size() ? Give(convert(list[index]), to) : MORL_NOT_FOUND;
}

/// A function of a host that hears the log, as a sink.
struct HostLog {
    void operator()(LogLevel level, const std::string& category, const std::string& message) const
    {
        const LogLine parts(level, message);
        const auto* const compiler = dynamic_cast<const HostedCompiler*>(parts.compiler);
        morl_log_line line = {};
        line.size = sizeof line;
        line.level = parts.IsError() ? MORL_ERROR : MORL_INFO;
        line.line = parts.line;
        line.column = parts.column;
        line.category = ToText(category);
        line.message = ToText(message);
        line.node = ToText(parts.node);
        line.text = ToText(parts.text);
        line.compiler = compiler != nullptr ? &compiler->handle : nullptr;
        log(host, &line);
    }

    morl_log log;
    void* host;
};

/// The targets as texts. They are never destroyed, because hosts may use them until they end.
const TextList& Targets()
{
    static const TextList* const targets = [] {
        auto list = std::make_unique<TextList>();
        list->Set(MorlTargets());
        return list.release();
    }();
    return *targets;
}

void GiveNames(const TextList& list, const morl_text** names, std::size_t* count)
{
    *names = list.texts.data();
    *count = list.texts.size();
}

}  // namespace
}  // namespace ns_ruke

using namespace ns_ruke;

const char* morl_version(void)
{
    return MORL_VERSION;
}

const char* morl_status_text(morl_status status)
{
    switch (status) {
    case MORL_OK:
        return "success";
    case MORL_INVALID_ARGUMENT:
        return "an argument is null or not valid";
    case MORL_OUT_OF_MEMORY:
        return "out of memory";
    case MORL_FILE_NOT_READ:
        return "a file cannot be read";
    case MORL_NODES_REFUSED:
        return "a text of nodes has faults";
    case MORL_REFUSED:
        return "a request names an unknown node or target";
    case MORL_NOT_FOUND:
        return "there is no such node, or no such element of a list";
    case MORL_BUSY:
        return "another call for this compiler is under way";
    case MORL_LIMIT_REACHED:
        return "a limit of the request is reached";
    case MORL_CANCELLED:
        return "the request was cancelled";
    default:
        return "internal error";
    }
}

const morl_text* morl_targets(size_t* count)
{
    const morl_text* targets = nullptr;
    std::size_t size = 0;
    try {
        GiveNames(Targets(), &targets, &size);
    } catch (...) {
        size = 0;
    }
    if (count != nullptr) {
        *count = size;
    }
    return targets;
}

morl_compiler* morl_compiler_create(void)
{
    try {
        return new morl_compiler;
    } catch (...) {
        return nullptr;
    }
}

morl_status morl_compiler_destroy(morl_compiler* compiler)
{
    if (compiler == nullptr) {
        return MORL_OK;
    }
    if (!IsHandle(compiler)) {
        return MORL_INVALID_ARGUMENT;
    }
    if (compiler->isBusy.exchange(true)) {
        return MORL_BUSY;
    }
    delete compiler;
    return MORL_OK;
}

morl_text morl_message(const morl_compiler* compiler)
{
    if (!IsHandle(compiler)) {
        return ToText("this is no compiler");
    }
    return compiler->isBusy ? ToText("another call for this compiler is under way")
                            : ToText(compiler->message);
}

morl_status morl_get_call_fault(const morl_compiler* compiler, size_t index, morl_fault* fault)
{
    if (!IsHandle(compiler) || !HasSize(fault)) {
        return MORL_INVALID_ARGUMENT;
    }
    if (compiler->isBusy) {
        return MORL_BUSY;
    }
    return index < compiler->faults.size() ? Give(compiler->faults[index], fault) : MORL_NOT_FOUND;
}

morl_status morl_load_nodes(morl_compiler* compiler, morl_text name, morl_text text)
{
    return Call(compiler, [&](morl_compiler& handle) {
        LoadText(handle, {ToString(name, "name"), ToString(text, "text")});
    });
}

morl_status morl_load_node_file(morl_compiler* compiler, morl_text path)
{
    return Call(compiler, [&](morl_compiler& handle) {
        const std::string name = ToString(path, "path");
        if (name.find('\0') != std::string::npos) {
            Refuse("path has a NUL in it");
        }
        errno = 0;
        std::optional<std::string> text = ReadFile(name);
        if (!text) {
            throw CallFailure{MORL_FILE_NOT_READ, "cannot read " + name + ": " +
                                                      std::generic_category().message(errno)};
        }
        LoadText(handle, {name, std::move(*text)});
    });
}

morl_status morl_load_source(morl_compiler* compiler, morl_text file, morl_text name,
                             morl_text source)
{
    return Call(compiler, [&](morl_compiler& handle) {
        LoadSource(handle, ReadSource(handle, ToString(file, "file"), ToString(name, "name"),
                                      ToString(source, "source")));
    });
}

morl_status morl_source_to_nodes(morl_compiler* compiler, morl_text file, morl_text name,
                                 morl_text source, morl_text* nodes)
{
    return Call(compiler, [&](morl_compiler& handle) {
        CheckNotNull(nodes, "nodes");
        const NodeSource node = ReadSource(handle, ToString(file, "file"), ToString(name, "name"),
                                           ToString(source, "source"));
        handle.nodesOfSource = WriteNodeText({node});
        *nodes = ToText(handle.nodesOfSource);
    });
}

morl_status morl_nodes_to_source(morl_compiler* compiler, morl_text file, morl_text nodes,
                                 int with_name, morl_text* source)
{
    return Call(compiler, [&](morl_compiler& handle) {
        CheckNotNull(source, "source");
        NodeSource node = ReadOneNode(handle, {ToString(file, "file"), ToString(nodes, "nodes")});
        node.hasName = with_name != 0;
        handle.sourceOfNodes = WriteNodeSource(node);
        *source = ToText(handle.sourceOfNodes);
    });
}

morl_status morl_get_source(morl_compiler* compiler, morl_text name, int with_name,
                            morl_text* source)
{
    return Call(compiler, [&](morl_compiler& handle) {
        CheckNotNull(source, "source");
        const MorlNode& found = FindNode(handle, name);
        NodeSource node;
        node.hasName = with_name != 0;
        node.name = found.GetName();
        node.references = found.GetReference();
        node.x = found.GetX();
        node.y = found.GetY();
        node.content = found.GetContent();
        handle.nodeSource = WriteNodeSource(node);
        *source = ToText(handle.nodeSource);
    });
}

morl_status morl_set_node(morl_compiler* compiler, const morl_node* node)
{
    return Call(compiler, [&](morl_compiler& handle) {
        CheckSize(node, "node");
        handle.compiler.SetNode(
            ToString(node->name, "node.name"), ToString(node->content, "node.content"),
            ToStrings(node->references, node->reference_count, "node.references"), node->x,
            node->y);
    });
}

morl_status morl_remove_node(morl_compiler* compiler, morl_text name)
{
    return Call(compiler, [&](morl_compiler& handle) {
        handle.compiler.RemoveNode(FindNode(handle, name).GetName());
    });
}

morl_status morl_get_node(morl_compiler* compiler, morl_text name, morl_node* node)
{
    return Call(compiler, [&](morl_compiler& handle) {
        CheckSize(node, "node");
        const MorlNode& found = FindNode(handle, name);
        handle.nodeName = found.GetName();
        handle.nodeContent = found.GetContent();
        handle.references.Set(found.GetReference());
        const std::vector<morl_text>& references = handle.references.texts;
        CopyOut(morl_node{0, ToText(handle.nodeName), ToText(handle.nodeContent), references.data(),
                          references.size(), found.GetX(), found.GetY()},
                node);
    });
}

morl_status morl_get_node_names(morl_compiler* compiler, const morl_text** names, size_t* count)
{
    return Call(compiler, [&](morl_compiler& handle) {
        CheckNotNull(names, "names");
        CheckNotNull(count, "count");
        handle.names.Set(handle.compiler.GetNodeNames());
        GiveNames(handle.names, names, count);
    });
}

morl_status morl_get_loaded_nodes(morl_compiler* compiler, const morl_text** names, size_t* count)
{
    return Call(compiler, [&](morl_compiler& handle) {
        CheckNotNull(names, "names");
        CheckNotNull(count, "count");
        GiveNames(handle.loaded, names, count);
    });
}

morl_status morl_compile(morl_compiler* compiler, const morl_request* request, morl_result** result)
{
    if (result != nullptr) {
        *result = nullptr;
    }
    return Call(compiler, [&](morl_compiler& handle) {
        CheckNotNull(result, "result");
        CheckSize(request, "request");
        *result = Compile(handle, *request).release();
    });
}

morl_status morl_get_output(const morl_result* result, morl_output* output)
{
    return IsHandle(result) ? Give(result->view, output) : MORL_INVALID_ARGUMENT;
}

morl_status morl_get_fault(const morl_result* result, size_t index, morl_fault* fault)
{
    return IsHandle(result) ? GiveElement(result->report.faults, index, ToFault, fault)
                            : MORL_INVALID_ARGUMENT;
}

morl_status morl_get_declare(const morl_result* result, int32_t list, size_t index,
                             morl_declare* declare)
{
    if (!IsHandle(result)) {
        return MORL_INVALID_ARGUMENT;
    }
    switch (list) {
    case MORL_UNIFORMS:
        return GiveElement(result->report.uniforms, index, ToDeclare, declare);
    case MORL_INPUTS:
        return GiveElement(result->report.inputs, index, ToDeclare, declare);
    case MORL_OUTPUTS:
        return GiveElement(result->report.outputs, index, ToDeclare, declare);
    default:
        return MORL_INVALID_ARGUMENT;
    }
}

morl_status morl_get_macro(const morl_result* result, size_t index, morl_macro* macro)
{
    return IsHandle(result) ? GiveElement(result->report.macros, index, ToMacro, macro)
                            : MORL_INVALID_ARGUMENT;
}

morl_status morl_get_warning(const morl_result* result, size_t index, morl_warning* warning)
{
    return IsHandle(result) ? GiveElement(result->warnings, index, ToWarning, warning)
                            : MORL_INVALID_ARGUMENT;
}

morl_status morl_get_place(const morl_result* result, size_t line, morl_place* place)
{
    if (!IsHandle(result) || !HasSize(place)) {
        return MORL_INVALID_ARGUMENT;
    }
    if (line == 0 || line > result->lines.size() || result->lines[line - 1].node < 0) {
        return MORL_NOT_FOUND;
    }
    const morl_line& from = result->lines[line - 1];
    return Give({0, result->nodes[static_cast<std::size_t>(from.node)], from.line, 0}, place);
}

morl_text morl_get_json(morl_result* result)
{
    if (!IsHandle(result) || !result->hasReport) {
        return ToText("");
    }
    try {
        if (result->json.empty()) {
            result->json = ReportText(result->request, result->output, result->report);
        }
    } catch (...) {
        return ToText("");
    }
    return ToText(result->json);
}

void morl_result_destroy(morl_result* result)
{
    if (IsHandle(result)) {
        delete result;
    }
}

morl_status morl_link(const morl_result* vertex, const morl_result* fragment,
                      morl_program** program)
{
    if (program == nullptr) {
        return MORL_INVALID_ARGUMENT;
    }
    *program = nullptr;
    const bool areReported =
        IsHandle(vertex) && IsHandle(fragment) && vertex->hasReport && fragment->hasReport;
    if (!areReported || vertex->request.target != fragment->request.target) {
        return MORL_INVALID_ARGUMENT;
    }
    try {
        *program = new morl_program(
            ReportProgram(vertex->report, fragment->report, vertex->request.target));
        return MORL_OK;
    } catch (const std::bad_alloc&) {
        return MORL_OUT_OF_MEMORY;
    } catch (...) {
        return MORL_FAILED;
    }
}

morl_status morl_get_program_info(const morl_program* program, morl_program_info* info)
{
    if (!IsHandle(program)) {
        return MORL_INVALID_ARGUMENT;
    }
    const ProgramReport& report = program->report;
    return Give({0, report.uniforms.size(), report.varyings.size(), report.warnings.size()}, info);
}

morl_status morl_get_program_uniform(const morl_program* program, size_t index,
                                     morl_program_uniform* uniform)
{
    return IsHandle(program) ? GiveElement(program->report.uniforms, index, ToUniform, uniform)
                             : MORL_INVALID_ARGUMENT;
}

morl_status morl_get_varying(const morl_program* program, size_t index, morl_varying* varying)
{
    return IsHandle(program) ? GiveElement(program->report.varyings, index, ToVarying, varying)
                             : MORL_INVALID_ARGUMENT;
}

morl_status morl_get_program_warning(const morl_program* program, size_t index,
                                     morl_warning* warning)
{
    return IsHandle(program) ? GiveElement(program->report.warnings, index, ToWarning, warning)
                             : MORL_INVALID_ARGUMENT;
}

void morl_program_destroy(morl_program* program)
{
    if (IsHandle(program)) {
        delete program;
    }
}

morl_status morl_set_log(morl_log log, void* host, morl_log* previous_log, void** previous_host)
{
    try {
        const LogSink previous =
            TamberLogSystem::SetSink(log != nullptr ? LogSink(HostLog{log, host}) : LogSink());
        const auto* const known = previous.target<HostLog>();
        if (previous_log != nullptr) {
            *previous_log = known != nullptr ? known->log : nullptr;
        }
        if (previous_host != nullptr) {
            *previous_host = known != nullptr ? known->host : nullptr;
        }
        return MORL_OK;
    } catch (const std::bad_alloc&) {
        return MORL_OUT_OF_MEMORY;
    } catch (...) {
        return MORL_FAILED;
    }
}

void morl_release_memory(void)
{
    MorlUnit::ReleaseMemory();
}
