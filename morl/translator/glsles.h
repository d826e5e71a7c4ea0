// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/target_translator.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ns_ruke {

/// The target "glsles": GLSL ES 1.00. Attributes and varyings replace "in" and "out". Varyings are
/// declared in register order in both stages. A declaration named oProjPos carries the projected
/// position and never becomes an attribute or a varying.
class MORL_API MorlTranslatorGLSLES : public MorlTargetTranslator {
public:
    MorlTranslatorGLSLES();
    MorlTranslatorGLSLES(const MorlTranslatorGLSLES&) = default;
    MorlTranslatorGLSLES& operator=(const MorlTranslatorGLSLES&) = default;
    ~MorlTranslatorGLSLES() override;

    /// The global of one output, if it needs one.
    std::string WriteOutputDeclare(MorlDeclare* declare);
    /// The lines at the end of the entry function that copy the locals to the outputs.
    std::string WriteFinalOutput(std::vector<MorlDeclare*> outputs);
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
