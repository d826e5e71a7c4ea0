// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace ns_ruke {

/// What a declaration is bound to. The numbers are those of the C interface.
enum class SemanticKind : std::uint8_t {
    None = 0,
    Position = 1,
    Normal = 2,
    Tangent = 3,
    Binormal = 4,
    BlendIndices = 5,
    BlendWeight = 6,
    Texcoord = 7,        ///< its index is the number of the texture coordinate
    ScreenPosition = 8,  ///< SV_Position
    Color = 9,           ///< its index is the render target
    Sampler = 10,        ///< SAUTO: its index is the register
    Other = 11,          ///< a name that the language does not know
};

}  // namespace ns_ruke
