// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

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

    constexpr bool IsKnown() const { return base != ValueBase::Unknown; }
    constexpr bool IsNumeric() const { return base == ValueBase::Float || base == ValueBase::Int; }
    constexpr bool IsMatrix() const { return columns > 1; }
    constexpr bool IsVector() const { return columns == 1 && rows > 1; }
    constexpr bool IsNumber() const { return columns == 1 && rows == 1; }
};

constexpr ValueType kFloat = {ValueBase::Float, 1, 1};
constexpr ValueType kBool = {ValueBase::Bool, 1, 1};

}  // namespace ns_ruke
