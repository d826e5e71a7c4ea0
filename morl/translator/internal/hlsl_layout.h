// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/reserved_words.h"
#include "morl/translator/internal/target_record.h"
#include "morl/translator/internal/walk.h"

namespace ns_ruke {

// What the HLSL targets share.

/// The types of shader model 3, which has only 2D and cube samplers.
inline constexpr SpellingTable kHlslTypes({
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
    {TOKEN_SAMPLER2D, "sampler2D"},
    {TOKEN_SAMPLERCUBE, "samplerCUBE"},
});

/// The rows of calls that have a form of their own (the matrices, and sampling in Direct3D 10) are
/// not used to write them.
inline constexpr SpellingTable kHlslFunctions(kCommonFunctions,
                                              {
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
                                                  {TOKEN_LERP, "lerp"},
                                              });

inline constexpr BufferSpellings kHlslBuffers = {{
    {TOKEN_UNIFORM, "uniform"},
    {TOKEN_IN, "in"},
    {TOKEN_OUT, "out"},
}};

// Constructors take rows, so a form that is given columns writes their components. The form that is
// given rows ends with a semicolon, which is kept because shaders are compared byte for byte.
constexpr CallForm kHlslMatrix3 = Transposed(TOKEN_FLOAT3X3_CONSTRUCT, 3, "float3x3", "float3");
constexpr CallForm kHlslMatrix4 = Transposed(TOKEN_FLOAT4X4_CONSTRUCT, 4, "float4x4", "float4");
constexpr CallForm kHlslMatrix4Rows = Matrix(TOKEN_FLOAT4X4_TRANPOSE, 4, "float4x4", ");");

// The layout: inputs and outputs are the members of two structs; the entry function takes one and
// returns the other. In a stage that is neither vertex nor fragment, the structs have no names.

/// The input struct.
/// @param firstMember a separate line before the inputs; may be empty
void HlslInputs(Walk& walk, std::string_view firstMember, const Declares& inputs);

/// One member of the output struct. Also renames the output in the body to this member.
void HlslOutputMember(Walk& walk, MorlDeclare* output);

/// The output struct.
void HlslOutputs(Walk& walk, const Declares& outputs);

/// A uniform with its binding.
void HlslUniform(Walk& walk, MorlDeclare* uniform);

/// The local copies of the inputs.
void HlslInputCopies(Walk& walk, const Declares& inputs);

/// The local output struct.
void HlslOutputLocal(Walk& walk, const Declares& outputs);

/// The line that begins the entry function.
void HlslEntry(Walk& walk);

/// The line at its end.
void HlslReturn(Walk& walk, const Declares& outputs);

}  // namespace ns_ruke
