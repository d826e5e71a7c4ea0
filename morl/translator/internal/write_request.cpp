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

/// Notes which declarations the body has used.
void NoteUses(const WrittenRequest& request)
{
    std::vector<bool> uses;
    uses.reserve(request.lines->Declares().size());
    for (const MorlDeclare* declare : request.lines->Declares()) {
        const auto* const known = request.names.Find(declare->name);
        uses.push_back(known != nullptr && known->isUsed);
    }
    request.lines->SetUses(std::move(uses));
}

}  // namespace

bool WriteRequest(const TargetRecord& target, const PassProperty& pass, MorlProgram& program,
                  WrittenLines* lines, ShaderOutput& output)
{
    WrittenRequest request = {pass, program, lines};
    if (pass.limits.textBytes != 0) {
        request.mostBytes = pass.limits.textBytes;
    }
    Answers answers(request, target);
    Text text(UsualSize(program));
    Walk walk(answers, text);
    text.Append(target.header);
    target.layout.uniforms(walk, program.uniforms);
    target.layout.inputs(walk, program.inputs);
    target.layout.outputs(walk, program.outputs);
    if (lines != nullptr) {
        for (const MorlDeclare* uniform : program.uniforms) {
            request.names[uniform->name];
        }
    }
    walk.Main(program);
    if (text.Size() > request.mostBytes) {
        return false;
    }
    if (lines != nullptr) {
        NoteUses(request);
    }
    FillOutput(text.Copy(), program.uniforms, std::move(request.outputSemantics), output);
    return true;
}

}  // namespace ns_ruke
