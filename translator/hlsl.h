// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/morl_translator.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ns_ruke {

/// The target "hlsl": HLSL for shader model 3. Inputs and outputs are structs, samplers have
/// registers, and texture coordinates bound to TEXAUTO are numbered (but looked up in the fragment
/// stage).
class MORL_API MorlTranslatorHLSL : public MorlTranslator {
public:
    MorlTranslatorHLSL();
    MorlTranslatorHLSL(const MorlTranslatorHLSL&) = default;
    MorlTranslatorHLSL& operator=(const MorlTranslatorHLSL&) = default;
    ~MorlTranslatorHLSL() override;

    void Reset() override;
    std::string WriteFunctionCall(MorlFunctionCall* call) override;
    std::string WriteFunctionName(const MorlFunctionCall* call) override;
    std::string WriteVariable(MorlVariable* variable) override;
    std::string WriteBuffer(ENUM_TOKEN token) override;
    std::string WriteVariableType(ENUM_TOKEN token) override;
    std::string WriteVariableType(MorlDeclare* declare) override;
    std::string ConcludeVariableType(ENUM_TOKEN token) override;
    std::string WriteOperator(ENUM_TOKEN token) override;
    std::string WriteKeyword(ENUM_TOKEN token) override;
    std::string WriteUniformList(std::vector<MorlDeclare*> uniforms) override;
    std::string WriteInputList(std::vector<MorlDeclare*> inputs) override;
    std::string WriteOutputList(std::vector<MorlDeclare*> outputs) override;
    std::string WriteMainFunction(MorlProgram* linked) override;
    std::string WriteInputConvert(std::vector<MorlDeclare*> inputs) override;
    std::string WriteOutputConvert(std::vector<MorlDeclare*> outputs) override;
    std::string WriteRegister(MorlDeclare* declare, MorlRegister* binding) override;

    /// One member of the output struct.
    std::string WriteOutputDeclare(MorlDeclare* declare);

protected:
    void AppendFunctionCall(std::string& text, MorlFunctionCall* call) override;

private:
    std::uint32_t texcoordCounter = 0;  ///< the number of the next automatic texture coordinate
};

}  // namespace ns_ruke
