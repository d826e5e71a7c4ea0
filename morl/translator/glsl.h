// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/target_translator.h"

#include <string>
#include <vector>

namespace ns_ruke {

/// The target "glsl": GLSL 1.50. Inputs and outputs are globals that link by name; semantics and
/// registers are not written.
class MORL_API MorlTranslatorGLSL : public MorlTargetTranslator {
public:
    MorlTranslatorGLSL();
    MorlTranslatorGLSL(const MorlTranslatorGLSL&) = default;
    MorlTranslatorGLSL& operator=(const MorlTranslatorGLSL&) = default;
    ~MorlTranslatorGLSL() override;

    /// The global of one output, if it needs one.
    std::string WriteOutputDeclare(MorlDeclare* declare);
    /// The lines at the end of the entry function that copy the locals to the outputs.
    std::string WriteFinalOutput(std::vector<MorlDeclare*> outputs);

private:
    friend struct TargetRow;
    static const TargetRecord& Record();
};

}  // namespace ns_ruke
