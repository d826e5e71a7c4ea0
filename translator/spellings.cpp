// SPDX-License-Identifier: MIT
// What the targets write for the words of the language: one table per vocabulary and target, one
// row per token. Operators and keywords follow HLSL and GLSL alike.
#include "morl/translator/spellings.h"

namespace ns_ruke {

/// "%" has no row and vanishes from the written text; so would "!", which the parser rejects.
constexpr SpellingTable kOperators({
    {TOKEN_INCREMENT, "++"},
    {TOKEN_DECREMENT, "--"},
    {TOKEN_PLUS, "+"},
    {TOKEN_MINUS, "-"},
    {TOKEN_MULTIPLY, "*"},
    {TOKEN_DIVIDE, "/"},
    {TOKEN_MEMBER, "."},
    {TOKEN_LESS, "<"},
    {TOKEN_LESS_EQUAL, "<="},
    {TOKEN_GREATER, ">"},
    {TOKEN_GREATER_EQUAL, ">="},
    {TOKEN_EQUAL, "=="},
    {TOKEN_NOT_EQUAL, "!="},
    {TOKEN_AND, "&&"},
    {TOKEN_OR, "||"},
});

constexpr SpellingTable kAssignOperators({
    {TOKEN_ASSIGN, "="},
    {TOKEN_PLUS_ASSIGN, "+="},
    {TOKEN_MINUS_ASSIGN, "-="},
    {TOKEN_MULTIPLY_ASSIGN, "*="},
    {TOKEN_DIVIDE_ASSIGN, "/="},
});

constexpr SpellingTable kKeywords({
    {TOKEN_DISCARD, "discard"},
});

constexpr SpellingTable kHlslBuffers({
    {TOKEN_UNIFORM, "uniform"},
    {TOKEN_IN, "in"},
    {TOKEN_OUT, "out"},
});

/// A stage that is neither vertex nor fragment has uniforms only, here and in GLSL ES.
constexpr StageSpellings kGlslBuffers = {
    SpellingTable({
        {TOKEN_UNIFORM, "uniform"},
        {TOKEN_IN, "in"},
        {TOKEN_OUT, "out"},
    }),
    SpellingTable({
        {TOKEN_UNIFORM, "uniform"},
        {TOKEN_IN, "in"},
        {TOKEN_OUT, "out"},
    }),
    SpellingTable({
        {TOKEN_UNIFORM, "uniform"},
        {TOKEN_IN, "uniform"},
        {TOKEN_OUT, "uniform"},
    }),
};

/// A fragment stage declares no outputs.
constexpr StageSpellings kGlslEsBuffers = {
    SpellingTable({
        {TOKEN_UNIFORM, "uniform"},
        {TOKEN_IN, "attribute"},
        {TOKEN_OUT, "varying"},
    }),
    SpellingTable({
        {TOKEN_UNIFORM, "uniform"},
        {TOKEN_IN, "varying"},
        {TOKEN_OUT, ""},
    }),
    SpellingTable({
        {TOKEN_UNIFORM, "uniform"},
        {TOKEN_IN, "uniform"},
        {TOKEN_OUT, "uniform"},
    }),
};

/// HLSL for shader model 3, which has samplers of two kinds only.
constexpr SpellingTable kHlslTypes({
    {TOKEN_VOID, "void"},
    {TOKEN_FLOAT, "float"},
    {TOKEN_FLOAT2, "float2"},
    {TOKEN_FLOAT3, "float3"},
    {TOKEN_FLOAT4, "float4"},
    {TOKEN_INT, "int"},
    {TOKEN_INT2, "int2"},
    {TOKEN_INT3, "int3"},
    {TOKEN_INT4, "int4"},
    {TOKEN_FLOAT2X4, "float2x4"},
    {TOKEN_FLOAT3X3, "float3x3"},
    {TOKEN_FLOAT3X4, "float3x4"},
    {TOKEN_FLOAT4X3, "float4x3"},
    {TOKEN_FLOAT4X4, "float4x4"},
    {TOKEN_SAMPLER1D, ""},
    {TOKEN_SAMPLER1DARRAY, ""},
    {TOKEN_SAMPLER2D, "sampler2D"},
    {TOKEN_SAMPLER2DARRAY, ""},
    {TOKEN_SAMPLER3D, ""},
    {TOKEN_SAMPLER3DARRAY, ""},
    {TOKEN_SAMPLERCUBE, "samplerCUBE"},
});

/// HLSL for Direct3D 10: samplers become texture objects.
constexpr SpellingTable kHlsl10Types({
    {TOKEN_VOID, "void"},
    {TOKEN_FLOAT, "float"},
    {TOKEN_FLOAT2, "float2"},
    {TOKEN_FLOAT3, "float3"},
    {TOKEN_FLOAT4, "float4"},
    {TOKEN_INT, "int"},
    {TOKEN_INT2, "int2"},
    {TOKEN_INT3, "int3"},
    {TOKEN_INT4, "int4"},
    {TOKEN_FLOAT2X4, "float2x4"},
    {TOKEN_FLOAT3X3, "float3x3"},
    {TOKEN_FLOAT3X4, "float3x4"},
    {TOKEN_FLOAT4X3, "float4x3"},
    {TOKEN_FLOAT4X4, "float4x4"},
    {TOKEN_SAMPLER1D, "Texture1D"},
    {TOKEN_SAMPLER1DARRAY, "Texture1DArray"},
    {TOKEN_SAMPLER2D, "Texture2D"},
    {TOKEN_SAMPLER2DARRAY, "Texture2DArray"},
    {TOKEN_SAMPLER3D, "Texture3D"},
    {TOKEN_SAMPLER3DARRAY, "Texture3DArray"},
    {TOKEN_SAMPLERCUBE, "TextureCube"},
});

/// GLSL 1.50. The integer vectors keep their Morl names, deliberately.
constexpr SpellingTable kGlslTypes({
    {TOKEN_VOID, "void"},       {TOKEN_FLOAT, "float"},         {TOKEN_FLOAT2, "vec2"},
    {TOKEN_FLOAT3, "vec3"},     {TOKEN_FLOAT4, "vec4"},         {TOKEN_INT, "int"},
    {TOKEN_INT2, "int2"},       {TOKEN_INT3, "int3"},           {TOKEN_INT4, "int4"},
    {TOKEN_FLOAT2X4, "mat2x4"}, {TOKEN_FLOAT3X3, "mat3"},       {TOKEN_FLOAT3X4, "mat3x4"},
    {TOKEN_FLOAT4X3, "mat4x3"}, {TOKEN_FLOAT4X4, "mat4"},       {TOKEN_SAMPLER1D, ""},
    {TOKEN_SAMPLER1DARRAY, ""}, {TOKEN_SAMPLER2D, "sampler2D"}, {TOKEN_SAMPLER2DARRAY, ""},
    {TOKEN_SAMPLER3D, ""},      {TOKEN_SAMPLER3DARRAY, ""},     {TOKEN_SAMPLERCUBE, "samplerCube"},
});

/// GLSL ES 1.00, which lacks the matrices that are not square. The integer vectors are as in GLSL.
constexpr SpellingTable kGlslEsTypes({
    {TOKEN_VOID, "void"},       {TOKEN_FLOAT, "float"},         {TOKEN_FLOAT2, "vec2"},
    {TOKEN_FLOAT3, "vec3"},     {TOKEN_FLOAT4, "vec4"},         {TOKEN_INT, "int"},
    {TOKEN_INT2, "int2"},       {TOKEN_INT3, "int3"},           {TOKEN_INT4, "int4"},
    {TOKEN_FLOAT2X4, ""},       {TOKEN_FLOAT3X3, "mat3"},       {TOKEN_FLOAT3X4, ""},
    {TOKEN_FLOAT4X3, ""},       {TOKEN_FLOAT4X4, "mat4"},       {TOKEN_SAMPLER1D, ""},
    {TOKEN_SAMPLER1DARRAY, ""}, {TOKEN_SAMPLER2D, "sampler2D"}, {TOKEN_SAMPLER2DARRAY, ""},
    {TOKEN_SAMPLER3D, ""},      {TOKEN_SAMPLER3DARRAY, ""},     {TOKEN_SAMPLERCUBE, "samplerCube"},
});

/// HLSL of both kinds. Calls that have a form of their own (call_forms.cpp, and sampling in
/// Direct3D 10) do not use their rows, here and below.
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

/// GLSL 1.50. TOKEN_SAMPLE loses its name, deliberately.
constexpr SpellingTable kGlslFunctions({
    {TOKEN_FLOAT2, "vec2"},
    {TOKEN_FLOAT3, "vec3"},
    {TOKEN_FLOAT4, "vec4"},
    {TOKEN_FLOAT2X4, "mat2x4"},
    {TOKEN_FLOAT3X3, "mat3"},
    {TOKEN_FLOAT3X4, "mat3x4"},
    {TOKEN_FLOAT4X3, "mat4x3"},
    {TOKEN_FLOAT4X4, "mat4"},
    {TOKEN_FLOAT3X3_CONSTRUCT, "mat3"},
    {TOKEN_FLOAT4X4_CONSTRUCT, "mat4"},
    {TOKEN_FLOAT4X4_TRANPOSE, "mat4"},
    {TOKEN_TEX1D, "texture"},
    {TOKEN_TEX2D, "texture"},
    {TOKEN_TEX3D, "texture"},
    {TOKEN_TEX2DPROJ, "texture2DProj"},
    {TOKEN_TEXCUBE, "texture"},
    {TOKEN_SAMPLE, ""},
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
    {TOKEN_LERP, "mix"},
});

/// GLSL ES 1.00. What the target lacks loses its name, deliberately.
constexpr SpellingTable kGlslEsFunctions({
    {TOKEN_FLOAT2, "vec2"},
    {TOKEN_FLOAT3, "vec3"},
    {TOKEN_FLOAT4, "vec4"},
    {TOKEN_FLOAT2X4, ""},
    {TOKEN_FLOAT3X3, "mat3"},
    {TOKEN_FLOAT3X4, ""},
    {TOKEN_FLOAT4X3, ""},
    {TOKEN_FLOAT4X4, "mat4"},
    {TOKEN_FLOAT3X3_CONSTRUCT, "mat3"},
    {TOKEN_FLOAT4X4_CONSTRUCT, "mat4"},
    {TOKEN_FLOAT4X4_TRANPOSE, "mat4"},
    {TOKEN_TEX1D, "texture1D"},
    {TOKEN_TEX2D, "texture2D"},
    {TOKEN_TEX3D, "texture3D"},
    {TOKEN_TEX2DPROJ, "texture2DProj"},
    {TOKEN_TEXCUBE, "textureCube"},
    {TOKEN_SAMPLE, ""},
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
    {TOKEN_LERP, "mix"},
});

/// Shader model 3 has no system values: the projected position is POSITION.
constexpr SpellingTable kHlslSemantics({
    {TOKEN_POSITION, "POSITION"},
    {TOKEN_NORMAL, "NORMAL"},
    {TOKEN_TANGENT, "TANGENT"},
    {TOKEN_BINORMAL, "BINORMAL"},
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

/// The numbered colours are render targets; COLOR stays, deliberately.
constexpr SpellingTable kHlsl10Semantics({
    {TOKEN_POSITION, "POSITION"},         {TOKEN_NORMAL, "NORMAL"},
    {TOKEN_TANGENT, "TANGENT"},           {TOKEN_BINORMAL, "BINORMAL"},
    {TOKEN_BLENDINDICES, "BLENDINDICES"}, {TOKEN_BLENDWEIGHT, "BLENDWEIGHT"},
    {TOKEN_TEXCOORD0, "TEXCOORD0"},       {TOKEN_TEXCOORD1, "TEXCOORD1"},
    {TOKEN_TEXCOORD2, "TEXCOORD2"},       {TOKEN_TEXCOORD3, "TEXCOORD3"},
    {TOKEN_TEXCOORD4, "TEXCOORD4"},       {TOKEN_TEXCOORD5, "TEXCOORD5"},
    {TOKEN_TEXCOORD6, "TEXCOORD6"},       {TOKEN_TEXCOORD7, "TEXCOORD7"},
    {TOKEN_SV_POSITION, "SV_Position"},   {TOKEN_COLOR, "COLOR"},
    {TOKEN_COLOR0, "SV_Target0"},         {TOKEN_COLOR1, "SV_Target1"},
    {TOKEN_COLOR2, "SV_Target2"},         {TOKEN_COLOR3, "SV_Target3"},
});

/// GLSL has no semantics; the texts serve tools that ask a GLSL back end for one. BINORMAL has
/// none.
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

}  // namespace ns_ruke
