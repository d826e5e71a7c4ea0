// SPDX-License-Identifier: MIT
#include "morl/check/internal/reserved_words.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

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

/// The lengths of the words that begin with each small letter, as bits. Most names are no word
/// because of these already.
using Lengths = std::array<std::uint32_t, 26>;

template <std::size_t Size>
constexpr Lengths LengthsOf(const std::array<std::string_view, Size>& words)
{
    Lengths lengths{};
    for (const std::string_view word : words) {
        lengths[static_cast<std::size_t>(word[0] - 'a')] |= 1U << word.size();
    }
    return lengths;
}

/// The lengths of the words of two lists.
constexpr Lengths Merge(Lengths a, const Lengths& b)
{
    for (std::size_t i = 0; i < a.size(); ++i) {
        a[i] |= b[i];
    }
    return a;
}

/// Whether the name begins like one of the words, and is as long.
bool MayBeWord(const Lengths& lengths, std::string_view name)
{
    constexpr std::size_t kLongestWord = 31;
    return !name.empty() && name[0] >= 'a' && name[0] <= 'z' && name.size() <= kLongestWord &&
           (lengths[static_cast<std::size_t>(name[0] - 'a')] & (1U << name.size())) != 0;
}

template <std::size_t Size>
bool Contains(const std::array<std::string_view, Size>& words, std::string_view name)
{
    return std::binary_search(words.begin(), words.end(), name);
}

/// Reserved in GLSL.
bool HasTwoUnderscores(std::string_view name)
{
    for (std::size_t i = 1; i < name.size(); i += 2) {
        if (name[i] == '_' && (name[i - 1] == '_' || (i + 1 < name.size() && name[i + 1] == '_'))) {
            return true;
        }
    }
    return false;
}

constexpr Lengths kHlslLengths = LengthsOf(kHlsl);
constexpr Lengths kGlslLengths = Merge(LengthsOf(kGlsl), LengthsOf(kGlsl150));

}  // namespace

bool IsReservedWord(std::string_view name, std::string_view target)
{
    if (target.substr(0, 4) == "hlsl") {
        return MayBeWord(kHlslLengths, name) && Contains(kHlsl, name);
    }
    if (MayBeWord(kGlslLengths, name) &&
        (Contains(kGlsl, name) || (target == "glsl" && Contains(kGlsl150, name)))) {
        return true;
    }
    return HasTwoUnderscores(name) || name.substr(0, 3) == "gl_";
}

}  // namespace ns_ruke
