// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace ns_ruke {

/// The single vocabulary of the compiler. Tokens of the source language, kinds of tree nodes,
/// operators, types, buffer classes and semantics share it, so a parsed token can be stored in the
/// tree unchanged. The values are part of the interface.
enum ENUM_TOKEN : std::int32_t {
    // Variable types.
    TOKEN_VOID = 0,
    TOKEN_FLOAT = 1,
    TOKEN_FLOAT2 = 2,
    TOKEN_FLOAT3 = 3,
    TOKEN_FLOAT4 = 4,
    TOKEN_INT = 5,
    TOKEN_INT2 = 6,
    TOKEN_INT3 = 7,
    TOKEN_INT4 = 8,
    TOKEN_FLOAT2X4 = 9,
    TOKEN_FLOAT3X3 = 10,
    TOKEN_FLOAT3X4 = 11,
    TOKEN_FLOAT4X3 = 12,
    TOKEN_FLOAT4X4 = 13,

    // Matrix helpers: written like types, called like functions.
    TOKEN_FLOAT3X3_CONSTRUCT = 14,
    TOKEN_FLOAT4X4_CONSTRUCT = 15,
    TOKEN_FLOAT4X4_TRANPOSE = 16,

    // Sampler types, and the type deduced from the semantic.
    TOKEN_SAMPLER1D = 17,
    TOKEN_SAMPLER1DARRAY = 18,
    TOKEN_SAMPLER2D = 19,
    TOKEN_SAMPLER2DARRAY = 20,
    TOKEN_SAMPLER3D = 21,
    TOKEN_SAMPLER3DARRAY = 22,
    TOKEN_SAMPLERCUBE = 23,
    TOKEN_AUTO = 24,

    // Buffer classes of global declarations.
    TOKEN_UNIFORM = 25,
    TOKEN_IN = 26,
    TOKEN_OUT = 27,

    // Semantics. TEXAUTO and SAUTO are numbered by the compiler.
    TOKEN_POSITION = 28,
    TOKEN_NORMAL = 29,
    TOKEN_TANGENT = 30,
    TOKEN_BINORMAL = 31,
    TOKEN_BLENDINDICES = 32,
    TOKEN_BLENDWEIGHT = 33,
    TOKEN_TEXCOORD0 = 34,
    TOKEN_TEXCOORD1 = 35,
    TOKEN_TEXCOORD2 = 36,
    TOKEN_TEXCOORD3 = 37,
    TOKEN_TEXCOORD4 = 38,
    TOKEN_TEXCOORD5 = 39,
    TOKEN_TEXCOORD6 = 40,
    TOKEN_TEXCOORD7 = 41,
    TOKEN_TEXAUTO = 42,
    TOKEN_SV_POSITION = 43,
    TOKEN_COLOR = 44,
    TOKEN_COLOR0 = 45,
    TOKEN_COLOR1 = 46,
    TOKEN_COLOR2 = 47,
    TOKEN_COLOR3 = 48,
    TOKEN_SAUTO = 49,

    // Kinds of tree nodes; no source text yields them.
    TOKEN_PROGRAM = 50,
    TOKEN_FUNCTION = 51,
    TOKEN_MARCO_IF_FUNCTION = 52,
    TOKEN_MARCO_FOR_FUNCTION = 53,
    TOKEN_DECLARE = 54,
    TOKEN_MARCO_IF_DECLARE = 55,
    TOKEN_MARCO_FOR_DECLARE = 56,
    TOKEN_REGISTER = 57,
    TOKEN_MARCO_IF_SENTENCE = 58,
    TOKEN_MARCO_FOR_SENTENCE = 59,
    TOKEN_EXPRESSION = 60,
    TOKEN_FUNCTION_CALL = 61,
    TOKEN_UNARY_OPERATION = 62,
    TOKEN_BINARY_OPERATION = 63,
    TOKEN_PARENTHESISE_EXPRESSION = 64,

    // Lexical classes (both also kinds of tree nodes) and two more node kinds.
    TOKEN_IDENTIFIER = 65,
    TOKEN_NUMBER = 66,
    TOKEN_EMPTY_SENTENCE = 67,
    TOKEN_DEFINITION_SENTENCE = 68,

    // Assignment operators. TOKEN_ASSIGN is also the kind of an assignment.
    TOKEN_ASSIGN = 69,
    TOKEN_PLUS_ASSIGN = 70,
    TOKEN_MINUS_ASSIGN = 71,
    TOKEN_MULTIPLY_ASSIGN = 72,
    TOKEN_DIVIDE_ASSIGN = 73,

    // Control keywords. The first three are also kinds of statements.
    TOKEN_IF = 74,
    TOKEN_ELSE = 75,
    TOKEN_FOR = 76,
    TOKEN_WHILE = 77,

    // Node kind.
    TOKEN_MARCO_ASSIGN_SENTENCE = 78,

    // Macro keywords; the "#" is part of their spelling.
    TOKEN_MARCO_IF = 79,
    TOKEN_MARCO_ELSE = 80,
    TOKEN_MARCO_ENDIF = 81,
    TOKEN_MARCO_FOR = 82,
    TOKEN_MARCO_ENDFOR = 83,

    // Punctuation, comments and operators. TOKEN_SINGLE_COMMENT is also the kind of a statement;
    // TOKEN_MULTI_COMMENT is only that kind, and TOKEN_INDEX only the index operator in the tree.
    TOKEN_COLON = 84,
    TOKEN_SINGLE_COMMENT = 85,
    TOKEN_MULTI_COMMENT_BEGIN = 86,
    TOKEN_RESERVED_87 = 87,  // unused; keeps the later values unchanged
    TOKEN_MULTI_COMMENT = 88,
    TOKEN_SEMICOLON = 89,
    TOKEN_INDEX = 90,
    TOKEN_LEFT_BRACKET = 91,
    TOKEN_RIGHT_BRACKET = 92,
    TOKEN_LEFT_PARENTHESIS = 93,
    TOKEN_RIGHT_PARENTHESIS = 94,
    TOKEN_INCREMENT = 95,
    TOKEN_DECREMENT = 96,
    TOKEN_PLUS = 97,
    TOKEN_MINUS = 98,
    TOKEN_MULTIPLY = 99,
    TOKEN_DIVIDE = 100,
    TOKEN_MODULO = 101,
    TOKEN_MEMBER = 102,
    TOKEN_LESS = 103,
    TOKEN_LESS_EQUAL = 104,
    TOKEN_GREATER = 105,
    TOKEN_GREATER_EQUAL = 106,
    TOKEN_EQUAL = 107,
    TOKEN_NOT_EQUAL = 108,
    TOKEN_NOT = 109,
    TOKEN_AND = 110,
    TOKEN_OR = 111,

    // Intrinsic functions. TOKEN_SAMPLE is known to the back ends only.
    TOKEN_TEX1D = 112,
    TOKEN_TEX2D = 113,
    TOKEN_TEX2DARRAY = 114,
    TOKEN_TEX3D = 115,
    TOKEN_TEX2DPROJ = 116,
    TOKEN_TEXCUBE = 117,
    TOKEN_SAMPLE = 118,
    TOKEN_MAX = 119,
    TOKEN_MIN = 120,
    TOKEN_SATURATE = 121,
    TOKEN_CLAMP = 122,
    TOKEN_LENGTH = 123,
    TOKEN_NORMALIZE = 124,
    TOKEN_REFLECT = 125,
    TOKEN_DOT = 126,
    TOKEN_CROSS = 127,
    TOKEN_MUL = 128,
    TOKEN_POW = 129,
    TOKEN_LERP = 130,
    TOKEN_SIN = 131,
    TOKEN_COS = 132,
    TOKEN_TAN = 133,
    TOKEN_COT = 134,
    TOKEN_ABS = 135,

    // Special statements (a node kind, a keyword), and the absence of a token.
    TOKEN_SPECIAL_SENTENCE = 136,
    TOKEN_DISCARD = 137,
    TOKEN_NONE = 138,
};

}  // namespace ns_ruke
