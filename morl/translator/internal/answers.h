// SPDX-License-Identifier: MIT
#pragma once

#include "morl/compiler/pass_property.h"
#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/renames.h"
#include "morl/translator/internal/target_record.h"
#include "morl/translator/internal/text.h"
#include "morl/translator/internal/written_lines.h"
#include "morl/translator/morl_translator.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ns_ruke {

/// One request of the compiler, while it is written.
struct WrittenRequest {
    const PassProperty& pass;
    const MorlProgram& program;
    WrittenLines* lines;  ///< notes where lines come from; null: nobody asked for it
    Renames renames{};
    MorlTranslator::Repetition repetition{};
    std::uint32_t texcoordCounter = 0;  ///< the number of the next automatic texture coordinate
    /// The texture coordinates assigned, by declaration name.
    std::unordered_map<std::string, std::string> outputSemantics{};
};

/// The text of an answer: what a hook has returned, or a view of a table.
class Answer {
public:
    explicit Answer(std::string_view newText) : text(newText) {}
    explicit Answer(std::string&& returned) : own(std::move(returned)), text(own) {}
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;

    operator std::string_view() const { return text; }  // NOLINT(google-explicit-constructor)

private:
    std::string own;
    std::string_view text;
};

/// What differs by target. A host's translator is asked through its virtual operations, so that
/// every override takes effect. The compiler's own requests are answered from the target's record,
/// without a virtual call or a string for each answer.
class Answers {
public:
    /// For operations of a translator.
    /// @param newTarget null: a host's own translator, which knows no record
    Answers(MorlTranslator& newHooks, const TargetRecord* newTarget)
        : hooks(&newHooks), target(newTarget), repetition(newHooks.repetition)
    {
    }

    /// For a request. The arguments must outlive this object.
    Answers(WrittenRequest& newRequest, const TargetRecord& newTarget)
        : request(&newRequest), target(&newTarget), repetition(newRequest.repetition)
    {
    }

    const MorlProgram* Program() const
    {
        return hooks != nullptr ? hooks->program : &request->program;
    }
    int Stage() const { return StageOf(Program()); }

    Answer Buffer(ENUM_TOKEN token) const
    {
        return hooks != nullptr ? Answer(hooks->WriteBuffer(token))
                                : Answer(target->buffers.Text(token, Program()));
    }
    Answer Type(ENUM_TOKEN token) const
    {
        return hooks != nullptr ? Answer(hooks->WriteVariableType(token))
                                : Answer(target->types.Text(token));
    }
    Answer Type(MorlDeclare* declare) const
    {
        return hooks != nullptr ? Answer(hooks->WriteVariableType(declare))
                                : Answer(WrittenType(*declare, *target));
    }
    Answer Operator(ENUM_TOKEN token) const
    {
        return hooks != nullptr ? Answer(hooks->WriteOperator(token))
                                : Answer(kOperators.Text(token));
    }
    Answer Keyword(ENUM_TOKEN token) const
    {
        return hooks != nullptr ? Answer(hooks->WriteKeyword(token))
                                : Answer(kSpecialWords.Text(token));
    }
    Answer FunctionName(const MorlFunctionCall* call) const
    {
        return hooks != nullptr ? Answer(hooks->WriteFunctionName(call))
               : target->functions.Has(call->functionToken)
                   ? Answer(target->functions.Text(call->functionToken))
                   : Answer(std::string_view(call->name));
    }

    void AppendVariable(Text& text, MorlVariable* variable) const
    {
        if (hooks != nullptr) {
            text.Append(hooks->WriteVariable(variable));
        } else {
            text.Append(request->renames.PrefixOf(variable->name), variable->name);
        }
    }

    /// From now on the body writes `prefix` before this name.
    void Rename(const std::string& name, std::string_view prefix) const
    {
        if (hooks != nullptr) {
            hooks->variableNames[name] = std::string(prefix) + name;
        } else {
            request->renames.Add(name, prefix);
        }
    }

    /// The texture coordinate that the vertex stage assigned to this name.
    std::string_view InputSemantic(const std::string& name) const
    {
        if (hooks != nullptr) {
            return hooks->inputSemantics[name];
        }
        const auto found = request->pass.semantics.find(name);
        return found != request->pass.semantics.end() ? found->second : std::string_view();
    }
    int SamplerNumber(const std::string& name) const
    {
        if (hooks != nullptr) {
            return hooks->samplerRegisters[name];
        }
        const auto found = request->pass.samplerRegisters.find(name);
        return found != request->pass.samplerRegisters.end() ? found->second : 0;
    }

    /// The texture coordinate of a declaration bound to TEXAUTO: in the fragment stage the one that
    /// the vertex stage assigned to its name, in other stages the next one.
    /// @param counter the number of the next one
    std::string_view Texcoord(const std::string& name, std::uint32_t& counter) const
    {
        if (Stage() == kFragmentStage) {
            return InputSemantic(name);
        }
        auto& semantics = hooks != nullptr ? hooks->outputSemantics : request->outputSemantics;
        std::string& semantic = semantics[name];
        semantic = std::string(kTexcoord) + StringHelper::ConvertToString(counter, 10);
        ++counter;
        return semantic;
    }

    /// Where the lines of the text come from; null: nobody asked for it.
    WrittenLines* Lines() const { return request != nullptr ? request->lines : nullptr; }

    MorlTranslator* hooks = nullptr;    ///< null: a request
    WrittenRequest* request = nullptr;  ///< null: an operation of a translator
    const TargetRecord* target;
    MorlTranslator::Repetition& repetition;
};

}  // namespace ns_ruke
