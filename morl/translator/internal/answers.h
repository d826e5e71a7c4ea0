// SPDX-License-Identifier: MIT
#pragma once

#include "morl/compiler/pass_property.h"
#include "morl/core/name_map.h"
#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/target_record.h"
#include "morl/translator/internal/text.h"
#include "morl/translator/internal/written_lines.h"
#include "morl/translator/morl_translator.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ns_ruke {

/// One request of the compiler, while it is written.
struct WrittenRequest {
    const PassProperty& pass;
    const MorlProgram& program;
    WrittenLines* lines;  ///< notes where lines come from; null: nobody asked for it
    /// What is known of a name in the body.
    struct Name {
        const std::string_view* prefix;  ///< of an input or output; null: none
        bool isUsed;
    };
    NameMap<Name> names{};  ///< of inputs and outputs, and of uniforms if lines are noted
    MorlTranslator::Repetition repetition{};
    std::uint32_t texcoordCounter = 0;  ///< the number of the next automatic texture coordinate
    std::size_t mostBytes = SIZE_MAX;   ///< of text; once there are more, nothing else is written
    /// The texture coordinates assigned, by declaration name.
    std::unordered_map<std::string, std::string> outputSemantics{};
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

    /// Whether a text has become longer than the request allows.
    bool IsFull(const Text& text) const
    {
        return request != nullptr && text.Size() > request->mostBytes;
    }

    // Each appends one answer.

    void AppendBuffer(Text& text, ENUM_TOKEN token) const
    {
        if (hooks != nullptr) {
            text.Append(hooks->WriteBuffer(token));
        } else {
            text.Append(target->buffers.Text(token, Program()));
        }
    }
    void AppendType(Text& text, ENUM_TOKEN token) const
    {
        if (hooks != nullptr) {
            text.Append(hooks->WriteVariableType(token));
        } else {
            text.Append(target->types.Text(token));
        }
    }
    void AppendType(Text& text, MorlDeclare* declare) const
    {
        if (hooks != nullptr) {
            text.Append(hooks->WriteVariableType(declare));
        } else {
            text.Append(WrittenType(*declare, *target));
        }
    }
    void AppendOperator(Text& text, ENUM_TOKEN token) const
    {
        if (hooks != nullptr) {
            text.Append(hooks->WriteOperator(token));
        } else {
            text.Append(kOperators.Text(token));
        }
    }
    void AppendKeyword(Text& text, ENUM_TOKEN token) const
    {
        if (hooks != nullptr) {
            text.Append(hooks->WriteKeyword(token));
        } else {
            text.Append(kSpecialWords.Text(token));
        }
    }
    void AppendFunctionName(Text& text, const MorlFunctionCall* call) const
    {
        if (hooks != nullptr) {
            text.Append(hooks->WriteFunctionName(call));
        } else if (target->functions.Has(call->functionToken)) {
            text.Append(target->functions.Text(call->functionToken));
        } else {
            text.Append(call->name);
        }
    }
    void AppendVariable(Text& text, MorlVariable* variable) const
    {
        if (hooks != nullptr) {
            text.Append(hooks->WriteVariable(variable));
        } else {
            auto* const known = request->names.Find(variable->name);
            if (known != nullptr) {
                known->isUsed = true;
            }
            const bool hasPrefix = known != nullptr && known->prefix != nullptr;
            text.Append(hasPrefix ? *known->prefix : std::string_view(), variable->name);
        }
    }

    /// From now on the body writes `prefix` before this name.
    /// @param prefix a constant
    void Rename(const std::string& name, const std::string_view& prefix) const
    {
        if (hooks != nullptr) {
            hooks->variableNames[name] = std::string(prefix) + name;
        } else {
            request->names[name].prefix = &prefix;
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
        return SamplerRegister(request->pass, name);
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
