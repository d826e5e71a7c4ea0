// SPDX-License-Identifier: MIT
#include "support/graph.h"

#include <json/json.h>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace morl_test {

namespace fs = std::filesystem;

TemporaryDirectory::TemporaryDirectory()
{
    std::random_device random;
    do {
        path = fs::temp_directory_path() / ("morl-test-" + std::to_string(random()));
    } while (!fs::create_directory(path));
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

InDirectory::InDirectory(const fs::path& directory) : previous(fs::current_path())
{
    fs::current_path(directory);
}

InDirectory::~InDirectory()
{
    std::error_code ignored;
    fs::current_path(previous, ignored);
}

std::string ReadText(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void WriteText(const fs::path& path, const std::string& text)
{
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    if (!(file << text).flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

void WriteNodeFiles(const fs::path& directory, const std::string& text)
{
    for (const char* file : ns_ruke::kNodeFiles) {
        WriteText(directory / file, "[]");
    }
    WriteText(directory / ns_ruke::kNodeFiles[0], text);
}

std::unique_ptr<ns_ruke::MorlCompiler> MakeCompiler(const std::vector<NodeSource>& nodes)
{
    Json::Value array(Json::arrayValue);
    for (const NodeSource& node : nodes) {
        Json::Value object;
        object["name"] = node.name;
        object["content"] = node.content;
        for (const std::string& reference : node.references) {
            object["ref"].append(reference);
        }
        array.append(object);
    }
    const TemporaryDirectory directory;
    WriteNodeFiles(directory.path, Json::writeString(Json::StreamWriterBuilder(), array));
    const InDirectory inDirectory(directory.path);
    return std::make_unique<ns_ruke::MorlCompiler>();
}

std::unique_ptr<ns_ruke::MorlCompiler> MakeSampleCompiler()
{
    const InDirectory inDirectory(fs::path(MORL_SOURCE_DIR) / "examples");
    return std::make_unique<ns_ruke::MorlCompiler>();
}

ns_ruke::PassProperty MakePass(const std::string& target, int stage,
                               const std::vector<std::string>& nodes)
{
    ns_ruke::PassProperty pass;
    pass.nodeNames = nodes;
    pass.target = target;
    pass.stage = stage;
    return pass;
}

std::string CompileSource(const std::string& source, const std::string& target, int stage,
                          const std::unordered_map<std::string, int>& macros)
{
    const auto compiler = MakeCompiler({{"node", source, {}}});
    ns_ruke::PassProperty pass = MakePass(target, stage, {"node"});
    pass.macros = macros;
    ns_ruke::ShaderOutput output;
    compiler->Compile(pass, output);
    return output.code;
}

}  // namespace morl_test
