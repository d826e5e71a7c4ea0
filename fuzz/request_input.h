// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace morl_fuzz {

/// A request as the request fuzzer reads it from bytes. Pieces are separated by the byte 0xff,
/// which no source needs: the first one is "STAGE;NAME=VALUE,...;NAME=TEXT,..." (the stage, the
/// macros, the table of texture coordinates), every other one is a node, "NAME NAME...|SOURCE" (its
/// references, its source). The nodes are named n0, n1, and so on.
struct RequestInput {
    struct Node {
        std::vector<std::string> references;
        std::string source;
    };

    int stage = 0;
    std::vector<std::pair<std::string, int>> macros;
    std::vector<std::pair<std::string, std::string>> semantics;
    std::vector<Node> nodes;
};

constexpr char kPieceEnd = '\xff';

/// Any bytes give a request; what is missing is empty.
RequestInput ReadRequest(const std::string& bytes);

/// The bytes from which ReadRequest makes this request.
std::string WriteRequest(const RequestInput& request);

}  // namespace morl_fuzz
