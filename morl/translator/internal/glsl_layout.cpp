// SPDX-License-Identifier: MIT
#include "morl/translator/internal/glsl_layout.h"

namespace ns_ruke {
void GlslStageGlobal(Walk& walk, MorlDeclare* declare)
{
    walk.Global(declare);
    walk.text.Append(";\n");
}

void GlslUniforms(Walk& walk, const Declares& uniforms)
{
    for (MorlDeclare* uniform : uniforms) {
        walk.Global(uniform);
        walk.DefinitionArray(uniform->arraySize);
        walk.text.Append(";\n");
    }
}

void GlslInputCopies(Walk& walk, const Declares& inputs)
{
    for (MorlDeclare* input : inputs) {
        const std::string& name = input->name;
        walk.Mark(input);
        walk.text.Append('\t');
        walk.answers.AppendType(walk.text, input);
        walk.text.Append(' ', kInputLocal, name, " = ", name, ";\n");
    }
}

void GlslOutputLocals(Walk& walk, const Declares& outputs, std::string_view start)
{
    for (MorlDeclare* output : outputs) {
        walk.Mark(output);
        walk.text.Append('\t');
        const std::size_t type = walk.text.Size();
        walk.answers.AppendType(walk.text, output);
        const std::size_t size = walk.text.Size() - type;
        walk.text.Append(' ', kOutputLocal, output->name, " = ");
        walk.text.Repeat(type, size);
        walk.text.Append('(', start, ");\n");
    }
}

void GlslCopyOut(Walk& walk, std::string_view target, const MorlDeclare* output)
{
    walk.Mark(output);
    walk.text.Append('\t', target, " = ", kOutputLocal, output->name, "; \n");
}

void GlslEntry(Walk& walk)
{
    walk.text.Append("void main(){ \n");
}

}  // namespace ns_ruke
