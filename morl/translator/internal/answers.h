// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/renames.h"
#include "morl/translator/internal/target_spellings.h"
#include "morl/translator/internal/text.h"
#include "morl/translator/internal/written_lines.h"
#include "morl/translator/morl_translator.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ns_ruke {

// Two sources of what differs by target, with the same operations. The code that lays out a shader
// is written once, for either of them.

/// Asks a translator's virtual operations, so that every override takes effect. Hosts' own classes
/// are written with these answers.
class HookAnswers {
public:
    explicit HookAnswers(MorlTranslator& hooks)
        : repetition(hooks.repetition), translator(hooks), writing(hooks)
    {
    }

    int Stage() const { return StageOf(translator.program); }
    std::string Buffer(ENUM_TOKEN token) { return translator.WriteBuffer(token); }
    std::string Type(ENUM_TOKEN token) { return translator.WriteVariableType(token); }
    std::string Type(MorlDeclare* declare) { return translator.WriteVariableType(declare); }
    std::string Operator(ENUM_TOKEN token) { return translator.WriteOperator(token); }
    std::string Keyword(ENUM_TOKEN token) { return translator.WriteKeyword(token); }
    std::string FunctionName(const MorlFunctionCall* call)
    {
        return translator.WriteFunctionName(call);
    }
    void AppendVariable(Text& text, MorlVariable* variable)
    {
        text.Append(translator.WriteVariable(variable));
    }

    /// From now on the body writes `prefix` before this name.
    void Rename(const std::string& name, std::string_view prefix)
    {
        translator.variableNames[name] = std::string(prefix) + name;
    }
    /// The texture coordinate that the vertex stage assigned to this name.
    std::string_view InputSemantic(const std::string& name)
    {
        return translator.inputSemantics[name];
    }
    int SamplerNumber(const std::string& name) { return translator.samplerRegisters[name]; }

    /// Appends what an operation of a translator returns, or calls `direct`, which appends the same
    /// from a record.
    template <class Operation, class Direct>
    void Ask(Text& text, const Operation& operation, const Direct& /*direct*/)
    {
        text.Append(operation(translator));
    }

    /// The line that is begun now is from this declaration, or this place of a statement.
    template <class Place>
    void Mark(const Text& /*text*/, const Place& /*place*/) const
    {
    }
    void MarkAt(std::size_t /*position*/, std::uint32_t /*offset*/) const {}
    void BeginStatement(std::size_t /*index*/) const {}

    MorlTranslator::Repetition& repetition;

private:
    MorlTranslator& translator;
    MorlTranslator::Writing writing;
};

/// Looks everything up in a target's record and in the request, without a virtual call or a string
/// of its own. Requests are written with these answers.
class RecordAnswers {
public:
    using Semantics = std::unordered_map<std::string, std::string>;
    using Registers = std::unordered_map<std::string, int>;

    /// The arguments must outlive this object.
    RecordAnswers(const TargetSpellings& target, const MorlProgram& newProgram,
                  const Semantics& newSemantics, const Registers& newRegisters)
        : spellings(target), program(newProgram), semantics(newSemantics), registers(newRegisters)
    {
    }

    int Stage() const { return program.stage; }
    std::string_view Buffer(ENUM_TOKEN token) { return spellings.buffers.Text(token, &program); }
    std::string_view Type(ENUM_TOKEN token) { return spellings.types.Text(token); }
    std::string_view Type(const MorlDeclare* declare)
    {
        return declare->varType != TOKEN_AUTO ? spellings.types.Text(declare->varType)
                                              : spellings.autoTypes.Text(BindingToken(declare));
    }
    std::string_view Operator(ENUM_TOKEN token) { return kOperators.Text(token); }
    std::string_view Keyword(ENUM_TOKEN token) { return kKeywords.Text(token); }
    std::string_view FunctionName(const MorlFunctionCall* call)
    {
        return spellings.functions.Has(call->functionToken)
                   ? spellings.functions.Text(call->functionToken)
                   : call->name;
    }
    void AppendVariable(Text& text, const MorlVariable* variable)
    {
        text.Append(renames.PrefixOf(variable->name), variable->name);
    }

    void Rename(const std::string& name, std::string_view prefix) { renames.Add(name, prefix); }
    std::string_view InputSemantic(const std::string& name) const
    {
        const auto found = semantics.find(name);
        return found != semantics.end() ? found->second : std::string_view();
    }
    int SamplerNumber(const std::string& name) const
    {
        const auto found = registers.find(name);
        return found != registers.end() ? found->second : 0;
    }

    template <class Operation, class Direct>
    void Ask(Text& /*text*/, const Operation& /*operation*/, const Direct& direct)
    {
        direct(*this);
    }

    template <class Place>
    void Mark(const Text& text, const Place& place) const
    {
        if (lines != nullptr) {
            lines->Mark(text, place);
        }
    }
    void MarkAt(std::size_t position, std::uint32_t offset) const
    {
        if (lines != nullptr) {
            lines->MarkAt(position, offset);
        }
    }
    void BeginStatement(std::size_t index) const
    {
        if (lines != nullptr) {
            lines->BeginStatement(index);
        }
    }

    const TargetSpellings& spellings;
    WrittenLines* lines = nullptr;  ///< notes where lines come from, if a report is asked for
    MorlTranslator::Repetition repetition;
    std::uint32_t texcoordCounter = 0;  ///< the number of the next automatic texture coordinate
    Semantics outputSemantics;          ///< the texture coordinates assigned, by declaration name

private:
    const MorlProgram& program;
    const Semantics& semantics;
    const Registers& registers;
    Renames renames;
};

}  // namespace ns_ruke
