// SPDX-License-Identifier: MIT
#include "morl/translator/glsles.h"

#include "morl/translator/glsl_layout.h"
#include "morl/translator/register_order.h"
#include "morl/translator/shared_hooks.h"

#include <string_view>

namespace ns_ruke {
namespace {

/// A declaration of this name is never an attribute or varying, whatever it is bound to. (Copying
/// an output out goes by its semantic instead: see CopyOutTarget.)
bool IsUndeclared(const MorlDeclare* declare)
{
    return declare->name == "oProjPos";
}

std::string_view CopyOutTarget(const MorlDeclare* output)
{
    switch (BindingToken(output)) {
    case TOKEN_COLOR:
    case TOKEN_COLOR0:
        return "gl_FragColor";
    case TOKEN_SV_POSITION:
        return "gl_Position";
    default:
        return output->name;
    }
}

}  // namespace

MorlTranslatorGLSLES::MorlTranslatorGLSLES() = default;
MorlTranslatorGLSLES::~MorlTranslatorGLSLES() = default;

std::string MorlTranslatorGLSLES::WriteFileHeader()
{
    return "#version 100\nprecision highp int; \nprecision highp float; \n";
}

std::string MorlTranslatorGLSLES::WriteFunctionCall(MorlFunctionCall* call)
{
    std::string text;
    AppendFunctionCall(text, call);
    return text;
}

void MorlTranslatorGLSLES::AppendFunctionCall(std::string& text, MorlFunctionCall* call)
{
    AppendCall(text, call, kGlslEsCallForms);
}

std::string MorlTranslatorGLSLES::WriteFunctionName(const MorlFunctionCall* call)
{
    return FunctionName(kGlslEsFunctions, call);
}

std::string MorlTranslatorGLSLES::WriteVariable(MorlVariable* variable)
{
    return RenamedVariable(variableNames, variable);
}

std::string MorlTranslatorGLSLES::WriteBuffer(ENUM_TOKEN token)
{
    return StageBuffer(kGlslEsBuffers, program->stage, token);
}

std::string MorlTranslatorGLSLES::WriteVariableType(ENUM_TOKEN token)
{
    return Spell(kGlslEsTypes, token);
}

std::string MorlTranslatorGLSLES::WriteVariableType(MorlDeclare* declare)
{
    return DeclaredType(*this, declare);
}

std::string MorlTranslatorGLSLES::ConcludeVariableType(ENUM_TOKEN token)
{
    return token == TOKEN_BLENDINDICES ? "vec4" : "";
}

std::string MorlTranslatorGLSLES::WriteOperator(ENUM_TOKEN token)
{
    return Spell(kOperators, token);
}

std::string MorlTranslatorGLSLES::WriteKeyword(ENUM_TOKEN token)
{
    return Spell(kKeywords, token);
}

std::string MorlTranslatorGLSLES::WriteUniformList(std::vector<MorlDeclare*> uniforms)
{
    std::string text;
    ReserveLines(text, uniforms.size());
    for (MorlDeclare* uniform : uniforms) {
        AppendGlobal(text, uniform);
        text += ";\n";
    }
    return text;
}

std::string MorlTranslatorGLSLES::WriteInputList(std::vector<MorlDeclare*> inputs)
{
    if (program->stage == kFragmentStage) {
        Sort(inputs);
    }
    std::string text;
    ReserveLines(text, inputs.size());
    for (MorlDeclare* input : inputs) {
        variableNames[input->name] = GlslInputLocal(input->name);
        text += IsUndeclared(input) ? "" : GlslStageGlobal(*this, input);
    }
    return text;
}

std::string MorlTranslatorGLSLES::WriteOutputList(std::vector<MorlDeclare*> outputs)
{
    if (program->stage == kVertexStage) {
        Sort(outputs);
    }
    std::string text;
    ReserveLines(text, outputs.size());
    for (MorlDeclare* output : outputs) {
        text += WriteOutputDeclare(output);
    }
    return text;
}

// A fragment stage reaches its target through gl_FragColor only, so none of its outputs is
// declared.
std::string MorlTranslatorGLSLES::WriteOutputDeclare(MorlDeclare* declare)
{
    variableNames[declare->name] = GlslOutputLocal(declare->name);
    const bool undeclared = program->stage == kFragmentStage || IsUndeclared(declare);
    return undeclared ? "" : GlslStageGlobal(*this, declare);
}

std::string MorlTranslatorGLSLES::WriteMainFunction(MorlProgram* linked)
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

std::string MorlTranslatorGLSLES::WriteInputConvert(std::vector<MorlDeclare*> inputs)
{
    return GlslInputCopies(*this, inputs);
}

// Outputs start at one, unlike in GLSL; deliberately.
std::string MorlTranslatorGLSLES::WriteOutputConvert(std::vector<MorlDeclare*> outputs)
{
    return GlslOutputLocals(*this, outputs, "1.0");
}

std::string MorlTranslatorGLSLES::WriteFinalOutput(std::vector<MorlDeclare*> outputs)
{
    std::string text;
    ReserveLines(text, outputs.size());
    for (const MorlDeclare* output : outputs) {
        text += GlslCopyOut(CopyOutTarget(output), output);
    }
    return text;
}

std::string MorlTranslatorGLSLES::WriteRegister(MorlDeclare* declare, MorlRegister* binding)
{
    return GlslBinding(samplerRegisters, declare, binding);
}

std::int32_t MorlTranslatorGLSLES::GetRegisterIndex(MorlDeclare* declare)
{
    return RegisterIndex(declare, program->stage, inputSemantics);
}

bool MorlTranslatorGLSLES::SortByRegister(MorlDeclare* a, MorlDeclare* b)
{
    return GetRegisterIndex(a) < GetRegisterIndex(b);
}

void MorlTranslatorGLSLES::Sort(std::vector<MorlDeclare*>& declares)
{
    SortByRegisterIndex(declares, program->stage, inputSemantics);
}

}  // namespace ns_ruke
