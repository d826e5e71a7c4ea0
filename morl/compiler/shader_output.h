// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// The result of a request. MorlCompiler::Compile does not clear a record before it writes: use a
/// fresh one for a result that stands alone.
struct MORL_API ShaderOutput {
    /// The source text; each request replaces it.
    std::string code;

    /// The texture coordinates that the pass assigned, by declaration name. Entries are set one by
    /// one; others stay.
    std::unordered_map<std::string, std::string> semantics;

    /// The names of the uniforms, appended in the order of their declarations.
    std::vector<std::string> uniformNames;

    ShaderOutput();
    ShaderOutput(const ShaderOutput& other);
    ShaderOutput& operator=(const ShaderOutput& other);
    ~ShaderOutput();
};

}  // namespace ns_ruke
