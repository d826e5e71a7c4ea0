// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/morl_translator.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ns_ruke {

struct TargetRecord;
class WalkPart;

/// What all targets have in common: the operations look up in the target's record how it spells
/// something, and how it lays out the parts of a shader.
class MORL_API MorlTargetTranslator : public MorlTranslator {
public:
    MorlTargetTranslator(const MorlTargetTranslator&) = default;
    MorlTargetTranslator& operator=(const MorlTargetTranslator&) = default;
    ~MorlTargetTranslator() override;

    void Reset() override;
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
    std::string WriteUniformList(std::vector<MorlDeclare*> uniforms) override;
    std::string WriteInputList(std::vector<MorlDeclare*> inputs) override;
    std::string WriteOutputList(std::vector<MorlDeclare*> outputs) override;
    std::string WriteMainFunction(MorlProgram* linked) override;
    std::string WriteInputConvert(std::vector<MorlDeclare*> inputs) override;
    std::string WriteOutputConvert(std::vector<MorlDeclare*> outputs) override;
    std::string WriteRegister(MorlDeclare* declare, MorlRegister* binding) override;

protected:
    /// @param targetRecord must outlive the translator.
    explicit MorlTargetTranslator(const TargetRecord& targetRecord);

    /// The text that a part of the walk writes with this translator's operations.
    std::string Collect(const WalkPart& part);

    const TargetRecord* record;
    std::uint32_t texcoordCounter = 0;  ///< the number of the next automatic texture coordinate
};

}  // namespace ns_ruke
