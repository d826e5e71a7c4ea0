// SPDX-License-Identifier: MIT
// A small host: loads the node graph, routes the log into its own console, and compiles both passes
// of a shader in all targets, as an engine does.
#include <morl/morl.h>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <utility>

namespace {

using ns_ruke::LogLevel;
using ns_ruke::LogLine;
using ns_ruke::MorlCompiler;
using ns_ruke::PassProperty;
using ns_ruke::ShaderOutput;
using ns_ruke::TamberLogSystem;

/// The engine's console. It counts errors, because a pass with errors still yields a text.
class Console {
public:
    Console()
    {
        previous = TamberLogSystem::SetSink(
            [this](LogLevel level, const std::string& /*category*/, const std::string& message) {
                Print(LogLine(level, message));
            });
    }
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console() { TamberLogSystem::SetSink(std::move(previous)); }

    int Errors() const { return errors; }

private:
    void Print(const LogLine& line)
    {
        if (!line.IsError()) {
            return;
        }
        ++errors;
        std::cout << "[shader] ";
        if (line.line > 0) {
            std::cout << line.node << ':' << line.line << ':' << line.column << ' ';
        }
        std::cout << line.text << '\n';
    }

    ns_ruke::LogSink previous;
    int errors = 0;
};

/// The settings that both passes of the material share.
PassProperty MakePass(const std::string& target, int stage)
{
    PassProperty pass;
    pass.target = target;
    pass.stage = stage;
    pass.macros = {{"LIGHTS", 2}, {"SUNS", 1}, {"SPECULAR", 1}, {"FOG", 1}};
    pass.samplerRegisters = {{"albedoMap", 0}};
    return pass;
}

/// The register that the text binds a texture to.
std::string RegisterLine(const std::string& code)
{
    const std::size_t binding = code.find("register(");
    if (binding == std::string::npos) {
        return "by name";
    }
    return code.substr(binding, code.find(')', binding) - binding + 1);
}

void CompileMaterial(MorlCompiler& compiler, const std::string& target)
{
    PassProperty vertex = MakePass(target, 0);
    vertex.nodeNames = {"vertex_static", "transform", "texcoord"};
    ShaderOutput vertexOutput;
    compiler.Compile(vertex, vertexOutput);

    PassProperty fragment = MakePass(target, 1);
    fragment.nodeNames = {"surface_texture", "normal_vertex", "view_vector",
                          "lighting",        "fog",           "surface_out"};
    // The texture coordinates that the vertex pass gave its outputs.
    fragment.semantics = vertexOutput.semantics;
    ShaderOutput fragmentOutput;
    compiler.Compile(fragment, fragmentOutput);

    std::cout << target << ": vertex " << vertexOutput.code.size() << " bytes, "
              << vertexOutput.uniformNames.size() << " uniforms, " << vertexOutput.semantics.size()
              << " semantics; fragment " << fragmentOutput.code.size() << " bytes, "
              << fragmentOutput.uniformNames.size() << " uniforms; textures "
              << RegisterLine(fragmentOutput.code) << '\n';
}

/// Compiles the material in all targets; returns how many errors there were.
int Run(const char* directory)
{
    std::filesystem::current_path(directory);
    const Console console;
    MorlCompiler compiler;
    for (const std::string& target : ns_ruke::MorlTargets()) {
        CompileMaterial(compiler, target);
    }
    return console.Errors();
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: embed DIRECTORY (the one with the folder morl/)\n";
        return EXIT_FAILURE;
    }
    // A node file whose values have wrong types makes the compiler's constructor throw.
    try {
        return Run(argv[1]) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::cerr << "embed: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
