// SPDX-License-Identifier: MIT
#include "pictures/translate.h"

#include "pictures/gl.h"
#include "support/graph.h"
#include "support/process.h"

#include <algorithm>
#include <map>
#include <regex>
#include <stdexcept>
#include <vector>

namespace pictures {
namespace {

/// The semantics of a struct's members, without the position, in their order.
std::vector<std::string> Semantics(const std::string& code, const std::string& name)
{
    const std::size_t start = code.find("struct " + name);
    const std::string members = code.substr(start, code.find("};", start) - start);
    static const std::regex member(" : (\\w+);");
    std::vector<std::string> semantics;
    for (std::sregex_iterator found(members.begin(), members.end(), member), end; found != end;
         ++found) {
        if ((*found)[1] != "POSITION" && (*found)[1] != "SV_Position") {
            semantics.push_back((*found)[1]);
        }
    }
    return semantics;
}

/// Gives each input of a fragment shader the location of the output with its semantic.
std::string MatchBySemantic(const std::string& glsl, const std::vector<std::string>& outputs,
                            const std::vector<std::string>& inputs)
{
    static const std::regex input("layout\\(location = (\\d+)\\) in ");
    std::string matched;
    std::size_t end = 0;
    for (std::sregex_iterator found(glsl.begin(), glsl.end(), input), none; found != none;
         ++found) {
        const std::string& semantic = inputs.at(std::stoul((*found)[1]));
        const auto place = std::find(outputs.begin(), outputs.end(), semantic);
        if (place == outputs.end()) {
            throw Refused("no output of the vertex stage has the semantic " + semantic);
        }
        matched.append(glsl, end, static_cast<std::size_t>(found->position()) - end);
        matched += "layout(location = " + std::to_string(place - outputs.begin()) + ") in ";
        end = static_cast<std::size_t>(found->position() + found->length());
    }
    return matched.append(glsl, end);
}

std::string Checked(const morl_test::ProcessResult& result, const std::string& tool,
                    const std::string& code)
{
    if (result.status == 127) {
        throw std::runtime_error(tool + " is not installed: ./dev setup");
    }
    if (result.status >= 128) {
        throw std::runtime_error(tool + " was ended by a signal: " + code);
    }
    if (result.status != 0) {
        throw Refused(tool + ": " + result.out + result.err + code);
    }
    return result.out;
}

std::string GlslOf(const std::string& code, const std::string& stage, bool isModel3)
{
    // Probes share one of their stages.
    static std::map<std::string, std::string> known;
    std::string& translated = known[stage + (isModel3 ? "3" : "10") + code];
    if (!translated.empty()) {
        return translated;
    }
    const morl_test::TemporaryDirectory directory;
    const std::string source = (directory.path / "shader.hlsl").string();
    const std::string binary = (directory.path / "shader.spv").string();
    morl_test::WriteText(source, code);
    std::vector<std::string> command = {
        "glslangValidator", "-D", "-V", "-e", "main", "-S", stage, "-o", binary, source};
    if (isModel3) {
        command.insert(command.begin() + 1, "--hlsl-dx9-compatible");
    }
    Checked(morl_test::RunProcess(command), "glslangValidator", code);
    const std::string glsl =
        Checked(morl_test::RunProcess({"spirv-cross", "--version", "410", "--no-es", binary}),
                "spirv-cross", code);
    // The uniforms of each stage are a block of their own, though of one name.
    translated = std::regex_replace(glsl, std::regex("\\b_Global\\b"), "_Global_" + stage);
    return translated;
}

}  // namespace

morl_test::SampleTexts GlslOfHlsl(const morl_test::SampleTexts& texts, bool isModel3)
{
    std::string vertex = texts.vertex;
    if (isModel3) {
        // As an output it is the position on the screen, which glslang knows by its newer name.
        const std::size_t start = vertex.find("struct VS_OUTPUT");
        vertex =
            vertex.substr(0, start) +
            std::regex_replace(vertex.substr(start), std::regex(": POSITION;"), ": SV_Position;");
    }
    morl_test::SampleTexts glsl = {GlslOf(vertex, "vert", isModel3),
                                   GlslOf(texts.fragment, "frag", isModel3)};
    // The position has no location, and so leaves none.
    const std::vector<std::string> outputs = Semantics(texts.vertex, "VS_OUTPUT");
    const std::vector<std::string> inputs = Semantics(texts.fragment, "FS_INPUT");
    if (isModel3) {
        glsl.fragment = MatchBySemantic(glsl.fragment, outputs, inputs);
    } else if (inputs.size() > outputs.size() ||
               !std::equal(inputs.begin(), inputs.end(), outputs.begin())) {
        throw Refused("the places of the two stages do not agree: " + texts.vertex +
                      texts.fragment);
    }
    return glsl;
}

}  // namespace pictures
