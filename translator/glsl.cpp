// SPDX-License-Identifier: MIT
#include "morl/translator/glsl.h"

#include "morl/translator/glsl_layout.h"
#include "morl/translator/shared_hooks.h"

#include <algorithm>

namespace ns_ruke {

MorlTranslatorGLSL::MorlTranslatorGLSL() = default;
MorlTranslatorGLSL::~MorlTranslatorGLSL() = default;

std::string MorlTranslatorGLSL::WriteFileHeader()
{
    return "#version 150\n";
}

std::string MorlTranslatorGLSL::WriteFunctionCall(MorlFunctionCall* call)
{
    std::string text;
    AppendFunctionCall(text, call);
    return text;
}

void MorlTranslatorGLSL::AppendFunctionCall(std::string& text, MorlFunctionCall* call)
{
    AppendCall(text, call, kGlslCallForms);
}

std::string MorlTranslatorGLSL::WriteFunctionName(const MorlFunctionCall* call)
{
    return FunctionName(kGlslFunctions, call);
}

std::string MorlTranslatorGLSL::WriteVariable(MorlVariable* variable)
{
    return RenamedVariable(variableNames, variable);
}

std::string MorlTranslatorGLSL::WriteBuffer(ENUM_TOKEN token)
{
    return StageBuffer(kGlslBuffers, program->stage, token);
}

std::string MorlTranslatorGLSL::WriteVariableType(ENUM_TOKEN token)
{
    return Spell(kGlslTypes, token);
}

std::string MorlTranslatorGLSL::WriteVariableType(MorlDeclare* declare)
{
    return DeclaredType(*this, declare);
}

std::string MorlTranslatorGLSL::ConcludeVariableType(ENUM_TOKEN token)
{
    return token == TOKEN_BLENDINDICES ? "vec4" : "";
}

std::string MorlTranslatorGLSL::WriteOperator(ENUM_TOKEN token)
{
    return Spell(kOperators, token);
}

std::string MorlTranslatorGLSL::WriteKeyword(ENUM_TOKEN token)
{
    return Spell(kKeywords, token);
}

std::string MorlTranslatorGLSL::WriteUniformList(std::vector<MorlDeclare*> uniforms)
{
    std::string text;
    ReserveLines(text, uniforms.size());
    for (MorlDeclare* uniform : uniforms) {
        AppendGlobal(text, uniform);
        text += ";\n";
    }
    return text;
}

std::string MorlTranslatorGLSL::WriteInputList(std::vector<MorlDeclare*> inputs)
{
    std::string text;
    ReserveLines(text, inputs.size());
    for (MorlDeclare* input : inputs) {
        text += GlslStageGlobal(*this, input);
        variableNames[input->name] = GlslInputLocal(input->name);
    }
    return text;
}

std::string MorlTranslatorGLSL::WriteOutputList(std::vector<MorlDeclare*> outputs)
{
    std::string text;
    ReserveLines(text, outputs.size());
    for (MorlDeclare* output : outputs) {
        text += WriteOutputDeclare(output);
    }
    return text;
}

// The projected position is the built-in gl_Position.
std::string MorlTranslatorGLSL::WriteOutputDeclare(MorlDeclare* declare)
{
    variableNames[declare->name] = GlslOutputLocal(declare->name);
    return BindingToken(declare) == TOKEN_SV_POSITION ? "" : GlslStageGlobal(*this, declare);
}

std::string MorlTranslatorGLSL::WriteMainFunction(MorlProgram* linked)
{
    std::string text;
    text.reserve(kUsualMain);
    text += kGlslMainStart;
    text += WriteInputConvert(linked->inputs);
    text += WriteOutputConvert(linked->outputs);
    AppendMainBody(text, linked);
    text.append(WriteFinalOutput(linked->outputs)).append(kGlslMainEnd);
    return text;
}

std::string MorlTranslatorGLSL::WriteInputConvert(std::vector<MorlDeclare*> inputs)
{
    return GlslInputCopies(*this, inputs);
}

std::string MorlTranslatorGLSL::WriteOutputConvert(std::vector<MorlDeclare*> outputs)
{
    return GlslOutputLocals(*this, outputs, "0.0");
}

// The first projected position comes first; further ones are not written at all.
std::string MorlTranslatorGLSL::WriteFinalOutput(std::vector<MorlDeclare*> outputs)
{
    const auto isPosition = [](const MorlDeclare* output) {
        return BindingToken(output) == TOKEN_SV_POSITION;
    };
    std::string text;
    const auto position = std::find_if(outputs.begin(), outputs.end(), isPosition);
    if (position != outputs.end()) {
        text += GlslCopyOut("gl_Position", *position);
    }
    for (const MorlDeclare* output : outputs) {
        text += isPosition(output) ? "" : GlslCopyOut(output->name, output);
    }
    return text;
}

std::string MorlTranslatorGLSL::WriteRegister(MorlDeclare* declare, MorlRegister* binding)
{
    return GlslBinding(samplerRegisters, declare, binding);
}

}  // namespace ns_ruke
