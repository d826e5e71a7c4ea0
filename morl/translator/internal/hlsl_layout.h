// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/stage.h"
#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/call_forms.h"
#include "morl/translator/internal/spelling_table.h"
#include "morl/translator/internal/walk.h"

#include <string>
#include <string_view>

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

HlslStructs HlslStructsOf(int stage);

/// The binding of a declaration in a list.
template <class Answers>
void HlslBinding(Walk<Answers>& walk, MorlDeclare* declare)
{
    MorlRegister* binding = declare->registerBinding;
    walk.answers.Ask(
        walk.text, [&](MorlTranslator& hooks) { return hooks.WriteRegister(declare, binding); },
        [&](auto& record) {
            const AssignedTexcoords texcoords = {record.outputSemantics, record.texcoordCounter};
            AppendBinding(walk.text, record.spellings, record, texcoords, declare, binding);
        });
}

/// A uniform with its binding.
template <class Answers>
void HlslUniform(Walk<Answers>& walk, MorlDeclare* uniform)
{
    walk.answers.Mark(walk.text, uniform);
    walk.Global(uniform);
    HlslBinding(walk, uniform);
    walk.text.Append(";\n");
}

/// A member of a struct.
template <class Answers>
void HlslMember(Walk<Answers>& walk, MorlDeclare* declare)
{
    walk.answers.Mark(walk.text, declare);
    walk.text.Append('\t', walk.answers.Type(declare), ' ', declare->name);
    HlslBinding(walk, declare);
    walk.text.Append(";\n");
}

/// The members of an input struct. Also renames the inputs in the body to their local copies.
template <class Answers>
void HlslInputMembers(Walk<Answers>& walk, const Declares& inputs)
{
    for (MorlDeclare* input : inputs) {
        walk.answers.Rename(input->name, "i");
        HlslMember(walk, input);
    }
}

/// One member of the output struct. Also renames the output in the body to this member.
template <class Answers>
void HlslOutputMember(Walk<Answers>& walk, MorlDeclare* output)
{
    walk.answers.Rename(output->name, "output.");
    HlslMember(walk, output);
}

/// The output struct.
template <class Answers>
void HlslOutputs(Walk<Answers>& walk, const Declares& outputs)
{
    walk.text.Append("struct ", HlslStructsOf(walk.answers.Stage()).output, "{\n");
    for (MorlDeclare* output : outputs) {
        HlslOutputMember(walk, output);
    }
    walk.text.Append("};\n");
}

/// The local copies of the inputs.
template <class Answers>
void HlslInputCopies(Walk<Answers>& walk, const Declares& inputs)
{
    for (MorlDeclare* input : inputs) {
        const std::string& name = input->name;
        walk.answers.Mark(walk.text, input);
        walk.text.Append('\t', walk.answers.Type(input), " i", name, " = input.", name, ";\n");
    }
}

/// The local output struct.
template <class Answers>
void HlslOutputLocal(Walk<Answers>& walk, const Declares& /*outputs*/)
{
    const std::string_view name = HlslStructsOf(walk.answers.Stage()).output;
    if (!name.empty()) {
        walk.text.Append('\t', name, " output;\n");
    }
}

/// The entry function.
template <class Answers>
void HlslMain(Walk<Answers>& walk, MorlProgram& linked)
{
    const HlslStructs structs = HlslStructsOf(walk.answers.Stage());
    walk.text.Append(structs.output, " main(", structs.input, " input){ \n");
    walk.answers.Ask(
        walk.text, [&](MorlTranslator& hooks) { return hooks.WriteInputConvert(linked.inputs); },
        [&](auto& /*record*/) { HlslInputCopies(walk, linked.inputs); });
    walk.answers.Ask(
        walk.text, [&](MorlTranslator& hooks) { return hooks.WriteOutputConvert(linked.outputs); },
        [&](auto& /*record*/) { HlslOutputLocal(walk, linked.outputs); });
    walk.MainBody(linked);
    walk.text.Append("\treturn output;\n}\n");
}

}  // namespace ns_ruke
