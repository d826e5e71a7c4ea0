// SPDX-License-Identifier: MIT
#pragma once

#include <morl/morl.h>
#include <string>
#include <unordered_map>

namespace morlc {

/// The list of all nodes: a line with each node's name and file, and below it its references and
/// what it declares. Declarations in macro blocks are followed by the block they are in.
/// @param files the file of each node.
std::string FormatNodeList(const ns_ruke::MorlCompiler& compiler,
                           const std::unordered_map<std::string, std::string>& files);

}  // namespace morlc
