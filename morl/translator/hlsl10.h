// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/target_translator.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ns_ruke {

/// The target "hlsl10": HLSL for Direct3D 10. As "hlsl", but every sampler is a texture object with
/// a sampler state beside it, pixel outputs are render targets, and the structs that meet between
/// the stages are sorted by register, so that their layouts match.
class MORL_API MorlTranslatorHLSL10 : public MorlTargetTranslator {
public:
    MorlTranslatorHLSL10();
    MorlTranslatorHLSL10(const MorlTranslatorHLSL10&) = default;
    MorlTranslatorHLSL10& operator=(const MorlTranslatorHLSL10&) = default;
    ~MorlTranslatorHLSL10() override;

    void Reset() override;
    std::string WriteUniformList(std::vector<MorlDeclare*> uniforms) override;
    std::string WriteInputList(std::vector<MorlDeclare*> inputs) override;
    std::string WriteOutputList(std::vector<MorlDeclare*> outputs) override;
    std::string WriteMainFunction(MorlProgram* linked) override;
    std::string WriteInputConvert(std::vector<MorlDeclare*> inputs) override;
    std::string WriteOutputConvert(std::vector<MorlDeclare*> outputs) override;
    std::string WriteRegister(MorlDeclare* declare, MorlRegister* binding) override;

    /// One member of the output struct.
    std::string WriteOutputDeclare(MorlDeclare* declare);
    /// The place of a declaration in the register order, and whether `a` stands before `b` in it.
    std::int32_t GetRegisterIndex(MorlDeclare* declare);
    bool SortByRegister(MorlDeclare* a, MorlDeclare* b);
    /// Sorts a list by register; declarations of the same place keep their order.
    void Sort(std::vector<MorlDeclare*>& declares);

private:
    std::uint32_t texcoordCounter = 0;  ///< the number of the next automatic texture coordinate
};

}  // namespace ns_ruke
