// SPDX-License-Identifier: MIT
#include "morl/check/internal/reserved_words.h"

#include <algorithm>
#include <array>

namespace ns_ruke {
namespace {

// Words that are no words of Morl, so that they can be names there. Sorted; each list is of the
// keywords and reserved words, and of the functions that texts call.

/// HLSL for shader model 3 and Direct3D 10; with the names that the entry function declares.
constexpr std::array<std::string_view, 62> kHlsl = {
    "asm",           "bool",      "break",        "case",    "cbuffer",
    "centroid",      "class",     "column_major", "compile", "const",
    "continue",      "default",   "do",           "double",  "dword",
    "extern",        "false",     "half",         "half2",   "half3",
    "half4",         "inline",    "inout",        "input",   "interface",
    "line",          "lineadj",   "linear",       "matrix",  "nointerpolation",
    "noperspective", "output",    "packoffset",   "pass",    "pixelfragment",
    "point",         "precise",   "register",     "return",  "row_major",
    "sample",        "sampler",   "shared",       "snorm",   "static",
    "string",        "struct",    "switch",       "tbuffer", "technique",
    "texture",       "texture2D", "triangle",     "true",    "typedef",
    "uint",          "unorm",     "unsigned",     "vector",  "vertexfragment",
    "void",          "volatile"};

/// GLSL 1.50 and GLSL ES 1.00.
constexpr std::array<std::string_view, 58> kGlsl = {
    "asm",      "attribute", "bool",      "break",     "cast",      "class",       "const",
    "continue", "default",   "do",        "double",    "enum",      "extern",      "external",
    "false",    "fixed",     "flat",      "fvec4",     "goto",      "half",        "highp",
    "inline",   "inout",     "input",     "interface", "invariant", "long",        "lowp",
    "mat2",     "mat3",      "mat4",      "mediump",   "mix",       "namespace",   "noinline",
    "output",   "packed",    "precision", "public",    "return",    "samplerCube", "short",
    "sizeof",   "static",    "struct",    "superp",    "switch",    "template",    "this",
    "true",     "typedef",   "union",     "unsigned",  "using",     "varying",     "vec2",
    "vec3",     "vec4"};

/// GLSL 1.50 alone.
constexpr std::array<std::string_view, 14> kGlsl150 = {
    "active",  "centroid", "common",  "filter", "layout", "noperspective", "partition",
    "sampler", "smooth",   "texture", "uint",   "uvec2",  "uvec3",         "uvec4"};

template <std::size_t Size>
constexpr bool IsSorted(const std::array<std::string_view, Size>& words)
{
    for (std::size_t i = 1; i < Size; ++i) {
        if (words[i - 1] >= words[i]) {
            return false;
        }
    }
    return true;
}

static_assert(IsSorted(kHlsl) && IsSorted(kGlsl) && IsSorted(kGlsl150));

template <std::size_t Size>
bool Contains(const std::array<std::string_view, Size>& words, std::string_view name)
{
    return std::binary_search(words.begin(), words.end(), name);
}

}  // namespace

bool IsReservedWord(std::string_view name, std::string_view target)
{
    if (target == "hlsl" || target == "hlsl10") {
        return Contains(kHlsl, name);
    }
    return Contains(kGlsl, name) || (target == "glsl" && Contains(kGlsl150, name)) ||
           name.find("__") != std::string_view::npos || name.substr(0, 3) == "gl_";
}

}  // namespace ns_ruke
