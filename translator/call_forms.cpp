// SPDX-License-Identifier: MIT
#include "morl/translator/call_forms.h"

namespace ns_ruke {
namespace {

// HLSL constructs a matrix from its rows, GLSL from its columns: what is a plain constructor in one
// language transposes in the other.

/// HLSL. The semicolon that closes the transposing form is deliberate.
constexpr CallForm kHlsl[] = {
    {TOKEN_FLOAT3X3_CONSTRUCT, CallLayout::Transposed, 3, "float3x3", "float3", ""},
    {TOKEN_FLOAT4X4_CONSTRUCT, CallLayout::Transposed, 4, "float4x4", "float4", ""},
    {TOKEN_FLOAT4X4_TRANPOSE, CallLayout::Plain, 4, "float4x4", "", ");"},
};

/// GLSL. The type names are those of HLSL, deliberately.
constexpr CallForm kGlsl[] = {
    {TOKEN_FLOAT3X3_CONSTRUCT, CallLayout::Plain, 3, "float3x3", "", ")"},
    {TOKEN_FLOAT4X4_CONSTRUCT, CallLayout::Plain, 4, "float4x4", "", ")"},
    {TOKEN_FLOAT4X4_TRANPOSE, CallLayout::Transposed, 4, "float4x4", "float4", ""},
    {TOKEN_SATURATE, CallLayout::Saturate, 1, "", "", ""},
    {TOKEN_MUL, CallLayout::Product, 2, "", "", ""},
};

/// GLSL ES.
constexpr CallForm kGlslEs[] = {
    {TOKEN_FLOAT3X3_CONSTRUCT, CallLayout::Plain, 3, "mat3", "", ")"},
    {TOKEN_FLOAT4X4_CONSTRUCT, CallLayout::Plain, 4, "mat4", "", ")"},
    {TOKEN_FLOAT4X4_TRANPOSE, CallLayout::Transposed, 4, "mat4", "vec4", ""},
    {TOKEN_SATURATE, CallLayout::Saturate, 1, "", "", ""},
    {TOKEN_MUL, CallLayout::Product, 2, "", "", ""},
};

void AppendPlainMatrix(std::string& text, const CallForm& form, const CallArguments& arguments)
{
    text.append(form.matrix).append("(");
    for (std::size_t i = 0; i < form.arguments; ++i) {
        text.append(i > 0 ? "," : "").append(arguments[i]);
    }
    text += form.end;
}

void AppendTransposedMatrix(std::string& text, const CallForm& form, const CallArguments& arguments)
{
    constexpr std::string_view kComponents = "xyzw";
    text.append(form.matrix).append("(");
    for (std::size_t component = 0; component < form.arguments; ++component) {
        text.append(component > 0 ? "," : "").append(form.vector).append("(");
        for (std::size_t i = 0; i < form.arguments; ++i) {
            text.append(i > 0 ? "," : "").append(arguments[i]).append(".");
            text += kComponents[component];
        }
        text += ")";
    }
    text += ")";
}

}  // namespace

constexpr CallForms kHlslCallForms(kHlsl);
constexpr CallForms kGlslCallForms(kGlsl);
constexpr CallForms kGlslEsCallForms(kGlslEs);

void AppendFormedCall(std::string& text, const CallForm& form, const CallArguments& arguments)
{
    switch (form.layout) {
    case CallLayout::Plain:
        AppendPlainMatrix(text, form, arguments);
        break;
    case CallLayout::Transposed:
        AppendTransposedMatrix(text, form, arguments);
        break;
    case CallLayout::Product:
        text.append(arguments[0]).append("*").append(arguments[1]);
        break;
    case CallLayout::Saturate:
        text.append("clamp(").append(arguments[0]).append(",0.0,1.0)");
        break;
    }
}

}  // namespace ns_ruke
