// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/target_translator.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ns_ruke {

/// The target "hlsl": HLSL for shader model 3. Inputs and outputs are structs, samplers have
/// registers, and texture coordinates bound to TEXAUTO are numbered (but looked up in the fragment
/// stage).
class MORL_API MorlTranslatorHLSL : public MorlTargetTranslator {
public:
    MorlTranslatorHLSL();
    MorlTranslatorHLSL(const MorlTranslatorHLSL&) = default;
    MorlTranslatorHLSL& operator=(const MorlTranslatorHLSL&) = default;
    ~MorlTranslatorHLSL() override;

    /// One member of the output struct.
    std::string WriteOutputDeclare(MorlDeclare* declare);

private:
    friend struct TargetRow;
    static const TargetRecord& Record();
};

}  // namespace ns_ruke
