// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/reserved_words.h"
#include "morl/translator/internal/target_record.h"
#include "morl/translator/internal/walk.h"

#include <string_view>

namespace ns_ruke {

// What the GLSL targets share.

/// The integer vectors keep their Morl names, and only 2D and cube samplers have a name. Do not fix
/// either: shaders are compared byte for byte.
inline constexpr SpellingTable kGlslTypes({
    {TOKEN_VOID, "void"},
    {TOKEN_FLOAT, "float"},
    {TOKEN_FLOAT2, "vec2"},
    {TOKEN_FLOAT3, "vec3"},
    {TOKEN_FLOAT4, "vec4"},
    {TOKEN_INT, "int"},
    {TOKEN_INT2, "int2"},
    {TOKEN_INT3, "int3"},
    {TOKEN_INT4, "int4"},
    {TOKEN_FLOAT2X4, "mat2x4"},
    {TOKEN_FLOAT3X3, "mat3"},
    {TOKEN_FLOAT3X4, "mat3x4"},
    {TOKEN_FLOAT4X3, "mat4x3"},
    {TOKEN_FLOAT4X4, "mat4"},
    {TOKEN_SAMPLER2D, "sampler2D"},
    {TOKEN_SAMPLERCUBE, "samplerCube"},
});

inline constexpr SpellingTable kGlslAutoTypes({
    {TOKEN_BLENDINDICES, "vec4"},
});

/// TOKEN_SAMPLE is written without a name, as its arguments alone. The rows of calls that have a
/// form of their own are not used to write them.
inline constexpr SpellingTable kGlslFunctions(kCommonFunctions,
                                              {
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
                                                  {TOKEN_LERP, "mix"},
                                              });

/// GLSL has no semantics; the texts are for tools that ask a back end for one. BINORMAL has no
/// text.
inline constexpr SpellingTable kGlslSemantics(kSemantics, {
                                                              {TOKEN_BINORMAL, ""},
                                                          });

// The layout: inputs and outputs are globals. The entry function first copies the inputs to locals
// named "i" + name, computes the outputs in locals named "ret" + name, and finally copies those to
// the outputs.

/// A global of a stage.
void GlslStageGlobal(Walk& walk, MorlDeclare* declare);

void GlslUniforms(Walk& walk, const Declares& uniforms);

/// The local copies of the inputs.
void GlslInputCopies(Walk& walk, const Declares& inputs);

/// The locals of the outputs, each initialised by its type's constructor with `start`.
void GlslOutputLocals(Walk& walk, const Declares& outputs, std::string_view start);

/// The line that copies an output's local to `target`.
void GlslCopyOut(Walk& walk, std::string_view target, const MorlDeclare* output);

/// The line that begins the entry function.
void GlslEntry(Walk& walk);

}  // namespace ns_ruke
