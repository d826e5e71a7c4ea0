// SPDX-License-Identifier: MIT
#pragma once

namespace ns_ruke {

/// The node-definition files that a compiler loads, in this order, relative to the current
/// directory.
constexpr const char* kNodeFiles[] = {
    "morl/vertex_shader.morl",
    "morl/fragment_shader.morl",
    "morl/post_effect.morl",
    "morl/special_output.morl",
};

}  // namespace ns_ruke
