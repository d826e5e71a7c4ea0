// SPDX-License-Identifier: MIT
#include "pictures/words.h"

#include "support/log_capture.h"

#include <algorithm>
#include <memory>
#include <set>
#include <sstream>
#include <utility>

namespace morl_test {
namespace {

using Words = std::vector<std::string>;

constexpr char kPlainVertex[] = "in float3 position : POSITION; out float4 oProjPos : SV_Position;";
constexpr char kPlainFragment[] = "out float4 colour : COLOR0;";

/// A line for each word, which stands for each "@". "#" is the number of the word.
std::string Lines(const Words& words, const std::string& line)
{
    std::string lines;
    for (std::size_t i = 0; i < words.size(); ++i) {
        for (const char c : line) {
            lines += c == '@' ? words[i] : c == '#' ? std::to_string(i) : std::string(1, c);
        }
        lines += '\n';
    }
    return lines;
}

/// What a word can be the name of, and what the nodes that have it hold.
struct Role {
    const char* name;
    std::size_t most;  ///< words in a shader
    const char* vertexDeclaration;
    const char* vertexStatement;
    const char* fragmentDeclaration;
    const char* fragmentStatement;
};

constexpr Role kRoles[] = {
    // clang-format off
    {"local", 100, "", "", "", "float @ = 0.5; sum += @;"},
    {"uniform", 100, "", "", "uniform float @;", "sum += @;"},
    {"varying", 6, "out float3 @ : TEXAUTO;", "@ = position;", "in float3 @ : TEXAUTO;", "sum += @.x;"},
    {"input", 6, "in float3 @ : TEXCOORD#;", "place += @;", "", ""},
    {"output", 1, "", "", "out float4 @ : COLOR0;", "@ = float4(sum, sum, sum, 1.0);"},
    // clang-format on
};

WordShader MakeShader(const Role& role, const std::string& target, const Words& words,
                      std::size_t number)
{
    WordShader shader;
    shader.name = target + "_" + role.name + "_" + std::to_string(number);
    shader.target = target;
    shader.words = words;
    shader.vertex = {shader.name + "_v",
                     kPlainVertex + ("\n" + Lines(words, role.vertexDeclaration)) +
                         "void main() {\nfloat3 place = position;\n" +
                         Lines(words, role.vertexStatement) + "oProjPos = float4(place, 1.0);\n}",
                     {}};
    const bool isOutput = std::string(role.name) == "output";
    shader.fragment = {
        shader.name + "_f",
        (isOutput ? "" : kPlainFragment) + ("\n" + Lines(words, role.fragmentDeclaration)) +
            "void main() {\nfloat sum = 0.5;\n" + Lines(words, role.fragmentStatement) +
            (isOutput ? "" : "colour = float4(sum, sum, sum, 1.0);\n") + "}",
        {}};
    return shader;
}

/// Whether Morl takes the names of a shader, and the checks do not warn of them.
bool IsSilent(const WordShader& shader)
{
    const LogCapture log;
    const auto compiler = MakeCompiler({shader.vertex, shader.fragment});
    ns_ruke::PassProperty vertex =
        MakePass(shader.target, ns_ruke::kVertexStage, {shader.vertex.name});
    ns_ruke::PassProperty fragment =
        MakePass(shader.target, ns_ruke::kFragmentStage, {shader.fragment.name});
    bool isWarned = false;
    for (ns_ruke::PassProperty* pass : {&vertex, &fragment}) {
        ns_ruke::ShaderOutput output;
        ns_ruke::PassReport report;
        std::vector<ns_ruke::ReportWarning> warnings;
        compiler->CompileReported(*pass, output, report, warnings);
        fragment.semantics.insert(output.semantics.begin(), output.semantics.end());
        isWarned =
            isWarned || std::any_of(warnings.begin(), warnings.end(), [](const auto& warning) {
                return warning.check == "reserved-name" || warning.check == "copied-name" ||
                       warning.check == "repeated-name";
            });
    }
    return !isWarned && log.errors.empty();
}

/// The words of the list, and what becomes one of them with the prefix of a copy.
std::set<std::string> ReadWords()
{
    std::istringstream text(
        ReadText(std::filesystem::path(MORL_SOURCE_DIR) / "tests/pictures/words.txt"));
    std::set<std::string> words;
    for (std::string word; text >> word;) {
        words.insert(word);
        for (const std::string prefix : {"i", "ret"}) {
            if (word.rfind(prefix, 0) == 0 && word.size() > prefix.size()) {
                words.insert(word.substr(prefix.size()));
            }
        }
    }
    return words;
}

}  // namespace

SampleTexts TextsOf(const WordShader& shader)
{
    const auto compiler = MakeCompiler({shader.vertex, shader.fragment});
    SampleRequest request;
    request.vertex = MakePass(shader.target, ns_ruke::kVertexStage, {shader.vertex.name});
    request.fragment = MakePass(shader.target, ns_ruke::kFragmentStage, {shader.fragment.name});
    return CompileSample(*compiler, request);
}

std::vector<WordShader> WordShaders()
{
    const std::set<std::string> words = ReadWords();
    std::vector<WordShader> shaders;
    for (const std::string& target : ns_ruke::MorlTargets()) {
        for (const Role& role : kRoles) {
            Words silent;
            for (const std::string& word : words) {
                if (IsSilent(MakeShader(role, target, {word}, 0))) {
                    silent.push_back(word);
                }
            }
            for (std::size_t i = 0; i < silent.size(); i += role.most) {
                const auto begin = silent.begin() + static_cast<std::ptrdiff_t>(i);
                const auto count = std::min(role.most, silent.size() - i);
                shaders.push_back(MakeShader(
                    role, target, Words(begin, begin + static_cast<std::ptrdiff_t>(count)), i));
            }
        }
    }
    return shaders;
}

}  // namespace morl_test
