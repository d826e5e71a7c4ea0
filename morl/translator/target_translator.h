// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/morl_translator.h"

#include <memory>
#include <string>

namespace ns_ruke {

struct TargetSpellings;

/// What all targets have in common: operations that only spell something look it up in a record of
/// spellings. Each target adds its lists, its entry function and its bindings.
class MORL_API MorlTargetTranslator : public MorlTranslator {
public:
    MorlTargetTranslator(const MorlTargetTranslator&) = default;
    MorlTargetTranslator& operator=(const MorlTargetTranslator&) = default;
    ~MorlTargetTranslator() override;

    std::string WriteFileHeader() override;
    std::string WriteFunctionCall(MorlFunctionCall* call) override;
    std::string WriteFunctionName(const MorlFunctionCall* call) override;
    std::string WriteVariable(MorlVariable* variable) override;
    std::string WriteBuffer(ENUM_TOKEN token) override;
    std::string WriteVariableType(ENUM_TOKEN token) override;
    std::string WriteVariableType(MorlDeclare* declare) override;
    std::string ConcludeVariableType(ENUM_TOKEN token) override;
    std::string WriteOperator(ENUM_TOKEN token) override;
    std::string WriteKeyword(ENUM_TOKEN token) override;

protected:
    /// @param targetSpellings must outlive the translator.
    explicit MorlTargetTranslator(const TargetSpellings& targetSpellings);

    /// A global declaration up to its array size: storage word, type, name, size.
    void AppendGlobal(std::string& text, MorlDeclare* declare);
    /// The statements of the program's `main`, if it has one.
    void AppendMainBody(std::string& text, const MorlProgram* linked);

    const TargetSpellings* spellings;

private:
    friend MORL_API std::unique_ptr<MorlTranslator> MakeTranslator(const std::string& target);

    template <class Part>
    void Append(std::string& text, const Part& part);

    /// Whether nobody overrides an operation, so that the walk may ask the record directly. The
    /// texts are the same either way. Never copied, because the copy may be part of a host's class.
    struct Plainness {
        Plainness() = default;
        Plainness(const Plainness& /*other*/) noexcept {}
        Plainness& operator=(const Plainness& /*other*/) noexcept { return *this; }

        bool value = false;
    };
    Plainness isPlain;
};

}  // namespace ns_ruke
