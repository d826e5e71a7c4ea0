// SPDX-License-Identifier: MIT
// make_corpus EXAMPLES OUT: writes the seeds of the fuzzers, made from the sample library, to
// OUT/NAME/ and a dictionary of the language's words to OUT/morl.dict.
#include "request_input.h"

#include <json/json.h>
#include <morl/morl.h>
#include <morl/parser/keyword_map.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

std::string Read(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    if (!(text << file.rdbuf())) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return text.str();
}

void Write(const fs::path& path, const std::string& text)
{
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    if (!(file << text).flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

Json::Value ReadJson(const fs::path& path)
{
    std::istringstream text(Read(path));
    Json::Value root;
    text >> root;
    return root;
}

/// The last value of every macro's list, or its only value.
std::vector<std::pair<std::string, int>> Macros(const Json::Value& macros)
{
    std::vector<std::pair<std::string, int>> values;
    for (auto macro = macros.begin(); macro != macros.end(); ++macro) {
        values.emplace_back(macro.name(),
                            (macro->isArray() ? (*macro)[macro->size() - 1] : *macro).asInt());
    }
    return values;
}

morl_fuzz::RequestInput MakeRequest(const Json::Value& shader, const Json::Value& names, int stage,
                                    const std::map<std::string, Json::Value>& nodes)
{
    morl_fuzz::RequestInput request;
    request.stage = stage;
    request.macros = Macros(shader["macros"]);
    std::map<std::string, std::string> newNames;
    for (const Json::Value& name : names) {
        newNames[name.asString()] = "n" + std::to_string(newNames.size());
        request.semantics.emplace_back("o" + std::to_string(newNames.size()), "TEXCOORD1");
    }
    for (const Json::Value& name : names) {
        const Json::Value& node = nodes.at(name.asString());
        morl_fuzz::RequestInput::Node input;
        input.source = node["content"].asString();
        for (const Json::Value& reference : node["ref"]) {
            if (newNames.count(reference.asString()) != 0) {
                input.references.push_back(newNames.at(reference.asString()));
            }
        }
        request.nodes.push_back(input);
    }
    return request;
}

/// More nodes, declarations, macro assignments and iterations than any sample has.
morl_fuzz::RequestInput MakeManyNodes()
{
    morl_fuzz::RequestInput request;
    request.macros = {{"N", 40}};
    std::string assignments;
    for (int i = 10; i < 60; ++i) {
        assignments += "$v" + std::to_string(i) + " = " + std::to_string(i % 7) + ";";
    }
    request.nodes.push_back({{}, "void main() {" + assignments + " }"});
    request.nodes.push_back(
        {{"n0"}, "#for N : 0 uniform float u_N; #endfor void main() { x_$v11$v1$v2 = $v59; }"});
    for (int i = 2; i < 45; ++i) {
        request.nodes.push_back({{"n" + std::to_string(i - 1)}, "uniform float a;"});
    }
    return request;
}

void WriteDictionary(const fs::path& path)
{
    std::string text;
    for (const ns_ruke::Keyword& keyword : ns_ruke::KeywordMap::Keywords()) {
        text += "\"" + std::string(keyword.spelling) + "\"\n";
    }
    for (const char* word : {"++",
                             "--",
                             "+=",
                             "-=",
                             "*=",
                             "/=",
                             "&&",
                             "||",
                             "//",
                             "/*",
                             "*/",
                             "%",
                             "(",
                             ")",
                             "[",
                             "]",
                             "{",
                             "}",
                             ",",
                             ":",
                             ";",
                             "$",
                             "=",
                             "\\xff",
                             "\\\\u0000",
                             "\\\"name\\\"",
                             "\\\"content\\\"",
                             "\\\"ref\\\"",
                             "main",
                             "oProjPos",
                             "shadowMap",
                             "TEXCOORD3"}) {
        text += "\"" + std::string(word) + "\"\n";
    }
    Write(path, text);
}

void Run(const fs::path& examples, const fs::path& out)
{
    std::map<std::string, Json::Value> nodes;
    for (const auto& file : fs::directory_iterator(examples / "morl")) {
        Write(out / "node_file" / file.path().filename(), Read(file.path()));
        for (const Json::Value& node : ReadJson(file.path())) {
            nodes[node["name"].asString()] = node;
            Write(out / "parser" / node["name"].asString(), node["content"].asString());
        }
        std::vector<ns_ruke::NodeTextFault> faults;
        for (const ns_ruke::NodeSource& node :
             ns_ruke::ReadNodeText({"", Read(file.path())}, faults)) {
            Write(out / "node_source" / node.name, ns_ruke::WriteNodeSource(node));
        }
    }
    const Json::Value manifest = ReadJson(examples / "shaders.json");
    for (const Json::Value& shader : manifest["shaders"]) {
        for (const int stage : {0, 1}) {
            const std::string pass = stage == 0 ? "vertex" : "fragment";
            Write(out / "request" / (shader["name"].asString() + "." + pass),
                  morl_fuzz::WriteRequest(MakeRequest(shader, shader[pass], stage, nodes)));
        }
    }
    Write(out / "request" / "many", morl_fuzz::WriteRequest(MakeManyNodes()));
    WriteDictionary(out / "morl.dict");
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: make_corpus EXAMPLES OUT\n";
        return 2;
    }
    try {
        Run(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "make_corpus: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
