// SPDX-License-Identifier: MIT
#include "morl/translator/internal/glsl_layout.h"

#include "morl/translator/internal/bindings.h"

namespace ns_ruke {

constexpr SpellingTable kGlslAutoTypes({
    {TOKEN_BLENDINDICES, "vec4"},
});

/// GLSL has no semantics; the texts are for tools that ask a back end for one. BINORMAL has no
/// text.
constexpr SpellingTable kGlslSemantics({
    {TOKEN_POSITION, "POSITION"},
    {TOKEN_NORMAL, "NORMAL"},
    {TOKEN_TANGENT, "TANGENT"},
    {TOKEN_BLENDINDICES, "BLENDINDICES"},
    {TOKEN_BLENDWEIGHT, "BLENDWEIGHT"},
    {TOKEN_TEXCOORD0, "TEXCOORD0"},
    {TOKEN_TEXCOORD1, "TEXCOORD1"},
    {TOKEN_TEXCOORD2, "TEXCOORD2"},
    {TOKEN_TEXCOORD3, "TEXCOORD3"},
    {TOKEN_TEXCOORD4, "TEXCOORD4"},
    {TOKEN_TEXCOORD5, "TEXCOORD5"},
    {TOKEN_TEXCOORD6, "TEXCOORD6"},
    {TOKEN_TEXCOORD7, "TEXCOORD7"},
    {TOKEN_SV_POSITION, "POSITION"},
    {TOKEN_COLOR, "COLOR"},
    {TOKEN_COLOR0, "COLOR0"},
    {TOKEN_COLOR1, "COLOR1"},
    {TOKEN_COLOR2, "COLOR2"},
    {TOKEN_COLOR3, "COLOR3"},
});

std::string GlslInputLocal(const std::string& name)
{
    return "i" + name;
}

std::string GlslOutputLocal(const std::string& name)
{
    return "ret" + name;
}

std::string GlslStageGlobal(MorlTranslator& translator, MorlDeclare* declare)
{
    std::string text = translator.WriteBuffer(declare->bufferType);
    text.append(" ").append(translator.WriteVariableType(declare));
    text.append(" ").append(declare->name).append(";\n");
    return text;
}

std::string GlslInputCopies(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs)
{
    std::string text = ListText(inputs);
    for (MorlDeclare* input : inputs) {
        text.append("\t").append(translator.WriteVariableType(input)).append(" ");
        text.append(GlslInputLocal(input->name)).append(" = ").append(input->name).append(";\n");
    }
    return text;
}

std::string GlslOutputLocals(MorlTranslator& translator, const std::vector<MorlDeclare*>& outputs,
                             std::string_view start)
{
    std::string text = ListText(outputs);
    for (MorlDeclare* output : outputs) {
        const std::string type = translator.WriteVariableType(output);
        text.append("\t").append(type).append(" ").append(GlslOutputLocal(output->name));
        text.append(" = ").append(type).append("(").append(start).append(");\n");
    }
    return text;
}

std::string GlslCopyOut(std::string_view target, const MorlDeclare* output)
{
    std::string text = "\t";
    text.append(target).append(" = ").append(GlslOutputLocal(output->name)).append("; \n");
    return text;
}

std::string GlslBinding(std::unordered_map<std::string, int>& samplerRegisters,
                        const MorlDeclare* declare, const MorlRegister* binding)
{
    std::string text = BindingText(kGlslSemantics, binding);
    if (binding != nullptr && binding->registerToken == TOKEN_SAUTO) {
        text += SamplerRegister('s', samplerRegisters, declare->name);
    }
    return text;
}

}  // namespace ns_ruke
