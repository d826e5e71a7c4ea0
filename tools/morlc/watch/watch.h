// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"

namespace morlc {

/// "--watch": runs "build" or "check", and again whenever a file changes that it reads, until the
/// user ends it. A round does only what the changed nodes and shaders need, and writes one line:
/// for people, or a JSON object (docs/watch.schema.json).
/// @throws std::exception when the first round could not begin
ExitStatus Watch(const Options& options);

}  // namespace morlc
