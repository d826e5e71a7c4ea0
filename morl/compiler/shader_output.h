// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// The result of a request. MorlCompiler::Compile does not clear the record first, so use a new one
/// unless results are to accumulate.
struct MORL_API ShaderOutput {
    /// The source text; each request replaces it.
    std::string code;

    /// The texture coordinates that the pass assigned, by declaration name. Only these entries are
    /// set; all others are kept.
    std::unordered_map<std::string, std::string> semantics;

    /// The names of the uniforms, appended in the order of their declarations.
    std::vector<std::string> uniformNames;

    ShaderOutput();
    ShaderOutput(const ShaderOutput& other);
    ShaderOutput(ShaderOutput&& other) noexcept;
    ShaderOutput& operator=(const ShaderOutput& other);
    ShaderOutput& operator=(ShaderOutput&& other) noexcept;
    ~ShaderOutput();
};

}  // namespace ns_ruke
