// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/core/request_limits.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// A request: one stage of a shader in one target language.
struct MORL_API PassProperty {
    /// The nodes that take part, by name; duplicates count once.
    std::vector<std::string> nodeNames;

    /// Values for `#if` conditions and `#for` bounds.
    std::unordered_map<std::string, int> macros;

    /// "hlsl", "hlsl10", "glsl" or "glsles", exactly.
    std::string target;

    /// 0 vertex, 1 fragment. Left unset by the constructor, so every caller must set it.
    int stage;

    /// Texture coordinates by declaration name, for the fragment stage: what the vertex pass
    /// returned in ShaderOutput::semantics.
    std::unordered_map<std::string, std::string> semantics;

    /// Sampler registers by declaration name, for declarations bound to SAUTO.
    std::unordered_map<std::string, int> samplerRegisters;

    /// None by default.
    RequestLimits limits;

    PassProperty();
    PassProperty(const PassProperty& other);
    PassProperty(PassProperty&& other) noexcept;
    PassProperty& operator=(const PassProperty& other);
    PassProperty& operator=(PassProperty&& other) noexcept;
    ~PassProperty();
};

}  // namespace ns_ruke
