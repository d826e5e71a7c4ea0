// SPDX-License-Identifier: MIT
#include "morl/translator/internal/write_request.h"

#include "morl/translator/internal/answers.h"
#include "morl/translator/internal/fill_output.h"
#include "morl/translator/internal/walk.h"

#include <utility>

namespace ns_ruke {
namespace {

/// The bytes that most shaders with so many declarations and statements need.
std::size_t UsualSize(const MorlProgram& program)
{
    constexpr std::size_t kHeads = 128;
    constexpr std::size_t kLine = 64;
    const std::size_t statements =
        program.mainFunction != nullptr ? program.mainFunction->sentences.size() : 0;
    return kHeads + kLine * (program.uniforms.size() + 2 * program.inputs.size() +
                             2 * program.outputs.size() + statements);
}

}  // namespace

void WriteRequest(const TargetSpellings& target, const PassProperty& pass, MorlProgram& program,
                  WrittenLines* lines, ShaderOutput& output)
{
    RecordAnswers answers(target, program, pass.semantics, pass.samplerRegisters);
    answers.lines = lines;
    Text text(UsualSize(program));
    Walk<RecordAnswers> walk(answers, text);
    text.Append(target.header);
    target.recordSections.uniforms(walk, program.uniforms);
    target.recordSections.inputs(walk, program.inputs);
    target.recordSections.outputs(walk, program.outputs);
    target.recordSections.main(walk, program);
    FillOutput(text.Copy(), program.uniforms, std::move(answers.outputSemantics), output);
}

}  // namespace ns_ruke
