// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/morl_translator.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

// The layout that the two HLSL targets share: inputs and outputs are the members of two structs,
// the entry function takes one and returns the other. In a stage that is neither vertex nor
// fragment the structs have no names.

/// The names of a stage's structs.
struct HlslStructs {
    std::string_view input;
    std::string_view output;
};

HlslStructs HlslStructsOf(int stage);

/// The line that opens a struct.
std::string OpenHlslStruct(std::string_view name);

/// The texture coordinate of a declaration bound to TEXAUTO: in the fragment stage what the vertex
/// stage assigned to its name, otherwise the next number, which is entered into `outputSemantics`.
std::string AutomaticTexcoord(const std::string& name, int stage,
                              std::unordered_map<std::string, std::string>& inputSemantics,
                              std::unordered_map<std::string, std::string>& outputSemantics,
                              std::uint32_t& counter);

/// The members of an input struct. From here on the body's inputs are their local copies.
std::string HlslInputMembers(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs,
                             std::unordered_map<std::string, std::string>& variableNames);

/// One member of the output struct. From here on the body's output is this member.
std::string HlslOutputMember(MorlTranslator& translator, MorlDeclare* output,
                             std::unordered_map<std::string, std::string>& variableNames);

/// The local copies of the inputs.
std::string HlslInputCopies(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs);

/// The local output struct.
std::string HlslOutputLocal(int stage);

/// The line that opens the entry function.
std::string OpenHlslMain(int stage);

/// What ends the entry function.
constexpr std::string_view kHlslMainEnd = "\treturn output;\n}\n";

}  // namespace ns_ruke
