// SPDX-License-Identifier: MIT
// The C interface: checks what hosts pass, and keeps exceptions on this side.
#include "morl/c/morl.h"

#include "morl/ast/unit.h"
#include "morl/c/internal/result.h"
#include "morl/compiler/log_line.h"
#include "morl/compiler/morl_compiler.h"
#include "morl/core/internal/read_file.h"
#include "morl/core/log_system.h"
#include "morl/core/messages.h"
#include "morl/core/string_helper.h"
#include "morl/translator/targets.h"

#include <algorithm>
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

}  // namespace

/// A compiler, and what its last calls have returned or complained about.
struct morl_compiler {
    ns_ruke::MorlCompiler compiler{std::vector<ns_ruke::NodeText>()};
    std::string message;
    std::vector<ns_ruke::NodeTextFault> nodeFaults;
    std::vector<ns_ruke::ReportFault> requestFaults;
    std::vector<morl_fault> faults;  ///< made from one of these
    bool isBusy = false;             ///< a call is under way
    TextList names;                  ///< of all nodes
    TextList loaded;                 ///< of the nodes that were loaded last
    TextList references;             ///< of the node that was got last, as its name and content
    std::string nodeName;
    std::string nodeContent;
};

namespace ns_ruke {
namespace {

// What hosts of the first version pass. Later versions append to these structures.
constexpr std::size_t kNodeSize = offsetof(morl_node, y) + sizeof(float);
constexpr std::size_t kRequestSize = offsetof(morl_request, wants_warnings) + sizeof(std::int32_t);
constexpr std::size_t kOutputSize = offsetof(morl_output, warning_count) + sizeof(std::size_t);

/// Ends a call with a status that is not MORL_OK.
struct CallFailure {
    morl_status status;
    std::string message;
};

[[noreturn]] void Refuse(const std::string& message)
{
    throw CallFailure{MORL_INVALID_ARGUMENT, message};
}

/// While it lives, its compiler takes no other call, such as one of the function that logs.
class Busy {
public:
    explicit Busy(morl_compiler& handle) : compiler(handle) { compiler.isBusy = true; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    ~Busy() { compiler.isBusy = false; }

private:
    morl_compiler& compiler;
};

/// Runs the body of a call for a compiler, and turns what it throws into a status and a message.
template <class Body>
morl_status Call(morl_compiler* handle, const Body& body) noexcept
{
    if (handle == nullptr || handle->isBusy) {
        return MORL_INVALID_ARGUMENT;
    }
    const Busy busy(*handle);
    handle->faults.clear();
    try {
        body(*handle);
        return MORL_OK;
    } catch (CallFailure& failure) {
        handle->message = std::move(failure.message);
        return failure.status;
    } catch (const std::bad_alloc&) {
        handle->message = "out of memory";  // short enough to need none
        return MORL_OUT_OF_MEMORY;
    } catch (...) {
        handle->message = "internal error";  // likewise
        return MORL_FAILED;
    }
}

/// Checks a list or a text that a host has passed.
/// @param what the name of its argument or member
/// @param of what it consists of
void CheckList(const void* list, std::size_t count, const std::string& what, const char* of)
{
    if (count > static_cast<std::size_t>(PTRDIFF_MAX)) {
        Refuse("the size of " + what + " is " + std::to_string(count) +
               ": lists and texts need their own sizes, there is no end mark");
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

/// Checks a structure that begins with its size.
template <class Structure>
void CheckSize(const Structure* structure, std::size_t smallest, const char* what)
{
    CheckNotNull(structure, what);
    if (structure->size < smallest) {
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
    return pass;
}

void LoadText(morl_compiler& handle, const NodeText& text)
{
    NodeTextResult result = handle.compiler.LoadNodes(text);
    if (!result.faults.empty()) {
        handle.nodeFaults = std::move(result.faults);
        handle.faults = ToFaults(handle.nodeFaults);
        throw CallFailure{MORL_NODES_REFUSED, NodeTextError(handle.nodeFaults).what()};
    }
    handle.loaded.Set(std::move(result.nodes));
}

[[noreturn]] void RefuseRequest(morl_compiler& handle, std::vector<ReportFault> faults)
{
    handle.requestFaults = std::move(faults);
    handle.faults = ToFaults(handle.requestFaults);
    std::string message = handle.requestFaults.front().text;
    if (StringHelper::StartWith(message, messages::kUnknownTarget, false)) {
        const char* separator = " (the targets are ";
        for (const std::string& target : MorlTargets()) {
            message.append(std::exchange(separator, ", ")).append(target);
        }
        message += ")";
    }
    throw CallFailure{MORL_REFUSED, message};
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
        RefuseRequest(handle, std::move(report.faults));
    }
    if (!wantsReport) {
        report.faults.clear();
    }
    return std::make_unique<morl_result>(std::move(output), std::move(report), std::move(warnings));
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
        return "an argument is null or not valid, or the compiler is in use";
    case MORL_OUT_OF_MEMORY:
        return "out of memory";
    case MORL_FILE_NOT_READ:
        return "a file cannot be read";
    case MORL_NODES_REFUSED:
        return "a text of nodes has faults";
    case MORL_REFUSED:
        return "a request names an unknown node or target";
    case MORL_NOT_FOUND:
        return "there is no such node";
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

void morl_compiler_destroy(morl_compiler* compiler)
{
    if (compiler == nullptr || !compiler->isBusy) {
        delete compiler;
    }
}

morl_text morl_message(const morl_compiler* compiler)
{
    if (compiler == nullptr) {
        return ToText("the compiler is null");
    }
    return compiler->isBusy ? ToText("the compiler is in use: its log must not call it")
                            : ToText(compiler->message);
}

const morl_fault* morl_faults(const morl_compiler* compiler, size_t* count)
{
    if (count != nullptr) {
        *count = compiler != nullptr ? compiler->faults.size() : 0;
    }
    return compiler != nullptr ? compiler->faults.data() : nullptr;
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

morl_status morl_set_node(morl_compiler* compiler, const morl_node* node)
{
    return Call(compiler, [&](morl_compiler& handle) {
        CheckSize(node, kNodeSize, "node");
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
        CheckSize(node, kNodeSize, "node");
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
        CheckSize(request, kRequestSize, "request");
        *result = Compile(handle, *request).release();
    });
}

morl_status morl_get_output(const morl_result* result, morl_output* output)
{
    if (result == nullptr || output == nullptr || output->size < kOutputSize) {
        return MORL_INVALID_ARGUMENT;
    }
    CopyOut(result->view, output);
    return MORL_OK;
}

morl_text morl_get_hint(const morl_result* result, size_t fault)
{
    return result != nullptr && fault < result->report.faults.size()
               ? ToText(result->report.faults[fault].hint)
               : ToText("");
}

void morl_result_destroy(morl_result* result)
{
    delete result;
}

morl_status morl_set_log(morl_log log, void* host)
{
    try {
        LogSink sink;
        if (log != nullptr) {
            sink = [log, host](LogLevel level, const std::string& category,
                               const std::string& message) {
                const LogLine parts(level, message);
                const morl_log_line line = {
                    sizeof line,        parts.IsError() ? MORL_ERROR : MORL_INFO,
                    parts.line,         parts.column,
                    ToText(category),   ToText(message),
                    ToText(parts.node), ToText(parts.text)};
                log(host, &line);
            };
        }
        TamberLogSystem::SetSink(std::move(sink));
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
