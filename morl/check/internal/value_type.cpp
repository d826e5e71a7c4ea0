// SPDX-License-Identifier: MIT
#include "morl/check/internal/value_type.h"

namespace ns_ruke {

ValueType TypeOfToken(ENUM_TOKEN token)
{
    if (token >= TOKEN_FLOAT && token <= TOKEN_FLOAT4) {
        return {ValueBase::Float, static_cast<std::uint8_t>(token - TOKEN_FLOAT + 1), 1};
    }
    if (token >= TOKEN_INT && token <= TOKEN_INT4) {
        return {ValueBase::Int, static_cast<std::uint8_t>(token - TOKEN_INT + 1), 1};
    }
    if (token >= TOKEN_SAMPLER1D && token <= TOKEN_SAMPLERCUBE) {
        return {ValueBase::Sampler, 1, 1};
    }
    switch (token) {
    case TOKEN_FLOAT2X4:
        return {ValueBase::Float, 2, 4};
    case TOKEN_FLOAT3X3:
    case TOKEN_FLOAT3X3_CONSTRUCT:
        return {ValueBase::Float, 3, 3};
    case TOKEN_FLOAT3X4:
        return {ValueBase::Float, 3, 4};
    case TOKEN_FLOAT4X3:
        return {ValueBase::Float, 4, 3};
    case TOKEN_FLOAT4X4:
    case TOKEN_FLOAT4X4_CONSTRUCT:
    case TOKEN_FLOAT4X4_TRANPOSE:
        return {ValueBase::Float, 4, 4};
    default:
        return {};
    }
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
