// SPDX-License-Identifier: MIT
// morl_questions DIR: writes what other compilers are asked about.
//
// DIR/webgl.json: pairs of GLSL ES texts, a list of objects with "name", "vertex", "fragment", and
// with "webgl" as what WebGL is expected to say of them.
// DIR/probes/, DIR/words/: projects, each with node files and shaders.json.
#include "pictures/probes.h"
#include "pictures/words.h"

#include <json/json.h>
#include <filesystem>
#include <iostream>
#include <string>

namespace {

using morl_test::Probe;

/// A project while it is made.
class Project {
public:
    /// @return the entry of the new shader
    Json::Value& Add(const std::string& name, const morl_test::NodeSource& vertex,
                     const morl_test::NodeSource& fragment)
    {
        Json::Value& shader = shaders.append(Json::objectValue);
        shader["name"] = name;
        for (const char* const stage : {"vertex", "fragment"}) {
            const bool isVertex = std::string(stage) == "vertex";
            Json::Value& node = nodes.append(Json::objectValue);
            node["name"] = name + "_" + stage;
            node["content"] = isVertex ? vertex.content : fragment.content;
            shader[stage].append(node["name"]);
        }
        return shader;
    }

    void Write(const std::filesystem::path& directory) const
    {
        std::filesystem::create_directories(directory);
        morl_test::WriteNodeFiles(directory, nodes.toStyledString());
        Json::Value manifest;
        manifest["shaders"] = shaders;
        morl_test::WriteText(directory / "shaders.json", manifest.toStyledString());
    }

private:
    Json::Value nodes{Json::arrayValue};
    Json::Value shaders{Json::arrayValue};
};

Json::Value Pair(const std::string& name, const morl_test::SampleTexts& texts,
                 const std::string& expected)
{
    Json::Value pair;
    pair["name"] = name;
    pair["vertex"] = texts.vertex;
    pair["fragment"] = texts.fragment;
    pair["webgl"] = expected;
    return pair;
}

void AddProbes(const std::filesystem::path& directory, Json::Value& pairs)
{
    Project project;
    std::size_t number = 0;
    for (const Probe& probe : morl_test::ReadProbes()) {
        pairs.append(Pair(probe.row, morl_test::CompileProbe(probe, "glsles", false), probe.webGl));
        for (const bool isRight : {true, false}) {
            const auto nodes = morl_test::NodesOfProbe(probe, isRight);
            Json::Value& shader = project.Add(
                (isRight ? "right_" : "wrong_") + std::to_string(number), nodes[0], nodes[1]);
            shader["targets"].append("hlsl");
            shader["targets"].append("hlsl10");
            shader["targetMacros"]["hlsl10"]["COMPARE"] = 1;
        }
        ++number;
    }
    project.Write(directory / "probes");
}

void AddWords(const std::filesystem::path& directory, Json::Value& pairs)
{
    Project project;
    for (const morl_test::WordShader& word : morl_test::WordShaders()) {
        project.Add(word.name, word.vertex, word.fragment)["targets"].append(word.target);
        if (word.target == "glsles") {
            pairs.append(Pair(word.name, morl_test::TextsOf(word), "yes"));
        }
    }
    project.Write(directory / "words");
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: morl_questions DIR\n";
        return 2;
    }
    const std::filesystem::path directory = argv[1];
    Json::Value pairs(Json::arrayValue);
    AddProbes(directory, pairs);
    AddWords(directory, pairs);
    morl_test::WriteText(directory / "webgl.json", pairs.toStyledString());
}
