// SPDX-License-Identifier: MIT
#pragma once

#include "morl/parser/keyword_map.h"

#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace ns_ruke {

constexpr Keyword Word(std::string_view spelling, ENUM_TOKEN token, WordClass wordClass)
{
    return {spelling, token, wordClass};
}

constexpr Keyword Type(std::string_view spelling, ENUM_TOKEN token, ValueType type)
{
    return {spelling, token, WordClass::Type, type};
}

/// The index of a semantic that is given one for each declaration.
constexpr int kNumbered = -1;

constexpr Keyword Semantic(std::string_view spelling, ENUM_TOKEN token, SemanticKind kind,
                           int index)
{
    return {spelling, token, WordClass::Semantic, {}, {}, kind, index};
}

constexpr Keyword Function(std::string_view spelling, ENUM_TOKEN token, std::string_view arguments,
                           ValueType type = {})
{
    return {spelling, token, WordClass::Function, type, arguments};
}

/// The words of the language: the only list of them. Classes of tokens, the number and kinds of
/// arguments, types, the tables of the documents and the word lists of editors follow from it.
/// The lexer never looks up an operator, because it does not read operators as words.
constexpr Keyword kKeywords[] = {
    Word("void", TOKEN_VOID, WordClass::Void),
    Type("float", TOKEN_FLOAT, {ValueBase::Float, 1, 1}),
    Type("float2", TOKEN_FLOAT2, {ValueBase::Float, 2, 1}),
    Type("float3", TOKEN_FLOAT3, {ValueBase::Float, 3, 1}),
    Type("float4", TOKEN_FLOAT4, {ValueBase::Float, 4, 1}),
    Type("int", TOKEN_INT, {ValueBase::Int, 1, 1}),
    Type("int2", TOKEN_INT2, {ValueBase::Int, 2, 1}),
    Type("int3", TOKEN_INT3, {ValueBase::Int, 3, 1}),
    Type("int4", TOKEN_INT4, {ValueBase::Int, 4, 1}),
    Type("float2x4", TOKEN_FLOAT2X4, {ValueBase::Float, 2, 4}),
    Type("float3x3", TOKEN_FLOAT3X3, {ValueBase::Float, 3, 3}),
    Type("float3x4", TOKEN_FLOAT3X4, {ValueBase::Float, 3, 4}),
    Type("float4x3", TOKEN_FLOAT4X3, {ValueBase::Float, 4, 3}),
    Type("float4x4", TOKEN_FLOAT4X4, {ValueBase::Float, 4, 4}),
    Function("float3x3construct", TOKEN_FLOAT3X3_CONSTRUCT, "ccc", {ValueBase::Float, 3, 3}),
    Function("float4x4construct", TOKEN_FLOAT4X4_CONSTRUCT, "cccc", {ValueBase::Float, 4, 4}),
    Function("float4x4tranpose", TOKEN_FLOAT4X4_TRANPOSE, "cccc", {ValueBase::Float, 4, 4}),
    Type("sampler1D", TOKEN_SAMPLER1D, {ValueBase::Sampler, 1, 1}),
    Type("sampler1DArray", TOKEN_SAMPLER1DARRAY, {ValueBase::Sampler, 1, 1}),
    Type("sampler2D", TOKEN_SAMPLER2D, {ValueBase::Sampler, 1, 1}),
    Type("sampler2DArray", TOKEN_SAMPLER2DARRAY, {ValueBase::Sampler, 1, 1}),
    Type("sampler3D", TOKEN_SAMPLER3D, {ValueBase::Sampler, 1, 1}),
    Type("sampler3DArray", TOKEN_SAMPLER3DARRAY, {ValueBase::Sampler, 1, 1}),
    Type("samplerCUBE", TOKEN_SAMPLERCUBE, {ValueBase::Sampler, 1, 1}),
    Type("auto", TOKEN_AUTO, {}),
    Word("uniform", TOKEN_UNIFORM, WordClass::Buffer),
    Word("in", TOKEN_IN, WordClass::Buffer),
    Word("out", TOKEN_OUT, WordClass::Buffer),
    Semantic("POSITION", TOKEN_POSITION, SemanticKind::Position, 0),
    Semantic("NORMAL", TOKEN_NORMAL, SemanticKind::Normal, 0),
    Semantic("TANGENT", TOKEN_TANGENT, SemanticKind::Tangent, 0),
    Semantic("BINORMAL", TOKEN_BINORMAL, SemanticKind::Binormal, 0),
    Semantic("BLENDINDICES", TOKEN_BLENDINDICES, SemanticKind::BlendIndices, 0),
    Semantic("BLENDWEIGHT", TOKEN_BLENDWEIGHT, SemanticKind::BlendWeight, 0),
    Semantic("TEXCOORD0", TOKEN_TEXCOORD0, SemanticKind::Texcoord, 0),
    Semantic("TEXCOORD1", TOKEN_TEXCOORD1, SemanticKind::Texcoord, 1),
    Semantic("TEXCOORD2", TOKEN_TEXCOORD2, SemanticKind::Texcoord, 2),
    Semantic("TEXCOORD3", TOKEN_TEXCOORD3, SemanticKind::Texcoord, 3),
    Semantic("TEXCOORD4", TOKEN_TEXCOORD4, SemanticKind::Texcoord, 4),
    Semantic("TEXCOORD5", TOKEN_TEXCOORD5, SemanticKind::Texcoord, 5),
    Semantic("TEXCOORD6", TOKEN_TEXCOORD6, SemanticKind::Texcoord, 6),
    Semantic("TEXCOORD7", TOKEN_TEXCOORD7, SemanticKind::Texcoord, 7),
    Semantic("TEXAUTO", TOKEN_TEXAUTO, SemanticKind::Texcoord, kNumbered),
    Semantic("SV_Position", TOKEN_SV_POSITION, SemanticKind::ScreenPosition, 0),
    Semantic("COLOR", TOKEN_COLOR, SemanticKind::Color, 0),
    Semantic("COLOR0", TOKEN_COLOR0, SemanticKind::Color, 0),
    Semantic("COLOR1", TOKEN_COLOR1, SemanticKind::Color, 1),
    Semantic("COLOR2", TOKEN_COLOR2, SemanticKind::Color, 2),
    Semantic("COLOR3", TOKEN_COLOR3, SemanticKind::Color, 3),
    Semantic("SAUTO", TOKEN_SAUTO, SemanticKind::Sampler, kNumbered),
    Word("if", TOKEN_IF, WordClass::Control),
    Word("else", TOKEN_ELSE, WordClass::Control),
    Word("for", TOKEN_FOR, WordClass::Control),
    Word("while", TOKEN_WHILE, WordClass::Control),
    Word("#if", TOKEN_MARCO_IF, WordClass::Directive),
    Word("#else", TOKEN_MARCO_ELSE, WordClass::Directive),
    Word("#endif", TOKEN_MARCO_ENDIF, WordClass::Directive),
    Word("#for", TOKEN_MARCO_FOR, WordClass::Directive),
    Word("#endfor", TOKEN_MARCO_ENDFOR, WordClass::Directive),
    Word("+", TOKEN_PLUS, WordClass::Operator),
    Word("-", TOKEN_MINUS, WordClass::Operator),
    Word("*", TOKEN_MULTIPLY, WordClass::Operator),
    Word("/", TOKEN_DIVIDE, WordClass::Operator),
    Word(".", TOKEN_MEMBER, WordClass::Operator),
    Word("<", TOKEN_LESS, WordClass::Operator),
    Word("<=", TOKEN_LESS_EQUAL, WordClass::Operator),
    Word(">", TOKEN_GREATER, WordClass::Operator),
    Word(">=", TOKEN_GREATER_EQUAL, WordClass::Operator),
    Word("==", TOKEN_EQUAL, WordClass::Operator),
    Word("!=", TOKEN_NOT_EQUAL, WordClass::Operator),
    Function("tex1D", TOKEN_TEX1D, "st"),
    Function("tex2D", TOKEN_TEX2D, "st"),
    Function("tex2DArray", TOKEN_TEX2DARRAY, "st"),
    Function("tex3D", TOKEN_TEX3D, "st"),
    Function("tex2Dproj", TOKEN_TEX2DPROJ, "st"),
    Function("texCUBE", TOKEN_TEXCUBE, "st"),
    Function("max", TOKEN_MAX, "vn"),
    Function("min", TOKEN_MIN, "vn"),
    Function("saturate", TOKEN_SATURATE, "v"),
    Function("clamp", TOKEN_CLAMP, "vnn"),
    Function("length", TOKEN_LENGTH, "v", kFloat),
    Function("normalize", TOKEN_NORMALIZE, "v"),
    Function("reflect", TOKEN_REFLECT, "vv"),
    Function("dot", TOKEN_DOT, "vv", kFloat),
    Function("cross", TOKEN_CROSS, "vv"),
    Function("mul", TOKEN_MUL, "mm"),
    Function("pow", TOKEN_POW, "vv"),
    Function("lerp", TOKEN_LERP, "vvn"),
    Function("sin", TOKEN_SIN, "v"),
    Function("cos", TOKEN_COS, "v"),
    Function("tan", TOKEN_TAN, "v"),
    Function("cot", TOKEN_COT, "v"),
    Function("abs", TOKEN_ABS, "v"),
    Word("discard", TOKEN_DISCARD, WordClass::Special),
};

/// How many values ENUM_TOKEN has: TOKEN_NONE is the last one, unless a word comes after it.
constexpr std::size_t kTokenCount = [] {
    std::size_t last = TOKEN_NONE;
    for (const Keyword& keyword : kKeywords) {
        const auto token = static_cast<std::size_t>(keyword.token);
        last = token > last ? token : last;
    }
    return last + 1;
}();

/// A table with a place for every token.
template <class Value>
using TokenTable = std::array<Value, kTokenCount>;

/// The class of each token.
constexpr TokenTable<WordClass> kWordClasses = [] {
    TokenTable<WordClass> classes{};
    for (const Keyword& keyword : kKeywords) {
        classes[static_cast<std::size_t>(keyword.token)] = keyword.wordClass;
    }
    classes[TOKEN_SAMPLE] = WordClass::Function;  // known to the back ends; no source can name it
    return classes;
}();

constexpr WordClass ClassOf(ENUM_TOKEN token)
{
    const auto index = static_cast<std::size_t>(token);
    return index < kTokenCount ? kWordClasses[index] : WordClass::None;
}

}  // namespace ns_ruke
