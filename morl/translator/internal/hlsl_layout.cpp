// SPDX-License-Identifier: MIT
#include "morl/translator/internal/hlsl_layout.h"

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

HlslStructs HlslStructsOf(int stage)
{
    switch (stage) {
    case kVertexStage:
        return {"VS_INPUT", "VS_OUTPUT"};
    case kFragmentStage:
        return {"FS_INPUT", "FS_OUTPUT"};
    default:
        return {"", ""};
    }
}

}  // namespace ns_ruke
