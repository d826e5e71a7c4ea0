// SPDX-License-Identifier: MIT
#include "morl/translator/internal/hlsl_layout.h"

#include "morl/ast/stage.h"

#include <string>

namespace ns_ruke {
namespace {

constexpr std::string_view kOutputMember = "output.";

/// The names of a stage's structs.
struct Structs {
    std::string_view input;
    std::string_view output;
};

Structs StructsOf(int stage)
{
    switch (stage) {
    case kVertexStage:
        return {"VS_INPUT", "VS_OUTPUT"};
    case kFragmentStage:
        return {"FS_INPUT", "FS_OUTPUT"};
    default:
        return {"", ""};
    }
}

/// The start of a struct's member: its type and its name.
void BeginMember(Walk& walk, MorlDeclare* declare)
{
    walk.Mark(declare);
    walk.text.Append('\t');
    walk.answers.AppendType(walk.text, declare);
    walk.text.Append(' ', declare->name);
}

void EndMember(Walk& walk, MorlDeclare* declare)
{
    walk.Binding(declare);
    walk.text.Append(";\n");
}

}  // namespace

void HlslUniform(Walk& walk, MorlDeclare* uniform)
{
    walk.Global(uniform);
    walk.DefinitionArray(uniform->arraySize);
    EndMember(walk, uniform);
}

void HlslInputs(Walk& walk, std::string_view firstMember, const Declares& inputs)
{
    walk.text.Append("struct ", StructsOf(walk.answers.Stage()).input, "{\n", firstMember);
    for (MorlDeclare* input : inputs) {
        walk.answers.Rename(input->name, kInputLocal);
        BeginMember(walk, input);
        EndMember(walk, input);
    }
    walk.text.Append("};\n");
}

void HlslOutputMember(Walk& walk, MorlDeclare* output)
{
    BeginMember(walk, output);
    walk.answers.Rename(output->name, kOutputMember);
    EndMember(walk, output);
}

void HlslOutputs(Walk& walk, const Declares& outputs)
{
    walk.text.Append("struct ", StructsOf(walk.answers.Stage()).output, "{\n");
    for (MorlDeclare* output : outputs) {
        HlslOutputMember(walk, output);
    }
    walk.text.Append("};\n");
}

void HlslInputCopies(Walk& walk, const Declares& inputs)
{
    for (MorlDeclare* input : inputs) {
        const std::string& name = input->name;
        walk.Mark(input);
        walk.text.Append('\t');
        walk.answers.AppendType(walk.text, input);
        walk.text.Append(' ', kInputLocal, name, " = input.", name, ";\n");
    }
}

void HlslOutputLocal(Walk& walk, const Declares& /*outputs*/)
{
    const std::string_view name = StructsOf(walk.answers.Stage()).output;
    if (!name.empty()) {
        walk.text.Append('\t', name, " output;\n");
    }
}

void HlslEntry(Walk& walk)
{
    const Structs structs = StructsOf(walk.answers.Stage());
    walk.text.Append(structs.output, " main(", structs.input, " input){ \n");
}

void HlslReturn(Walk& walk, const Declares& /*outputs*/)
{
    walk.text.Append("\treturn output;\n");
}

}  // namespace ns_ruke
