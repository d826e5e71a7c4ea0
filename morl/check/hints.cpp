// SPDX-License-Identifier: MIT
#include "morl/check/hints.h"

#include "morl/core/messages.h"
#include "morl/core/nearest.h"
#include "morl/parser/internal/keywords.h"
#include "morl/parser/keyword_map.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <vector>

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
    // Words of declarations.
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
    {"clip", "there is no 'clip': 'if (x < 0.0) { discard; }'"},
    // Directives.
    {"#define", "there is no '#define': macros get their values from the request (-D NAME=VALUE)"},
    {"#ifdef", "there is no '#ifdef': '#if NAME', because a macro that is not set counts as 0"},
    {"#ifndef",
     "there is no '#ifndef': '#if NAME == 0', because a macro that is not set counts as 0"},
    {"#elif", "there is no '#elif': put another '#if' into the '#else' part"},
    {"#include", "there is no '#include': put shared code into a node, and refer to it"},
    {"#version", "there is no '#version': the target's header has it"},
    // Functions.
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
    "acos",  "all",     "any",   "asin",         "atan",        "atan2",
    "ceil",  "degrees", "dFdx",  "dFdy",         "determinant", "faceforward",
    "floor", "fmod",    "frac",  "fract",        "fwidth",      "inverse",
    "isnan", "ldexp",   "log",   "log10",        "log2",        "matrixCompMult",
    "mod",   "modf",    "noise", "outerProduct", "radians",     "refract",
    "round", "sincos",  "sinh",  "tanh",         "trunc"};

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

bool IsWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

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

/// The first hint that the words of a line give, from the left; comments do not count.
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

/// A hint for operators that the language lacks.
std::string HintInSymbols(std::string_view line)
{
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char next = i + 1 < line.size() ? line[i + 1] : '\0';
        const char last = i > 0 ? line[i - 1] : '\0';
        if (line[i] == '/' && next == '/') {
            break;
        }
        if (line[i] == '?') {
            return "there is no '?:': use 'if'";
        }
        if (line[i] == '!' && next != '=') {
            return "there is no '!': 'k == 0' for '!k'";
        }
        if ((line[i] == '&' || line[i] == '|') && next != line[i] && last != line[i]) {
            return "there are no operators on bits: '&&' and '||' combine conditions";
        }
        if (line[i] == '.' && IsDigit(next) && !IsWordCharacter(last)) {
            return "numbers begin with a digit: 0.5 for .5";
        }
    }
    return {};
}

bool StartsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

/// The first word of a line; empty if it begins with something else.
std::string_view FirstWord(std::string_view line)
{
    const std::size_t begin = std::min(line.find_first_not_of(" \t"), line.size());
    std::size_t end = begin;
    while (end < line.size() && (IsWordCharacter(line[end]) || line[end] == '#')) {
        ++end;
    }
    return line.substr(begin, end - begin);
}

/// A question for the word of these classes that a word was probably meant to be.
std::string MeantWord(std::string_view word, std::initializer_list<WordClass> classes)
{
    constexpr std::size_t kShortest = 3;  // shorter words resemble too many others
    std::vector<std::string_view> names;
    for (const Keyword& keyword : KeywordMap::Keywords()) {
        if (keyword.spelling == word) {
            return {};
        }
        if (std::find(classes.begin(), classes.end(), keyword.wordClass) != classes.end()) {
            names.push_back(keyword.spelling);
        }
    }
    return word.size() < kShortest ? "" : DidYouMean(NearestName(names, word), "");
}

/// The word that ends where the rest of the line begins.
std::string_view WordBefore(std::string_view line, std::size_t end)
{
    std::size_t begin = std::min(end, line.size());
    while (begin > 0 && IsWordCharacter(line[begin - 1])) {
        --begin;
    }
    return line.substr(begin, std::min(end, line.size()) - begin);
}

/// A hint that follows from the message and where it points.
std::string HintInPlace(const Excerpt& excerpt, std::string_view message)
{
    const bool isAtStart =
        excerpt.line.find_first_not_of(' ') >= std::min(excerpt.caret, excerpt.line.size());
    const std::string_view rest =
        std::string_view(excerpt.line).substr(std::min(excerpt.caret, excerpt.line.size()));
    const bool isClosed = std::string_view(";{}").find(excerpt.before) != std::string_view::npos;
    const bool missesEnd =
        StartsWith(message, "miss ';'") || StartsWith(message, "invalid end of line");
    if (missesEnd && rest.find_first_not_of(" \t\r") == std::string_view::npos) {
        return "a ';' is missing here";
    }
    if (StartsWith(message, "miss ';'") && isAtStart && !isClosed) {
        return "a ';' is missing at the end of the statement above this line";
    }
    if (rest.substr(0, 1) == "(" && excerpt.line.find("discard") != std::string::npos) {
        return "'discard;' has no parentheses";
    }
    if (StartsWith(message, "miss ';'") && rest.substr(0, 1) == "(") {
        const std::string meant = MeantWord(WordBefore(excerpt.line, excerpt.caret),
                                            {WordClass::Function, WordClass::Type});
        return !meant.empty() ? meant
                              : "only types and intrinsics can be called; they are " +
                                    std::string(kIntrinsics);
    }
    if (StartsWith(message, "miss ')'") && rest.substr(0, 1) == "=") {
        return "'==' compares";
    }
    if (StartsWith(message, "need if")) {
        return "an 'else' must follow the '}' of its 'if' directly";
    }
    if ((StartsWith(message, "expression error") || StartsWith(message, "miss ';'")) &&
        excerpt.line.find("/*") != std::string::npos) {
        return "a comment cannot stand inside a statement";
    }
    if (StartsWith(message, "miss '}'")) {
        return "a '{' above is not closed, or a line above has an error";
    }
    const bool isDeclaration =
        StartsWith(message, "wrong var definition") || StartsWith(message, "invalid end of line");
    if (isDeclaration && excerpt.line.find(',') != std::string::npos) {
        return "one name in each declaration";
    }
    if (StartsWith(message, "invalid end of line") && excerpt.line.find('=') != std::string::npos) {
        return "what is declared outside of 'main' has no initial value: assign it in 'main'";
    }
    if (StartsWith(message, "need a register symbol")) {
        const std::string meant =
            MeantWord(WordBefore(excerpt.line, excerpt.caret), {WordClass::Semantic});
        return !meant.empty() ? meant
                              : "the semantics are POSITION, NORMAL, TANGENT, BINORMAL, "
                                "BLENDINDICES, BLENDWEIGHT, "
                                "TEXCOORD0 to TEXCOORD7, TEXAUTO, SV_Position, COLOR, COLOR0 to "
                                "COLOR3 and SAUTO";
    }
    if (StartsWith(message, "invalid var type") &&
        excerpt.line.find("main(") != std::string::npos) {
        return "nothing stands between the parentheses of 'main()', not even a blank";
    }
    if (StartsWith(message, "invalid var declare")) {
        std::string meant =
            MeantWord(FirstWord(excerpt.line),
                      {WordClass::Buffer, WordClass::Void, WordClass::Type, WordClass::Directive});
        if (!meant.empty()) {
            return meant;
        }
        return rest.substr(0, 1) == "}"
                   ? "this '}' closes nothing: there is one too many, here or above"
                   : "outside of 'main' there are only declarations and 'void main()'";
    }
    if (StartsWith(message, "miss ','")) {
        return "a ',' or a ')' is missing";
    }
    if (StartsWith(message, "miss '('") && rest.find_first_of(";=[,") == 0) {
        return "outside of 'main' there are only 'uniform', 'in' and 'out': write 'uniform' in "
               "front, or move it into 'main'";
    }
    if (excerpt.line.find("] =") != std::string::npos) {
        return "arrays have no initial value: assign each element";
    }
    if (StartsWith(message, "need assign operator")) {
        if (excerpt.line.find("++") != std::string::npos ||
            excerpt.line.find("--") != std::string::npos) {
            return "'++' and '--' work on names and array elements: 'v.x += 1.0;'";
        }
        const std::string meant = MeantWord(
            FirstWord(excerpt.line),
            {WordClass::Type, WordClass::Control, WordClass::Special, WordClass::Directive});
        return !meant.empty()
                   ? meant
                   : "a statement is 'TYPE NAME;', 'NAME = VALUE;', 'if', 'for' or 'discard;'";
    }
    return {};
}

/// Whether a line of a text begins like this.
bool HasLine(std::string_view text, std::string_view start)
{
    return StartsWith(text, start) ||
           text.find("\n" + std::string(start)) != std::string_view::npos;
}

}  // namespace

std::string HintForSource(std::string_view content)
{
    return HasLine(content, "<<<<<<< ") && HasLine(content, ">>>>>>> ")
               ? "a merge has left its marks, '<<<<<<<' to '>>>>>>>': keep one of the two versions"
               : "";
}

std::string HintFor(const Excerpt& excerpt, std::string_view message)
{
    if (excerpt.line.empty()) {
        return message == messages::kInvalidVarDeclare
                   ? "the content of a node must not end in a line break or in blanks"
                   : "";
    }
    std::string hint = HintInWords(excerpt.line);
    if (hint.empty()) {
        hint = HintInSymbols(excerpt.line);
    }
    return hint.empty() ? HintInPlace(excerpt, message) : hint;
}

}  // namespace ns_ruke
