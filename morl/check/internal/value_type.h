// SPDX-License-Identifier: MIT
#pragma once

#include "morl/parser/token.h"

#include <cstdint>
#include <string>

namespace ns_ruke {

/// What kind of numbers a value consists of.
enum class ValueBase : std::uint8_t {
    Unknown,  ///< nothing is known about the value, so nothing is said about it
    Float,
    Int,
    Bool,
    Sampler,
    BoneIndex,  ///< numbers that are integers in some targets and floats in others
};

/// The type of an expression. A vector has one column, a number also one row.
struct ValueType {
    ValueBase base = ValueBase::Unknown;
    std::uint8_t rows = 1;
    std::uint8_t columns = 1;

    bool IsKnown() const { return base != ValueBase::Unknown; }
    bool IsNumeric() const { return base == ValueBase::Float || base == ValueBase::Int; }
    bool IsMatrix() const { return columns > 1; }
    bool IsVector() const { return columns == 1 && rows > 1; }
    bool IsNumber() const { return columns == 1 && rows == 1; }
};

constexpr ValueType kFloat = {ValueBase::Float, 1, 1};
constexpr ValueType kBool = {ValueBase::Bool, 1, 1};

/// The type that a word of the language stands for; unknown for "auto" and words that are no type.
ValueType TypeOfToken(ENUM_TOKEN token);

/// As the language spells it, such as "float3".
std::string NameOf(ValueType type);

}  // namespace ns_ruke
