// SPDX-License-Identifier: MIT
#include "build/dependencies.h"

#include "build/record.h"
#include "json_file.h"
#include "output_file.h"
#include "path.h"
#include "platform.h"

#include <filesystem>
#include <map>
#include <stdexcept>
#include <string_view>

namespace morlc {
namespace {

namespace fs = std::filesystem;

/// Refuses a path with characters that Make or Ninja cannot express.
void CheckPath(const std::string& path)
{
    const std::size_t found = path.find_first_of("\n\r\t*?|;'\"`=");
    if (found != std::string::npos) {
        throw std::runtime_error("the path " + path + " has a character ('" + path[found] +
                                 "') that Make or Ninja cannot read");
    }
}

/// A path in a rule of Make.
std::string EscapeForMake(const std::string& path)
{
    CheckPath(path);
    std::string escaped;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char c = path[i];
        const bool isSpecial = c == ' ' || c == '#' || c == ':' || c == '%';
        const bool isBefore = i + 1 < path.size() && (path[i + 1] == ' ' || path[i + 1] == '#');
        if (isSpecial || (c == '\\' && isBefore)) {
            escaped += '\\';
        }
        escaped += c == '$' ? "$$" : std::string(1, c);
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
    std::string absolute = PathText(fs::absolute(path).lexically_normal());
    CheckPath(absolute);
    return absolute;
}

/// A path in a list of paths.
std::string Path(const fs::path& path)
{
    return EscapeForNinja(Absolute(path), "$ :");
}

/// A quoted word of a command, in a value.
std::string Word(const std::string& text)
{
    return Value(QuoteWord(text));
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

/// Names between "@" signs are replaced by their values.
constexpr const char* kNinjaFile = R"(# Written by "morlc build --ninja"; changes are lost.
ninja_required_version = 1.5
builddir = @OUTPUT@

rule shader
  command = @LAUNCHER@@MORLC@ $in @INTO@ --no-index --depfile $out.d@CHECK@
  description = shader $shader
  depfile = $out.d
  deps = gcc
  restat = 1

rule index
  command = @MORLC@ @MANIFEST_WORD@ @INTO@ --index
  description = index
  restat = 1

rule manifest
  command = @MORLC@ @MANIFEST_WORD@ @INTO@ --ninja @NINJA_WORD@@LAUNCHER_WORD@
  description = manifest
  generator = 1
  restat = 1

build @NINJA@ |@PARTS@: manifest @MANIFEST@

@EDGES@
build @INDEX@: index@RECORDS@ | @NINJA@
default @INDEX@
)";

/// The commands before and after a compilation that a launcher starts. Some launchers report
/// success even if they lose the machine that they run on. So this deletes the compilation's
/// dependency list first, and then checks that the compilation has written a new one. In
/// parentheses, so that the launcher may say "exec". Listing the directory makes a network file
/// system look again.
constexpr const char* kBeforeLauncher = "rm -f $out.d && (";
constexpr const char* kBehindLauncher =
    "; test -f $out.d || { echo 'shader $shader was not built, although its launcher reported no"
    " error' >&2; exit 1; }; }";

std::string Filled(const std::string& form, const std::map<std::string, std::string>& values)
{
    std::string filled;
    std::size_t end = 0;
    for (std::size_t start = form.find('@'); start != std::string::npos;
         start = form.find('@', end)) {
        filled.append(form, end, start - end);
        end = form.find('@', start + 1) + 1;
        filled += values.at(form.substr(start + 1, end - start - 2));
    }
    return filled.append(form, end);
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
    const fs::path output = ToPath(options.output);
    const fs::path ninjaFile = ToPath(options.ninjaFile);
    const fs::path manifestFile = ToPath(options.manifest);
    const std::string& launcher = options.launcher;
    if (!launcher.empty() && !HasShell()) {
        throw std::runtime_error(
            "a launcher needs a POSIX shell, and Ninja has none on this system");
    }
    std::string parts;
    std::string edges;
    std::string records;
    for (const ManifestShader& shader : manifest.shaders) {
        const fs::path partPath = output / ToPath(shader.name + ".manifest.json");
        WriteIfChanged(PathText(partPath), {ShaderManifest(shader)});
        const std::string part = " " + Path(partPath);
        const std::string record = " " + Path(RecordPath(output, shader.name));
        parts += part;
        records += record;
        edges.append("build").append(record).append(": shader").append(part).append(" | ");
        edges.append(Path(ToPath(program)))
            .append("\n  shader = ")
            .append(shader.name)
            .append("\n");
    }
    const std::map<std::string, std::string> values = {
        {"OUTPUT", Value(Absolute(output))},
        // The process has entered the directory of the node files.
        {"MORLC", PathWord(ToPath(program)) + " build -q -C " + PathWord(".")},
        {"LAUNCHER", launcher.empty() ? "" : kBeforeLauncher + Value(launcher) + " "},
        {"CHECK",
         launcher.empty() ? "" : ") && { ls " + PathWord(output) + " >/dev/null" + kBehindLauncher},
        {"LAUNCHER_WORD", launcher.empty() ? "" : " --launcher " + Word(launcher)},
        {"INTO", "-o " + PathWord(output)},
        {"MANIFEST_WORD", PathWord(manifestFile)},
        {"NINJA_WORD", PathWord(ninjaFile)},
        {"NINJA", Path(ninjaFile)},
        {"MANIFEST", Path(manifestFile)},
        {"INDEX", Path(IndexPath(output))},
        {"PARTS", parts},
        {"RECORDS", records},
        {"EDGES", edges},
    };
    WriteIfChanged(options.ninjaFile, {Filled(kNinjaFile, values)});
}

}  // namespace morlc
