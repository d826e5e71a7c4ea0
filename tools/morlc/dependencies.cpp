// SPDX-License-Identifier: MIT
#include "dependencies.h"

#include "json_file.h"
#include "output_file.h"
#include "record.h"

#include <filesystem>
#include <string_view>

namespace morlc {
namespace {

namespace fs = std::filesystem;

/// A path in a rule of Make.
std::string EscapeForMake(const std::string& path)
{
    std::string escaped;
    for (const char c : path) {
        if (c == '$') {
            escaped += '$';
        } else if (c == ' ' || c == '#' || c == '\\') {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped;
}

std::string EscapeForNinja(const std::string& text, std::string_view special)
{
    std::string escaped;
    for (const char c : text) {
        if (special.find(c) != std::string_view::npos) {
            escaped += '$';
        }
        escaped += c;
    }
    return escaped;
}

/// A text as the value of a variable.
std::string Value(const std::string& text)
{
    return EscapeForNinja(text, "$");
}

std::string Absolute(const fs::path& path)
{
    return fs::absolute(path).lexically_normal().string();
}

/// A path in a list of paths.
std::string Path(const fs::path& path)
{
    return EscapeForNinja(Absolute(path), "$ :");
}

/// A word of a command line of the shell, in a value.
std::string Word(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return Value(quoted + "'");
}

std::string PathWord(const fs::path& path)
{
    return Word(Absolute(path));
}

/// A manifest of this shader alone.
std::string ShaderManifest(const ManifestShader& shader)
{
    Json::Value entry = shader.entry;
    entry["targets"] = Json::Value(Json::arrayValue);
    for (const std::string& target : shader.targets) {
        entry["targets"].append(target);
    }
    Json::Value root;
    root["shaders"].append(entry);
    return FormatJsonFile(root);
}

/// A tool that was found through the PATH is called so again.
std::string Program(const std::string& program)
{
    return program.find('/') == std::string::npos ? Word(program) : PathWord(program);
}

}  // namespace

std::string FormatDepfile(const std::vector<std::string>& outputs,
                          const std::vector<std::string>& inputs)
{
    std::string rule;
    for (const std::string& output : outputs) {
        rule += (rule.empty() ? "" : " ") + EscapeForMake(output);
    }
    rule += ":";
    for (const std::string& input : inputs) {
        rule += " \\\n  " + EscapeForMake(input);
    }
    return rule + "\n";
}

void WriteNinjaFile(const std::string& program, const BuildOptions& options,
                    const Manifest& manifest)
{
    const fs::path output = options.output;
    std::string inputs;
    std::string edges;
    std::string records;
    for (const ManifestShader& shader : manifest.shaders) {
        const fs::path part = output / (shader.name + ".manifest.json");
        WriteIfChanged(part.string(), ShaderManifest(shader));
        const std::string record = Path(RecordPath(output, shader.name));
        inputs += " " + Path(part);
        records += " " + record;
        edges +=
            "build " + record + ": shader " + Path(part) + "\n  shader = " + shader.name + "\n";
    }
    const std::string ninja = Path(options.ninjaFile);
    const std::string index = Path(IndexPath(output));
    // The process has entered the directory of the node files.
    const std::string morlc = Program(program) + " build -q -C " + PathWord(".");
    const std::string whole = " " + PathWord(options.manifest) + " -o " + PathWord(output);
    WriteIfChanged(options.ninjaFile,
                   "# Written by \"morlc build --ninja\"; changes are lost.\n"
                   "ninja_required_version = 1.5\n"
                   "builddir = " +
                       Value(Absolute(output)) + "\n\n" +
                       "rule shader\n"
                       "  command = " +
                       morlc + " $in -o " + PathWord(output) +
                       " --shader $shader --depfile $out.d\n"
                       "  description = shader $shader\n"
                       "  depfile = $out.d\n"
                       "  deps = gcc\n"
                       "  restat = 1\n\n"
                       "rule index\n"
                       "  command = " +
                       morlc + whole +
                       " --index\n"
                       "  description = index\n"
                       "  restat = 1\n\n"
                       "rule manifest\n"
                       "  command = " +
                       morlc + whole + " --ninja " + PathWord(options.ninjaFile) +
                       "\n"
                       "  description = manifest\n"
                       "  generator = 1\n"
                       "  restat = 1\n\n"
                       "build " +
                       ninja + " |" + inputs + ": manifest " + Path(options.manifest) + "\n\n" +
                       edges +
                       "\n"
                       "build " +
                       index + ": index" + records + " | " + ninja +
                       "\n"
                       "default " +
                       index + "\n");
}

}  // namespace morlc
