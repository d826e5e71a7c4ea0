// SPDX-License-Identifier: MIT
/// @file
/// The C interface for hosts in C++17 of any compiler, such as Visual C++ with a DLL that another
/// one has made: handles that destroy themselves, views, lists, and errors as values. Only this
/// header; nothing here throws but the host's own standard library when memory is short, and
/// nothing needs exceptions or type information.
///
/// What morl.h says about ownership, threads and errors holds here as well: views are valid for as
/// long as the object that gave them.
#pragma once

#include "morl/c/morl.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morl {

inline morl_text ToText(std::string_view text)
{
    return {text.data(), text.size()};
}

inline std::string_view ToView(const morl_text& text)
{
    return {text.data, text.size};
}

/// A structure of the C interface with its size, and 0 in all else.
template <class Structure>
Structure Sized()
{
    Structure structure = {};
    structure.size = sizeof structure;
    return structure;
}

/// Why a call failed.
struct Error {
    morl_status status = MORL_OK;
    std::string message{};
    std::vector<std::string> faults{};  ///< "FILE:LINE:COLUMN: TEXT" each, for refused texts

    /// Whether there is an error.
    explicit operator bool() const { return status != MORL_OK; }
};

inline void Destroy(morl_compiler* compiler)
{
    morl_compiler_destroy(compiler);
}

inline void Destroy(morl_result* result)
{
    morl_result_destroy(result);
}

inline void Destroy(morl_program* program)
{
    morl_program_destroy(program);
}

/// A handle of the C interface, destroyed with this object. Can be moved, not copied.
template <class Structure>
class Handle {
public:
    explicit Handle(Structure* newHandle = nullptr) : handle(newHandle) {}
    Handle(Handle&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(handle, other.handle);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { Destroy(handle); }

    /// For calls of the C interface itself; null if there is none.
    Structure* Get() const { return handle; }

private:
    Structure* handle;
};

/// The elements of a list, which the C interface gives one by one.
/// @param get gives the element of an index, or another status than MORL_OK after the last one
template <class Structure, class Get>
std::vector<Structure> ListOf(const Get& get)
{
    std::vector<Structure> list;
    auto element = Sized<Structure>();
    while (get(list.size(), &element) == MORL_OK) {
        list.push_back(element);
    }
    return list;
}

/// The result of a request.
class Result : public Handle<morl_result> {
public:
    using Handle::Handle;

    /// The code, and those lists that are plain.
    morl_output Output() const
    {
        auto output = Sized<morl_output>();
        morl_get_output(Get(), &output);
        return output;
    }
    std::string_view Code() const { return ToView(Output().code); }

    std::vector<morl_fault> Faults() const
    {
        return ListOf<morl_fault>([this](std::size_t index, morl_fault* fault) {
            return morl_get_fault(Get(), index, fault);
        });
    }
    std::vector<morl_warning> Warnings() const
    {
        return ListOf<morl_warning>([this](std::size_t index, morl_warning* warning) {
            return morl_get_warning(Get(), index, warning);
        });
    }
    std::vector<morl_declare> Uniforms() const { return Declares(MORL_UNIFORMS); }
    std::vector<morl_declare> Inputs() const { return Declares(MORL_INPUTS); }
    std::vector<morl_declare> Outputs() const { return Declares(MORL_OUTPUTS); }
    std::vector<morl_macro> Macros() const
    {
        return ListOf<morl_macro>([this](std::size_t index, morl_macro* macro) {
            return morl_get_macro(Get(), index, macro);
        });
    }

    /// The place that a line of the code is from; empty: from no node. @param line 1-based
    std::optional<morl_place> PlaceOf(std::size_t line) const
    {
        auto place = Sized<morl_place>();
        const bool isFrom = morl_get_place(Get(), line, &place) == MORL_OK;
        return isFrom ? std::optional(place) : std::nullopt;
    }

    /// What a host binds by: docs/reflection.schema.json.
    std::string_view Json() const { return ToView(morl_get_json(Get())); }

private:
    std::vector<morl_declare> Declares(std::int32_t list) const
    {
        return ListOf<morl_declare>([this, list](std::size_t index, morl_declare* declare) {
            return morl_get_declare(Get(), list, index, declare);
        });
    }
};

/// Both passes of a shader as one program.
class Program : public Handle<morl_program> {
public:
    using Handle::Handle;

    std::vector<morl_program_uniform> Uniforms() const
    {
        return ListOf<morl_program_uniform>(
            [this](std::size_t index, morl_program_uniform* uniform) {
                return morl_get_program_uniform(Get(), index, uniform);
            });
    }
    std::vector<morl_varying> Varyings() const
    {
        return ListOf<morl_varying>([this](std::size_t index, morl_varying* varying) {
            return morl_get_varying(Get(), index, varying);
        });
    }
    std::vector<morl_warning> Warnings() const
    {
        return ListOf<morl_warning>([this](std::size_t index, morl_warning* warning) {
            return morl_get_program_warning(Get(), index, warning);
        });
    }
};

/// Puts two results for the same target together; without a handle if they do not fit.
inline Program Link(const Result& vertex, const Result& fragment)
{
    morl_program* program = nullptr;
    morl_link(vertex.Get(), fragment.Get(), &program);
    return Program(program);
}

/// A request: one stage of a shader in one target language. What the views are of must outlive it.
struct Request {
    std::string_view target{};  ///< "hlsl", "hlsl10", "glsl" or "glsles"
    std::int32_t stage = MORL_VERTEX;
    std::vector<std::string_view> nodes{};
    std::vector<std::pair<std::string_view, std::int32_t>> macros{};
    std::vector<std::pair<std::string_view, std::string_view>> semantics{};
    std::vector<std::pair<std::string_view, std::int32_t>> samplers{};
    bool wantsReport = true;
    bool wantsWarnings = false;
    std::size_t mostLoopWork = 0;   ///< as in morl_request
    std::size_t mostTextBytes = 0;  ///< likewise
    const std::atomic<std::int32_t>* cancel = nullptr;

    /// For the fragment pass: passes on what the vertex pass has assigned.
    void TakeSemantics(const Result& vertex)
    {
        const morl_output output = vertex.Output();
        for (std::size_t i = 0; i < output.semantic_count; ++i) {
            semantics.emplace_back(ToView(output.semantics[i].name),
                                   ToView(output.semantics[i].semantic));
        }
    }
};

/// A compiler with its nodes.
class Compiler : public Handle<morl_compiler> {
public:
    /// Without a handle if memory is short.
    Compiler() : Handle(morl_compiler_create()) {}

    /// Loads all nodes of a text in the format of the node files, or none if it has faults.
    [[nodiscard]] Error Load(std::string_view name, std::string_view text)
    {
        return ErrorOf(morl_load_nodes(Get(), ToText(name), ToText(text)));
    }

    /// The same with a file. @param path in UTF-8
    [[nodiscard]] Error LoadFile(std::string_view path)
    {
        return ErrorOf(morl_load_node_file(Get(), ToText(path)));
    }

    /// Loads a node from its source, a text file of its own.
    /// @param file what faults call the text
    /// @param name the name of the node, unless the header says one
    [[nodiscard]] Error LoadSource(std::string_view file, std::string_view name,
                                   std::string_view source)
    {
        return ErrorOf(morl_load_source(Get(), ToText(file), ToText(name), ToText(source)));
    }

    /// Writes a node as a source.
    /// @param source is replaced if there is no error
    [[nodiscard]] Error GetSource(std::string_view name, bool withName, std::string& source)
    {
        morl_text text = {};
        const Error error = ErrorOf(morl_get_source(Get(), ToText(name), withName ? 1 : 0, &text));
        if (!error) {
            source.assign(text.data, text.size);
        }
        return error;
    }

    /// Writes the node of a source as a text in the format of the node files, with all that its
    /// header has.
    /// @param file what faults call the text
    /// @param name the name of the node, unless the header says one
    /// @param nodes is replaced if there is no error
    [[nodiscard]] Error SourceToNodes(std::string_view file, std::string_view name,
                                      std::string_view source, std::string& nodes)
    {
        morl_text text = {};
        const Error error =
            ErrorOf(morl_source_to_nodes(Get(), ToText(file), ToText(name), ToText(source), &text));
        if (!error) {
            nodes.assign(text.data, text.size);
        }
        return error;
    }

    /// The way back: the only node of a text as a source.
    /// @param source is replaced if there is no error
    [[nodiscard]] Error NodesToSource(std::string_view file, std::string_view nodes, bool withName,
                                      std::string& source)
    {
        morl_text text = {};
        const Error error = ErrorOf(
            morl_nodes_to_source(Get(), ToText(file), ToText(nodes), withName ? 1 : 0, &text));
        if (!error) {
            source.assign(text.data, text.size);
        }
        return error;
    }

    /// Adds a node, or replaces the one of the same name.
    [[nodiscard]] Error Set(std::string_view name, std::string_view content,
                            const std::vector<std::string_view>& references = {})
    {
        const std::vector<morl_text> names = ToTexts(references);
        auto node = Sized<morl_node>();
        node.name = ToText(name);
        node.content = ToText(content);
        node.references = names.data();
        node.reference_count = names.size();
        return ErrorOf(morl_set_node(Get(), &node));
    }

    /// Whether there was a node of this name.
    bool Remove(std::string_view name) { return morl_remove_node(Get(), ToText(name)) == MORL_OK; }

    /// Runs a request. Faults in the nodes are no error: the result has them.
    /// @param result is replaced if there is no error
    [[nodiscard]] Error Compile(const Request& request, Result& result)
    {
        const std::vector<morl_text> nodes = ToTexts(request.nodes);
        const std::vector<morl_value> macros = ToValues(request.macros);
        const std::vector<morl_value> samplers = ToValues(request.samplers);
        std::vector<morl_semantic> semantics;
        for (const auto& [name, semantic] : request.semantics) {
            semantics.push_back({ToText(name), ToText(semantic)});
        }
        auto passed = Sized<morl_request>();
        passed.nodes = nodes.data();
        passed.node_count = nodes.size();
        passed.macros = macros.data();
        passed.macro_count = macros.size();
        passed.semantics = semantics.data();
        passed.semantic_count = semantics.size();
        passed.samplers = samplers.data();
        passed.sampler_count = samplers.size();
        passed.target = ToText(request.target);
        passed.stage = request.stage;
        passed.wants_report = request.wantsReport ? 1 : 0;
        passed.wants_warnings = request.wantsWarnings ? 1 : 0;
        passed.most_loop_work = request.mostLoopWork;
        passed.most_text_bytes = request.mostTextBytes;
        static_assert(sizeof(*request.cancel) == sizeof(*passed.cancel), "a plain number");
        passed.cancel = reinterpret_cast<const std::int32_t*>(request.cancel);
        morl_result* made = nullptr;
        const morl_status status = morl_compile(Get(), &passed, &made);
        if (status == MORL_OK) {
            result = Result(made);
        }
        return ErrorOf(status);
    }

private:
    static std::vector<morl_text> ToTexts(const std::vector<std::string_view>& views)
    {
        std::vector<morl_text> texts;
        for (const std::string_view view : views) {
            texts.push_back(ToText(view));
        }
        return texts;
    }

    static std::vector<morl_value> ToValues(
        const std::vector<std::pair<std::string_view, std::int32_t>>& pairs)
    {
        std::vector<morl_value> values;
        for (const auto& [name, value] : pairs) {
            values.push_back({ToText(name), value, 0});
        }
        return values;
    }

    Error ErrorOf(morl_status status) const
    {
        if (status == MORL_OK) {
            return {};
        }
        Error error = {status, std::string(ToView(morl_message(Get()))), {}};
        const auto faults = ListOf<morl_fault>([this](std::size_t index, morl_fault* fault) {
            return morl_get_call_fault(Get(), index, fault);
        });
        for (const morl_fault& fault : faults) {
            error.faults.push_back(std::string(ToView(fault.file)) + ":" +
                                   std::to_string(fault.line) + ":" + std::to_string(fault.column) +
                                   ": " + std::string(ToView(fault.text)));
        }
        return error;
    }
};

}  // namespace morl
