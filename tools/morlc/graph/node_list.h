// SPDX-License-Identifier: MIT
#pragma once

#include "nodes/node_origins.h"

#include <morl/morl.h>
#include <string>

namespace morlc {

/// The list of all nodes: a line with each node's name and file, and below it its references and
/// what it declares. Declarations in macro blocks are followed by the block they are in.
std::string FormatNodeList(const ns_ruke::MorlCompiler& compiler, const NodeOrigins& origins);

}  // namespace morlc
