// SPDX-License-Identifier: MIT
#include "morl/translator/internal/glsl_layout.h"

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

}  // namespace ns_ruke
