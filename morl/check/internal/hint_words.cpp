// SPDX-License-Identifier: MIT
// Words of other languages, and what to write instead.
#include "morl/check/internal/hint_words.h"

#include "morl/parser/internal/keywords.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <iterator>

namespace ns_ruke {
namespace {

/// A word that Morl does not have, and what to write.
struct WordHint {
    std::string_view word;
    std::string_view hint;
};

constexpr WordHint kWordHints[] = {
    // Types.
    {"vec2", "there is no type 'vec2': did you mean 'float2'?"},
    {"vec3", "there is no type 'vec3': did you mean 'float3'?"},
    {"vec4", "there is no type 'vec4': did you mean 'float4'?"},
    {"mat2", "there is no type 'mat2': use two vectors"},
    {"mat3", "there is no type 'mat3': did you mean 'float3x3'?"},
    {"mat4", "there is no type 'mat4': did you mean 'float4x4'?"},
    {"half", "there is no type 'half': did you mean 'float'?"},
    {"half2", "there is no type 'half2': did you mean 'float2'?"},
    {"half3", "there is no type 'half3': did you mean 'float3'?"},
    {"half4", "there is no type 'half4': did you mean 'float4'?"},
    {"double", "there is no type 'double': did you mean 'float'?"},
    {"fixed", "there is no type 'fixed': did you mean 'float'?"},
    {"uint", "there is no type 'uint': did you mean 'int'?"},
    {"bool", "there is no type 'bool': use a 'float', and compare it with 0.0"},
    {"true", "there is no 'true': use 1.0"},
    {"false", "there is no 'false': use 0.0"},
    {"float2x2", "there is no type 'float2x2': use 'float2x4', or vectors"},
    {"samplerCube", "there is no type 'samplerCube': did you mean 'samplerCUBE'?"},
    {"Texture2D", "there is no type 'Texture2D': did you mean 'sampler2D'?"},
    {"SamplerState", "a texture and its sampler are one: 'uniform sampler2D NAME : SAUTO;'"},
    {"sampler", "a texture and its sampler are one: 'uniform sampler2D NAME : SAUTO;'"},
    {"sampler2DShadow",
     "there is no type 'sampler2DShadow': 'sampler2D', with a name that begins with 'shadowMap'"},
    // Words of declarations.
    {"lowp", "there are no precisions: leave 'lowp' out"},
    {"mediump", "there are no precisions: leave 'mediump' out"},
    {"highp", "there are no precisions: leave 'highp' out"},
    {"layout", "there is no 'layout': write 'in TYPE NAME : SEMANTIC;'"},
    {"register", "registers are given with the request: write ': SAUTO'"},
    {"Properties", "there are no properties: write 'uniform TYPE NAME;', which the engine sets"},
    {"technique", "there are no techniques: passes are named in the manifest"},
    {"var", "a declaration begins with its type: 'float NAME = VALUE;'"},
    {"let", "a declaration begins with its type: 'float NAME = VALUE;'"},
    {"const", "there are no constants: leave 'const' out, or use a uniform"},
    {"static", "there are no static variables: leave 'static' out"},
    {"struct", "there are no structures: use several variables"},
    {"varying",
     "there is no 'varying': write 'out TYPE NAME : TEXAUTO;' in the vertex pass and 'in' "
     "in the fragment pass"},
    {"attribute", "there is no 'attribute': write 'in TYPE NAME : SEMANTIC;'"},
    {"inout", "there is no 'inout': functions cannot be called; put shared code into a node"},
    {"precision", "there is no 'precision': the target's header has it"},
    {"cbuffer", "there are no constant buffers: write 'uniform TYPE NAME;'"},
    // Control.
    {"return",
     "there is no 'return': assign the result to an output, and use 'if' around the rest"},
    {"break", "there is no 'break': use 'if' inside the loop"},
    {"continue", "there is no 'continue': use 'if' inside the loop"},
    {"switch", "there is no 'switch': use 'if' and 'else'"},
    {"do", "there is no 'do': use 'for'"},
    {"while", "there is no 'while': use 'for'"},
    {"foreach", "there is no 'foreach': 'for (int i = 0; i < 4; i++) { ... }'"},
    {"elseif", "write 'else if (a > b) { ... }', in two words"},
    {"elif", "write 'else if (a > b) { ... }', in two words"},
    {"then", "there is no 'then': 'if (a > b) { ... }'"},
    {"and", "'&&' stands for 'and' between conditions"},
    {"or", "'||' stands for 'or' between conditions"},
    {"clip", "there is no 'clip': 'if (x < 0.0) { discard; }'"},
    // Directives.
    {"#define", "there is no '#define': macros get their values from the request (-D NAME=VALUE)"},
    {"#ifdef", "there is no '#ifdef': '#if NAME', because a macro that is not set counts as 0"},
    {"#ifndef",
     "there is no '#ifndef': '#if NAME == 0', because a macro that is not set counts as 0"},
    {"#elif", "there is no '#elif': put another '#if' into the '#else' part"},
    {"#include", "there is no '#include': put shared code into a node, and refer to it"},
    {"#version", "there is no '#version': the target's header has it"},
    {"#elseif", "there is no '#elseif': put another '#if' into the '#else' part"},
    {"#pragma", "there is no '#pragma': leave it out"},
    {"#extension", "there is no '#extension': leave it out"},
    {"#undef", "there is no '#undef': macros get their values from the request (-D NAME=VALUE)"},
    {"#end", "a block ends with '#endif' or '#endfor'"},
    {"#fi", "a block ends with '#endif' or '#endfor'"},
    {"#IF", "directives are written in small letters: '#if'"},
    {"#ELSE", "directives are written in small letters: '#else'"},
    {"#ENDIF", "directives are written in small letters: '#endif'"},
    {"#FOR", "directives are written in small letters: '#for'"},
    {"defined", "there is no 'defined': '#if NAME', because a macro that is not set counts as 0"},
    // Functions.
    {"frac", "'frac' is not an intrinsic: x - float(int(x)), for x from 0 up"},
    {"fract", "'fract' is not an intrinsic: x - float(int(x)), for x from 0 up"},
    {"floor", "'floor' is not an intrinsic: float(int(x)), for x from 0 up"},
    {"round", "'round' is not an intrinsic: float(int(x + 0.5)), for x from 0 up"},
    {"mod", "'mod' is not an intrinsic: x - y * float(int(x / y)), for x from 0 up"},
    {"fmod", "'fmod' is not an intrinsic: x - y * float(int(x / y)), for x from 0 up"},
    {"degrees", "'degrees' is not an intrinsic: x * 57.29578"},
    {"radians", "'radians' is not an intrinsic: x * 0.01745329"},
    {"sqrt", "'sqrt' is not an intrinsic: pow(x, 0.5)"},
    {"rsqrt", "'rsqrt' is not an intrinsic: 1.0 / pow(x, 0.5)"},
    {"inversesqrt", "'inversesqrt' is not an intrinsic: 1.0 / pow(x, 0.5)"},
    {"exp", "'exp' is not an intrinsic: pow(2.7182818, x)"},
    {"exp2", "'exp2' is not an intrinsic: pow(2.0, x)"},
    {"distance", "'distance' is not an intrinsic: length(a - b)"},
    {"mix", "'mix' is not an intrinsic: lerp(a, b, x)"},
    {"texture", "'texture' is not an intrinsic: tex2D(map, uv)"},
    {"texture2D", "'texture2D' is not an intrinsic: tex2D(map, uv)"},
    {"textureCube", "'textureCube' is not an intrinsic: texCUBE(map, direction)"},
    {"tex2Dlod", "'tex2Dlod' is not an intrinsic: tex2D(map, uv), in the fragment pass"},
    {"tex2Dbias", "'tex2Dbias' is not an intrinsic: tex2D(map, uv)"},
    {"tex2Dgrad", "'tex2Dgrad' is not an intrinsic: tex2D(map, uv)"},
    {"transpose", "'transpose' is not an intrinsic: mul(v, m) for mul(m, v)"},
    {"step", "'step' is not an intrinsic: use 'if'"},
    {"smoothstep",
     "'smoothstep' is not an intrinsic: t = saturate((x - a) / (b - a)), then "
     "t * t * (3.0 - 2.0 * t)"},
    {"sign", "'sign' is not an intrinsic: use 'if'"},
    {"ddx", "'ddx' is not an intrinsic, and nothing stands in for it"},
    {"ddy", "'ddy' is not an intrinsic, and nothing stands in for it"},
};

/// Functions of other languages without a replacement of their own.
constexpr std::string_view kOtherFunctions[] = {
    "acos",         "all",     "any",         "asin",        "atan",           "atan2",   "ceil",
    "dFdx",         "dFdy",    "determinant", "faceforward", "fwidth",         "inverse", "isnan",
    "ldexp",        "log",     "log10",       "log2",        "matrixCompMult", "modf",    "noise",
    "outerProduct", "refract", "sincos",      "sinh",        "tanh",           "trunc"};

constexpr std::size_t CountIntrinsics()
{
    std::size_t count = 0;
    for (const Keyword& keyword : kKeywords) {
        const bool isFunction = keyword.wordClass == WordClass::Function;
        for (const WordHint& hint : kWordHints) {
            count += isFunction && keyword.spelling == hint.word ? 1 : 0;
        }
        for (const std::string_view word : kOtherFunctions) {
            count += isFunction && keyword.spelling == word ? 1 : 0;
        }
    }
    return count;
}
static_assert(CountIntrinsics() == 0, "a hint says that an intrinsic is none");

/// Those that every target has.
constexpr std::string_view kIntrinsics =
    "max, min, saturate, clamp, length, normalize, reflect, dot, cross, mul, pow, lerp, sin, cos, "
    "tan, abs, tex2D, texCUBE";

/// The hint for one word of a line. A variable may have the name of a function.
std::string HintForWord(std::string_view word, bool isCalled)
{
    const auto* const known =
        std::find_if(std::begin(kWordHints), std::end(kWordHints),
                     [&](const WordHint& entry) { return entry.word == word; });
    if (known != std::end(kWordHints)) {
        const bool isFunction = known->hint.find("is not an intrinsic") != std::string_view::npos;
        return isFunction && !isCalled ? "" : std::string(known->hint);
    }
    const bool isFunction =
        isCalled && std::find(std::begin(kOtherFunctions), std::end(kOtherFunctions), word) !=
                        std::end(kOtherFunctions);
    return isFunction ? "'" + std::string(word) + "' is not an intrinsic; they are " +
                            std::string(kIntrinsics)
                      : "";
}

/// The hint for a number with something that numbers do not have.
std::string HintForNumber(std::string_view number)
{
    if (number.size() > 1 && (number[1] == 'x' || number[1] == 'X')) {
        return "numbers have only decimal digits: 255 for 0xFF";
    }
    const std::size_t end = number.find_first_not_of("0123456789.");
    if (end == std::string_view::npos) {
        return {};
    }
    const char c = number[end];
    if (c == 'e' || c == 'E') {
        return "numbers have no exponent: 0.001 for 1e-3";
    }
    return c == 'f' || c == 'F' || c == 'h' || c == 'u' || c == 'l'
               ? "numbers have no suffix: 1.0 for 1.0f"
               : "";
}

}  // namespace

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$';
}

std::string_view PortableIntrinsics()
{
    return kIntrinsics;
}

std::string HintInWords(std::string_view line)
{
    for (std::size_t i = 0; i < line.size();) {
        if (line.substr(i, 2) == "//") {
            break;
        }
        if (line.substr(i, 2) == "/*") {
            const std::size_t close = line.find("*/", i + 2);
            i = close == std::string_view::npos ? line.size() : close + 2;
            continue;
        }
        const bool isDirective = line[i] == '#';
        if (!IsWordCharacter(line[i]) && !isDirective) {
            ++i;
            continue;
        }
        std::size_t end = i + 1;
        while (end < line.size() &&
               (IsWordCharacter(line[end]) || (IsDigit(line[i]) && line[end] == '.'))) {
            ++end;
        }
        const std::string_view word = line.substr(i, end - i);
        const bool isMember = i > 0 && line[i - 1] == '.';
        const std::size_t next = line.find_first_not_of(' ', end);
        const bool isCalled = next != std::string_view::npos && line[next] == '(';
        std::string hint = IsDigit(word[0]) ? HintForNumber(word)
                           : isMember       ? ""
                                            : HintForWord(word, isCalled);
        if (!hint.empty()) {
            return hint;
        }
        i = end;
    }
    return {};
}

}  // namespace ns_ruke
