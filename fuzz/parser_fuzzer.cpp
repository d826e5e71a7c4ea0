// SPDX-License-Identifier: MIT
// Any text through the parser alone.
#include "oracle.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::unordered_map<std::string, std::string> sources = {
        {"node", std::string(data, data + size)}};
    const morl_fuzz::LocationOracle oracle(sources);
    ns_ruke::MorlParser parser;
    ns_ruke::MorlNode node;
    node.SetName("node");
    node.SetContent(sources.at("node"));
    node.Compile(&parser, "hlsl");
    return 0;
}
