// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/call_forms.h"
#include "morl/translator/internal/spelling_table.h"
#include "morl/translator/morl_translator.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

// What the two HLSL targets share.

extern const SpellingTable kHlslFunctions;

constexpr BufferSpellings kHlslBuffers = {{
    {TOKEN_UNIFORM, "uniform"},
    {TOKEN_IN, "in"},
    {TOKEN_OUT, "out"},
}};

// Constructors take rows, so a form that is given columns writes their components. The form that is
// given rows ends with a semicolon, which is kept because shaders are compared byte for byte.
constexpr CallForm kHlslMatrix3 = Transposed(TOKEN_FLOAT3X3_CONSTRUCT, 3, "float3x3", "float3");
constexpr CallForm kHlslMatrix4 = Transposed(TOKEN_FLOAT4X4_CONSTRUCT, 4, "float4x4", "float4");
constexpr CallForm kHlslMatrix4Rows = Matrix(TOKEN_FLOAT4X4_TRANPOSE, 4, "float4x4", ");");

// The layout: inputs and outputs are the members of two structs; the entry function takes one and
// returns the other. In a stage that is neither vertex nor fragment, the structs have no names.

/// The names of a stage's structs.
struct HlslStructs {
    std::string_view input;
    std::string_view output;
};

HlslStructs HlslStructsOf(const MorlProgram* program);

/// The line that opens a struct.
std::string OpenHlslStruct(std::string_view name);

/// The tables of a translator in which bindings are looked up and stored.
struct HlslBindings {
    const SpellingTable& semantics;
    char registerKind;  ///< of samplers: 's', or 't' for texture objects
    std::unordered_map<std::string, std::string>& inputSemantics;
    std::unordered_map<std::string, std::string>& outputSemantics;
    std::unordered_map<std::string, int>& samplerRegisters;
    std::uint32_t& texcoordCounter;
};

/// The binding of a declaration. A declaration bound to TEXAUTO gets, in the fragment stage, the
/// texture coordinate that the vertex stage assigned to its name; in other stages it gets the next
/// one, which is stored in the output semantics.
/// @param program tells the stage; only read for TEXAUTO.
std::string HlslBinding(const HlslBindings& bindings, const MorlProgram* program,
                        const MorlDeclare* declare, const MorlRegister* binding);

/// The members of an input struct. Also renames the inputs in the body to their local copies.
std::string HlslInputMembers(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs,
                             std::unordered_map<std::string, std::string>& variableNames);

/// One member of the output struct. Also renames the output in the body to this member.
std::string HlslOutputMember(MorlTranslator& translator, MorlDeclare* output,
                             std::unordered_map<std::string, std::string>& variableNames);

/// The local copies of the inputs.
std::string HlslInputCopies(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs);

/// The local output struct.
std::string HlslOutputLocal(const MorlProgram* program);

/// The line that opens the entry function.
std::string OpenHlslMain(const MorlProgram* program);

/// What ends the entry function.
constexpr std::string_view kHlslMainEnd = "\treturn output;\n}\n";

}  // namespace ns_ruke
