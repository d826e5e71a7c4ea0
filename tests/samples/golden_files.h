// SPDX-License-Identifier: MIT
#pragma once

#include "support/samples.h"

#include <filesystem>

namespace morl_test {

/// The path of the golden text of one pass of a sample shader; `extension` is ".vert" or ".frag".
inline std::filesystem::path GoldenPath(const SampleRequest& request, const char* extension)
{
    return std::filesystem::path(MORL_SOURCE_DIR) / "tests/golden" / request.shader /
           (request.target + extension);
}

}  // namespace morl_test
