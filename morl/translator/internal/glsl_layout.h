// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/spelling_table.h"
#include "morl/translator/morl_translator.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

// What the two GLSL targets share.

extern const SpellingTable kGlslAutoTypes;
extern const SpellingTable kGlslSemantics;

// The layout: inputs and outputs are globals. The entry function first copies the inputs to locals
// named "i" + name, computes the outputs in locals named "ret" + name, and finally copies those to
// the outputs.

/// The name of the local copy of an input, and of the local of an output.
std::string GlslInputLocal(const std::string& name);
std::string GlslOutputLocal(const std::string& name);

/// A global of a stage: storage word, type and name.
std::string GlslStageGlobal(MorlTranslator& translator, MorlDeclare* declare);

/// The local copies of the inputs.
std::string GlslInputCopies(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs);

/// The locals of the outputs, each initialised by its type's constructor with `start`.
std::string GlslOutputLocals(MorlTranslator& translator, const std::vector<MorlDeclare*>& outputs,
                             std::string_view start);

/// The line that copies an output's local to `target`.
std::string GlslCopyOut(std::string_view target, const MorlDeclare* output);

/// The binding of a declaration. Shaders of these targets do not contain it; it is for tools that
/// ask a back end for it.
std::string GlslBinding(std::unordered_map<std::string, int>& samplerRegisters,
                        const MorlDeclare* declare, const MorlRegister* binding);

/// The line that opens the entry function.
constexpr std::string_view kGlslMainStart = "void main(){ \n";

/// What ends the entry function.
constexpr std::string_view kGlslMainEnd = "}\n";

}  // namespace ns_ruke
