// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/spelling_table.h"
#include "morl/translator/internal/walk.h"

#include <string_view>

namespace ns_ruke {

// What the two GLSL targets share.

extern const SpellingTable kGlslAutoTypes;
extern const SpellingTable kGlslSemantics;

// The layout: inputs and outputs are globals. The entry function first copies the inputs to locals
// named "i" + name, computes the outputs in locals named "ret" + name, and finally copies those to
// the outputs.

constexpr std::string_view kGlslInputLocal = "i";
constexpr std::string_view kGlslOutputLocal = "ret";

/// A global of a stage: storage word, type and name.
template <class Answers>
void GlslStageGlobal(Walk<Answers>& walk, MorlDeclare* declare)
{
    const auto buffer = walk.answers.Buffer(declare->bufferType);
    const auto type = walk.answers.Type(declare);
    walk.answers.Mark(walk.text, declare);
    walk.text.Append(buffer, ' ', type, ' ', declare->name, ";\n");
}

template <class Answers>
void GlslUniforms(Walk<Answers>& walk, const Declares& uniforms)
{
    for (MorlDeclare* uniform : uniforms) {
        walk.answers.Mark(walk.text, uniform);
        walk.Global(uniform);
        walk.text.Append(";\n");
    }
}

/// The local copies of the inputs.
template <class Answers>
void GlslInputCopies(Walk<Answers>& walk, const Declares& inputs)
{
    for (MorlDeclare* input : inputs) {
        const auto type = walk.answers.Type(input);
        const std::string& name = input->name;
        walk.answers.Mark(walk.text, input);
        walk.text.Append('\t', type, ' ', kGlslInputLocal, name, " = ", name, ";\n");
    }
}

/// The locals of the outputs, each initialised by its type's constructor with `start`.
template <class Answers>
void GlslOutputLocals(Walk<Answers>& walk, const Declares& outputs, std::string_view start)
{
    for (MorlDeclare* output : outputs) {
        const auto type = walk.answers.Type(output);
        walk.answers.Mark(walk.text, output);
        walk.text.Append('\t', type, ' ', kGlslOutputLocal, output->name, " = ");
        walk.text.Append(type, '(', start, ");\n");
    }
}

/// The line that copies an output's local to `target`.
template <class Answers>
void GlslCopyOut(Walk<Answers>& walk, std::string_view target, const MorlDeclare* output)
{
    walk.answers.Mark(walk.text, output);
    walk.text.Append('\t', target, " = ", kGlslOutputLocal, output->name, "; \n");
}

/// The entry function.
/// @param outputLocals, finalOutput append the lines at its start and end for the outputs.
template <class Answers, class OutputLocals, class FinalOutput>
void GlslMain(Walk<Answers>& walk, MorlProgram& linked, const OutputLocals& outputLocals,
              const FinalOutput& finalOutput)
{
    walk.text.Append("void main(){ \n");
    walk.answers.Ask(
        walk.text, [&](MorlTranslator& hooks) { return hooks.WriteInputConvert(linked.inputs); },
        [&](auto& /*record*/) { GlslInputCopies(walk, linked.inputs); });
    walk.answers.Ask(
        walk.text, [&](MorlTranslator& hooks) { return hooks.WriteOutputConvert(linked.outputs); },
        [&](auto& /*record*/) { outputLocals(walk, linked.outputs); });
    walk.MainBody(linked);
    finalOutput(walk, linked.outputs);
    walk.text.Append("}\n");
}

}  // namespace ns_ruke
