// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/call_forms.h"
#include "morl/translator/internal/spelling_table.h"
#include "morl/translator/internal/word_list.h"
#include "morl/translator/targets.h"

#include <string_view>
#include <vector>

namespace ns_ruke {

class Walk;

/// The parts of a shader that each target lays out in its own way.
struct TargetLayout {
    using List = void (*)(Walk& walk, const std::vector<MorlDeclare*>& declares);

    List uniforms;
    List inputs;
    List outputs;
    void (*entry)(Walk& walk);  ///< the line that begins the entry function
    List inputConvert;          ///< the lines at its start for the inputs
    List outputConvert;         ///< the same for the outputs
    List end;                   ///< the lines at its end, for the outputs
};

/// What every device of a target has. A text that needs more works on some of them only.
struct TargetLimits {
    std::string_view name;  ///< of the standard that says so
    int samplers;           ///< a stage
    int attributes;         ///< inputs of a vertex pass
    // In vectors of four components.
    int varyings;
    int vertexUniforms;
    int fragmentUniforms;
    bool arePacked;  ///< whether small ones share a vector
};

/// Everything that distinguishes a target. Each target has one record, in its file.
struct TargetRecord {
    TargetInfo info;
    std::string_view header;         ///< what every shader begins with
    const SpellingTable& types;      ///< a type without a row is written as nothing
    const SpellingTable& autoTypes;  ///< of `auto` declarations, by semantic; likewise
    const SpellingTable& functions;  ///< a function without a row keeps its name in the source
    const SpellingTable& semantics;
    BufferSpellings buffers;
    char registerKind;    ///< of samplers: 's', or 't' for texture objects
    bool writesBindings;  ///< whether shaders contain registers and texture coordinates
    CallForms callForms;
    const WordList& reservedWords;      ///< that the language's family has, and Morl has not
    const WordList& moreReservedWords;  ///< that only this target has
    TargetLimits limits;
    TargetLayout layout;
};

/// The record of a target, or null if no target has exactly this name.
const TargetRecord* FindTarget(std::string_view name);

/// Whether a variable of this name clashes with a word of a target.
bool IsReservedWord(std::string_view name, const TargetRecord& target);

/// The type of a declaration as a target writes it; that of `auto` follows from the semantic.
std::string_view WrittenType(const MorlDeclare& declare, const TargetRecord& target);

}  // namespace ns_ruke
