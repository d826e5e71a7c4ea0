// SPDX-License-Identifier: MIT
#include "morl/parser/keyword_map.h"

#include <cstdint>

namespace ns_ruke {
namespace {

/// Every keyword, in the order of the tokens. The lexer never looks up an operator, because it does
/// not read operators as words; they are listed so that the table is complete.
constexpr std::array<Keyword, kKeywordCount> kKeywords = {{
    {"void", TOKEN_VOID},
    {"float", TOKEN_FLOAT},
    {"float2", TOKEN_FLOAT2},
    {"float3", TOKEN_FLOAT3},
    {"float4", TOKEN_FLOAT4},
    {"int", TOKEN_INT},
    {"int2", TOKEN_INT2},
    {"int3", TOKEN_INT3},
    {"int4", TOKEN_INT4},
    {"float2x4", TOKEN_FLOAT2X4},
    {"float3x3", TOKEN_FLOAT3X3},
    {"float3x4", TOKEN_FLOAT3X4},
    {"float4x3", TOKEN_FLOAT4X3},
    {"float4x4", TOKEN_FLOAT4X4},
    {"float3x3construct", TOKEN_FLOAT3X3_CONSTRUCT},
    {"float4x4construct", TOKEN_FLOAT4X4_CONSTRUCT},
    {"float4x4tranpose", TOKEN_FLOAT4X4_TRANPOSE},
    {"sampler1D", TOKEN_SAMPLER1D},
    {"sampler1DArray", TOKEN_SAMPLER1DARRAY},
    {"sampler2D", TOKEN_SAMPLER2D},
    {"sampler2DArray", TOKEN_SAMPLER2DARRAY},
    {"sampler3D", TOKEN_SAMPLER3D},
    {"sampler3DArray", TOKEN_SAMPLER3DARRAY},
    {"samplerCUBE", TOKEN_SAMPLERCUBE},
    {"auto", TOKEN_AUTO},
    {"uniform", TOKEN_UNIFORM},
    {"in", TOKEN_IN},
    {"out", TOKEN_OUT},
    {"POSITION", TOKEN_POSITION},
    {"NORMAL", TOKEN_NORMAL},
    {"TANGENT", TOKEN_TANGENT},
    {"BINORMAL", TOKEN_BINORMAL},
    {"BLENDINDICES", TOKEN_BLENDINDICES},
    {"BLENDWEIGHT", TOKEN_BLENDWEIGHT},
    {"TEXCOORD0", TOKEN_TEXCOORD0},
    {"TEXCOORD1", TOKEN_TEXCOORD1},
    {"TEXCOORD2", TOKEN_TEXCOORD2},
    {"TEXCOORD3", TOKEN_TEXCOORD3},
    {"TEXCOORD4", TOKEN_TEXCOORD4},
    {"TEXCOORD5", TOKEN_TEXCOORD5},
    {"TEXCOORD6", TOKEN_TEXCOORD6},
    {"TEXCOORD7", TOKEN_TEXCOORD7},
    {"TEXAUTO", TOKEN_TEXAUTO},
    {"SV_Position", TOKEN_SV_POSITION},
    {"COLOR", TOKEN_COLOR},
    {"COLOR0", TOKEN_COLOR0},
    {"COLOR1", TOKEN_COLOR1},
    {"COLOR2", TOKEN_COLOR2},
    {"COLOR3", TOKEN_COLOR3},
    {"SAUTO", TOKEN_SAUTO},
    {"if", TOKEN_IF},
    {"else", TOKEN_ELSE},
    {"for", TOKEN_FOR},
    {"while", TOKEN_WHILE},
    {"#if", TOKEN_MARCO_IF},
    {"#else", TOKEN_MARCO_ELSE},
    {"#endif", TOKEN_MARCO_ENDIF},
    {"#for", TOKEN_MARCO_FOR},
    {"#endfor", TOKEN_MARCO_ENDFOR},
    {"+", TOKEN_PLUS},
    {"-", TOKEN_MINUS},
    {"*", TOKEN_MULTIPLY},
    {"/", TOKEN_DIVIDE},
    {".", TOKEN_MEMBER},
    {"<", TOKEN_LESS},
    {"<=", TOKEN_LESS_EQUAL},
    {">", TOKEN_GREATER},
    {">=", TOKEN_GREATER_EQUAL},
    {"==", TOKEN_EQUAL},
    {"!=", TOKEN_NOT_EQUAL},
    {"tex1D", TOKEN_TEX1D},
    {"tex2D", TOKEN_TEX2D},
    {"tex2DArray", TOKEN_TEX2DARRAY},
    {"tex3D", TOKEN_TEX3D},
    {"tex2Dproj", TOKEN_TEX2DPROJ},
    {"texCUBE", TOKEN_TEXCUBE},
    {"max", TOKEN_MAX},
    {"min", TOKEN_MIN},
    {"saturate", TOKEN_SATURATE},
    {"clamp", TOKEN_CLAMP},
    {"length", TOKEN_LENGTH},
    {"normalize", TOKEN_NORMALIZE},
    {"reflect", TOKEN_REFLECT},
    {"dot", TOKEN_DOT},
    {"cross", TOKEN_CROSS},
    {"mul", TOKEN_MUL},
    {"pow", TOKEN_POW},
    {"lerp", TOKEN_LERP},
    {"sin", TOKEN_SIN},
    {"cos", TOKEN_COS},
    {"tan", TOKEN_TAN},
    {"cot", TOKEN_COT},
    {"abs", TOKEN_ABS},
    {"discard", TOKEN_DISCARD},
}};

constexpr bool InTokenOrder()
{
    for (std::size_t i = 1; i < kKeywords.size(); ++i) {
        if (kKeywords[i - 1].token >= kKeywords[i].token) {
            return false;
        }
    }
    return true;
}
static_assert(InTokenOrder(), "one row per keyword, in the order of the tokens");

constexpr std::size_t kSlots = 256;

/// The factors were found by search, so that few keywords share a slot.
constexpr std::size_t SlotOf(std::string_view word)
{
    const auto byte = [&word](std::size_t i) { return static_cast<unsigned char>(word[i]); };
    const std::size_t length = word.size();
    return (byte(0) * 93U + byte(length - 1) * 215U + byte(length / 2) * 203U + length * 21U) %
           kSlots;
}

/// A hash table with open addressing, built at compile time: 0 is a free slot, and any other number
/// is the index of a keyword plus 1.
using Slots = std::array<std::uint8_t, kSlots>;

constexpr Slots MakeSlots()
{
    Slots slots{};
    for (std::size_t i = 0; i < kKeywords.size(); ++i) {
        std::size_t slot = SlotOf(kKeywords[i].spelling);
        while (slots[slot] != 0) {
            slot = (slot + 1) % kSlots;
        }
        slots[slot] = static_cast<std::uint8_t>(i + 1);
    }
    return slots;
}

constexpr Slots kSlotTable = MakeSlots();

}  // namespace

KeywordMap KeywordMap::Language()
{
    KeywordMap map;
    map.count = kKeywords.size();
    return map;
}

const std::array<Keyword, kKeywordCount>& KeywordMap::Keywords()
{
    return kKeywords;
}

ENUM_TOKEN KeywordMap::Find(std::string_view word) const
{
    if (word.empty() || count == 0) {
        return TOKEN_NONE;
    }
    for (std::size_t slot = SlotOf(word); kSlotTable[slot] != 0; slot = (slot + 1) % kSlots) {
        const Keyword& keyword = kKeywords[kSlotTable[slot] - 1U];
        if (keyword.spelling == word) {
            return keyword.token;
        }
    }
    return TOKEN_NONE;
}

std::string_view KeywordMap::WordOf(ENUM_TOKEN token)
{
    using Words = std::array<std::string_view, static_cast<std::size_t>(kTokenCount)>;
    static const Words words = [] {
        Words all;
        for (const Keyword& keyword : Keywords()) {
            all[static_cast<std::size_t>(keyword.token)] = keyword.spelling;
        }
        return all;
    }();
    return words[static_cast<std::size_t>(token)];
}

}  // namespace ns_ruke
