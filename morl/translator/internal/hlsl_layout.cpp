// SPDX-License-Identifier: MIT
#include "morl/translator/internal/hlsl_layout.h"

#include "morl/core/string_helper.h"
#include "morl/translator/internal/bindings.h"

namespace ns_ruke {

/// The rows of calls that have a form in kCalls (the matrices, and sampling in Direct3D 10) are not
/// used to write them.
constexpr SpellingTable kHlslFunctions({
    {TOKEN_FLOAT2, "float2"},
    {TOKEN_FLOAT3, "float3"},
    {TOKEN_FLOAT4, "float4"},
    {TOKEN_FLOAT2X4, "float2x4"},
    {TOKEN_FLOAT3X3, "float3x3"},
    {TOKEN_FLOAT3X4, "float3x4"},
    {TOKEN_FLOAT4X3, "float4x3"},
    {TOKEN_FLOAT4X4, "float4x4"},
    {TOKEN_FLOAT3X3_CONSTRUCT, "float3x3"},
    {TOKEN_FLOAT4X4_CONSTRUCT, "float4x4"},
    {TOKEN_FLOAT4X4_TRANPOSE, "float4x4"},
    {TOKEN_TEX1D, "tex1D"},
    {TOKEN_TEX2D, "tex2D"},
    {TOKEN_TEX3D, "tex3D"},
    {TOKEN_TEX2DPROJ, "tex2Dproj"},
    {TOKEN_TEXCUBE, "texCUBE"},
    {TOKEN_SAMPLE, "sample"},
    {TOKEN_MAX, "max"},
    {TOKEN_MIN, "min"},
    {TOKEN_SATURATE, "saturate"},
    {TOKEN_CLAMP, "clamp"},
    {TOKEN_LENGTH, "length"},
    {TOKEN_NORMALIZE, "normalize"},
    {TOKEN_DOT, "dot"},
    {TOKEN_CROSS, "cross"},
    {TOKEN_MUL, "mul"},
    {TOKEN_POW, "pow"},
    {TOKEN_LERP, "lerp"},
});

HlslStructs HlslStructsOf(const MorlProgram* program)
{
    switch (StageOf(program)) {
    case kVertexStage:
        return {"VS_INPUT", "VS_OUTPUT"};
    case kFragmentStage:
        return {"FS_INPUT", "FS_OUTPUT"};
    default:
        return {"", ""};
    }
}

std::string OpenHlslStruct(std::string_view name)
{
    return std::string("struct ").append(name).append("{\n");
}

std::string HlslBinding(const HlslBindings& bindings, const MorlProgram* program,
                        const MorlDeclare* declare, const MorlRegister* binding)
{
    std::string text = BindingText(bindings.semantics, binding);
    const ENUM_TOKEN token = binding != nullptr ? binding->registerToken : TOKEN_NONE;
    if (token == TOKEN_SAUTO) {
        text += SamplerRegister(bindings.registerKind, bindings.samplerRegisters, declare->name);
    } else if (token == TOKEN_TEXAUTO && StageOf(program) == kFragmentStage) {
        text += bindings.inputSemantics[declare->name];
    } else if (token == TOKEN_TEXAUTO) {
        std::string& semantic = bindings.outputSemantics[declare->name];
        semantic = "TEXCOORD" + StringHelper::ConvertToString(bindings.texcoordCounter, 10);
        text += semantic;
        ++bindings.texcoordCounter;
    }
    return text;
}

std::string HlslInputMembers(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs,
                             std::unordered_map<std::string, std::string>& variableNames)
{
    std::string text = ListText(inputs);
    for (MorlDeclare* input : inputs) {
        variableNames[input->name] = "i" + input->name;
        text.append("\t").append(translator.WriteVariableType(input)).append(" ");
        text.append(input->name).append(translator.WriteRegister(input, input->registerBinding));
        text += ";\n";
    }
    return text;
}

std::string HlslOutputMember(MorlTranslator& translator, MorlDeclare* output,
                             std::unordered_map<std::string, std::string>& variableNames)
{
    variableNames[output->name] = "output." + output->name;
    std::string text = "\t";
    text.append(translator.WriteVariableType(output)).append(" ").append(output->name);
    text.append(translator.WriteRegister(output, output->registerBinding)).append(";\n");
    return text;
}

std::string HlslInputCopies(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs)
{
    std::string text = ListText(inputs);
    for (MorlDeclare* input : inputs) {
        text.append("\t").append(translator.WriteVariableType(input)).append(" i");
        text.append(input->name).append(" = input.").append(input->name).append(";\n");
    }
    return text;
}

std::string HlslOutputLocal(const MorlProgram* program)
{
    const std::string_view name = HlslStructsOf(program).output;
    return name.empty() ? std::string() : "\t" + std::string(name) + " output;\n";
}

std::string OpenHlslMain(const MorlProgram* program)
{
    const HlslStructs structs = HlslStructsOf(program);
    std::string text(structs.output);
    text.append(" main(").append(structs.input).append(" input){ \n");
    return text;
}

}  // namespace ns_ruke
