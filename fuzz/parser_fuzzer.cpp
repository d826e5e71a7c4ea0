// SPDX-License-Identifier: MIT
// Runs any text through the parser, and the parsed program through the linker and the writers.
#include "writer_oracle.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace ns_ruke;
    const std::unordered_map<std::string, std::string> sources = {
        {"node", std::string(data, data + size)}};
    const morl_fuzz::LocationOracle oracle(sources);
    MorlParser parser;
    MorlNode node;
    node.SetName("node");
    node.SetContent(sources.at("node"));
    node.Compile(&parser, "hlsl");

    MorlProgram program;
    program.mainFunction = new MorlFunction;
    program.stage = 1;
    std::unordered_map<std::string, int> macros = {{"A", 1}, {"N", 3}};
    std::vector<MorlNode*> nodes = {&node};
    MorlLinker().Link("hlsl", macros, nodes, program);
    morl_fuzz::WriterOracle<MorlTranslatorHLSL>().Check(program);
    morl_fuzz::WriterOracle<MorlTranslatorGLSL>().Check(program);
    morl_fuzz::WriterOracle<MorlTranslatorHLSL10> hlsl10;
    hlsl10.Check(program);
    morl_fuzz::CheckOrder(hlsl10, program.inputs);
    morl_fuzz::WriterOracle<MorlTranslatorGLSLES> es;
    es.Check(program);
    morl_fuzz::CheckOrder(es, program.inputs);
    return 0;
}
