// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/call_forms.h"
#include "morl/translator/internal/spelling_table.h"

#include <string_view>
#include <vector>

namespace ns_ruke {

class HookAnswers;
class RecordAnswers;
template <class Answers>
class Walk;

/// The parts of a shader that each target lays out in its own way.
template <class Answers>
struct TargetSections {
    using List = void (*)(Walk<Answers>& walk, const std::vector<MorlDeclare*>& declares);

    List uniforms;
    List inputs;
    List outputs;
    void (*main)(Walk<Answers>& walk, MorlProgram& linked);
    List inputConvert;   ///< the lines at the start of the entry function for the inputs
    List outputConvert;  ///< the same for the outputs
};

/// Everything that a target spells in its own way. Each target has one record, at the top of its
/// file.
struct TargetSpellings {
    std::string_view header;         ///< what every shader begins with
    const SpellingTable& types;      ///< a type without a row is written as nothing
    const SpellingTable& autoTypes;  ///< of `auto` declarations, by semantic; likewise
    const SpellingTable& functions;  ///< a function without a row keeps its name in the source
    const SpellingTable& semantics;  ///< TEXAUTO and SAUTO are not spelled but numbered
    BufferSpellings buffers;
    char registerKind;    ///< of samplers: 's', or 't' for texture objects
    bool writesBindings;  ///< whether shaders contain registers and texture coordinates
    CallForms callForms;
    TargetSections<HookAnswers> hookSections;
    TargetSections<RecordAnswers> recordSections;
};

// The same in every target: HLSL and GLSL agree on them.

/// "%" has no row and vanishes from the written text; so would "!", which the parser rejects.
extern const SpellingTable kOperators;
extern const SpellingTable kAssignOperators;
extern const SpellingTable kKeywords;

}  // namespace ns_ruke
