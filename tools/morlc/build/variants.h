// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"
#include "build/record.h"
#include "build/unused_names.h"
#include "report/diagnostics.h"

#include <morl/morl.h>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace morlc {

/// One variant of one shader in one target: both its passes.
struct Variant {
    std::size_t shader;  ///< its index in the manifest
    std::string target;
    std::size_t number;  ///< among those of the shader
};

/// All variants of a manifest, in the order of compilation. A change of target makes the compiler
/// parse the nodes again, so each target is finished before the next one begins.
/// @param shaders the names of the shaders to build; empty: all of them.
std::vector<Variant> ListVariants(const Manifest& manifest,
                                  const std::vector<std::string>& shaders);

/// The result of compiling the variants of one shader.
struct BuiltShader {
    ShaderRecord record;
    std::map<std::string, std::string> codes;  ///< the texts, by file
    std::size_t passes = 0;                    ///< how many texts there were, duplicates included
    UsedNames used;
    bool failed = false;  ///< an error was reported; the rest must not be used
};

/// What CompileVariants works on.
struct VariantWork {
    const Manifest& manifest;
    const std::vector<Variant>& variants;
    /// One per thread, each loaded from the same files.
    const std::vector<std::unique_ptr<ns_ruke::MorlCompiler>>& compilers;
    Diagnostics& diagnostics;
    /// Called with the number of variants that have been done since the last call; by several
    /// threads at the same time, and before anything is reported.
    std::function<void(std::size_t)> progress;
};

/// Compiles all variants. The results, the reports and their order do not depend on the number of
/// compilers.
/// @return by shader, in the order of the manifest.
std::vector<BuiltShader> CompileVariants(const VariantWork& work);

}  // namespace morlc
