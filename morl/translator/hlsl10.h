// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/target_translator.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ns_ruke {

/// The target "hlsl10": HLSL for Direct3D 10. Like "hlsl", except that samplers are texture objects
/// (with a separate sampler state if bound to SAUTO), pixel outputs are render targets, and the
/// structs passed between the stages are sorted by register, so that their layouts match.
class MORL_API MorlTranslatorHLSL10 : public MorlTargetTranslator {
public:
    MorlTranslatorHLSL10();
    MorlTranslatorHLSL10(const MorlTranslatorHLSL10&) = default;
    MorlTranslatorHLSL10& operator=(const MorlTranslatorHLSL10&) = default;
    ~MorlTranslatorHLSL10() override;

    /// One member of the output struct.
    std::string WriteOutputDeclare(MorlDeclare* declare);
    /// The rank of a declaration in the register order, and whether `a` comes before `b`.
    std::int32_t GetRegisterIndex(MorlDeclare* declare);
    bool SortByRegister(MorlDeclare* a, MorlDeclare* b);
    /// Sorts a list by register; declarations of equal rank keep their order.
    void Sort(std::vector<MorlDeclare*>& declares);

private:
    friend struct TargetRow;
    static const TargetRecord& Record();
};

}  // namespace ns_ruke
