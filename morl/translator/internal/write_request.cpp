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

void WriteRequest(const TargetRecord& target, const PassProperty& pass, MorlProgram& program,
                  WrittenLines* lines, ShaderOutput& output)
{
    WrittenRequest request = {pass, program, lines};
    Answers answers(request, target);
    Text text(UsualSize(program));
    Walk walk(answers, text);
    text.Append(target.header);
    target.layout.uniforms(walk, program.uniforms);
    target.layout.inputs(walk, program.inputs);
    target.layout.outputs(walk, program.outputs);
    walk.Main(program);
    FillOutput(text.Copy(), program.uniforms, std::move(request.outputSemantics), output);
}

}  // namespace ns_ruke
