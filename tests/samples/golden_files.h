// SPDX-License-Identifier: MIT
#pragma once

#include "support/samples.h"

#include <filesystem>

namespace morl_test {

/// Where the golden text of a pass of a sample shader lies; `extension` is ".vert" or ".frag".
inline std::filesystem::path GoldenPath(const SampleRequest& request, const char* extension)
{
    return std::filesystem::path(MORL_SOURCE_DIR) / "tests/golden" / request.shader /
           (request.target + extension);
}

}  // namespace morl_test
