// SPDX-License-Identifier: MIT
#include "morl/check/internal/value_type.h"

#include <array>
#include <cstddef>

namespace ns_ruke {
namespace {

using Types = std::array<ValueType, static_cast<std::size_t>(kTokenCount)>;

constexpr Types MakeTypes()
{
    Types types{};
    for (std::uint8_t i = 0; i < 4; ++i) {
        const auto rows = static_cast<std::uint8_t>(i + 1);
        types[static_cast<std::size_t>(TOKEN_FLOAT) + i] = {ValueBase::Float, rows, 1};
        types[static_cast<std::size_t>(TOKEN_INT) + i] = {ValueBase::Int, rows, 1};
    }
    types[TOKEN_FLOAT2X4] = {ValueBase::Float, 2, 4};
    types[TOKEN_FLOAT3X3] = {ValueBase::Float, 3, 3};
    types[TOKEN_FLOAT3X4] = {ValueBase::Float, 3, 4};
    types[TOKEN_FLOAT4X3] = {ValueBase::Float, 4, 3};
    types[TOKEN_FLOAT4X4] = {ValueBase::Float, 4, 4};
    types[TOKEN_FLOAT3X3_CONSTRUCT] = types[TOKEN_FLOAT3X3];
    types[TOKEN_FLOAT4X4_CONSTRUCT] = types[TOKEN_FLOAT4X4];
    types[TOKEN_FLOAT4X4_TRANPOSE] = types[TOKEN_FLOAT4X4];
    for (auto i = static_cast<std::size_t>(TOKEN_SAMPLER1D); i <= TOKEN_SAMPLERCUBE; ++i) {
        types[i] = {ValueBase::Sampler, 1, 1};
    }
    return types;
}

constexpr Types kTypes = MakeTypes();

}  // namespace

ValueType TypeOfToken(ENUM_TOKEN token)
{
    return kTypes[static_cast<std::size_t>(token)];
}

std::string NameOf(ValueType type)
{
    std::string name = type.base == ValueBase::Int ? "int" : "float";
    if (!type.IsNumber()) {
        name += std::to_string(type.rows);
    }
    if (type.IsMatrix()) {
        name += "x" + std::to_string(type.columns);
    }
    return name;
}

}  // namespace ns_ruke
