// SPDX-License-Identifier: MIT
#include "build/manifest.h"

#include "json_file.h"
#include "output_file.h"
#include "path.h"
#include "text.h"

#include <morl/morl.h>
#include <algorithm>
#include <set>
#include <utility>

namespace morlc {
namespace {

/// How many variants a manifest may have, over all its shaders and targets. More are probably a
/// mistake, and would fill the disk.
constexpr std::size_t kMaxVariants = 1'000'000;

/// How long names may be, in bytes, so that common file systems accept them even with everything
/// that is appended to them.
constexpr std::size_t kMaxFileName = 200;

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Whether a name can be used for files and directories.
bool IsFileName(const std::string& name)
{
    return !name.empty() && name[0] != '-' && name != kIndexName &&
           std::all_of(name.begin(), name.end(),
                       [](char c) { return IsLetter(c) || IsDigit(c) || c == '-'; });
}

bool IsMacroName(const std::string& name)
{
    return !name.empty() && IsLetter(name[0]) &&
           std::all_of(name.begin(), name.end(), [](char c) { return IsLetter(c) || IsDigit(c); });
}

/// Reads the values of one manifest.
class ManifestReader {
public:
    ManifestReader(const std::string& path, const std::string& prefix) : file(path, prefix) {}

    std::vector<ManifestShader> Read()
    {
        const Json::Value& root = file.Root();
        CheckMembers(root, "the manifest", {"$schema", "version", "shaders", "targets"});
        if (root.isMember("version") && root["version"] != kFormVersion) {
            file.Fail(root["version"],
                      "this morlc reads manifests of version " + std::to_string(kFormVersion));
        }
        const std::vector<std::string> targets =
            root.isMember("targets") ? ReadTargets(root["targets"]) : ns_ruke::MorlTargets();
        if (!root["shaders"].isArray()) {
            file.Fail(ValueOrParent(root["shaders"], root),
                      "\"shaders\" must be a list of shaders");
        }
        std::vector<ManifestShader> shaders;
        std::set<std::string> names;
        std::size_t variants = 0;
        for (const Json::Value& entry : root["shaders"]) {
            shaders.push_back(ReadShader(entry, targets));
            const ManifestShader& shader = shaders.back();
            if (!names.insert(shader.name).second) {
                file.Fail(entry["name"], "two shaders are called '" + shader.name + "'");
            }
            variants += shader.variants * shader.targets.size();
            if (variants > kMaxVariants) {
                file.Fail(entry, "with this shader, the manifest has more than " +
                                     std::to_string(kMaxVariants) + " variants");
            }
        }
        return shaders;
    }

private:
    /// A missing value has no location, so its parent stands in for it.
    static const Json::Value& ValueOrParent(const Json::Value& value, const Json::Value& parent)
    {
        return value.isNull() && value.getOffsetLimit() == 0 ? parent : value;
    }

    void CheckMembers(const Json::Value& object, const std::string& what,
                      const std::vector<std::string>& known) const
    {
        if (!object.isObject()) {
            file.Fail(object, what + " must be an object");
        }
        for (auto member = object.begin(); member != object.end(); ++member) {
            if (std::find(known.begin(), known.end(), member.name()) == known.end()) {
                throw DiagnosticError(ErrorAt(file.AtName(*member, member.name()),
                                              DescribeUnknown(member.name(), what, known)));
            }
        }
    }

    static std::string DescribeUnknown(const std::string& name, const std::string& what,
                                       const std::vector<std::string>& known)
    {
        return "unknown member \"" + name + "\" of " + what + Suggestion(known, name);
    }

    int ReadInt(const Json::Value& value, const std::string& what) const
    {
        if (!value.isInt() || value.isBool()) {
            file.Fail(value, what + " must be a 32-bit integer");
        }
        return value.asInt();
    }

    std::vector<std::string> ReadTargets(const Json::Value& value) const
    {
        if (!value.isArray() || value.empty()) {
            file.Fail(value, "\"targets\" must be a list of targets, such as [\"glsl\", \"hlsl\"]");
        }
        const std::vector<std::string> known = ns_ruke::MorlTargets();
        std::set<std::string> named;
        for (const Json::Value& target : value) {
            const std::string name = target.isString() ? target.asString() : "";
            if (std::find(known.begin(), known.end(), name) == known.end()) {
                file.Fail(target, "unknown target '" + name + "'" + Suggestion(known, name));
            }
            named.insert(name);
        }
        std::vector<std::string> targets;
        std::copy_if(known.begin(), known.end(), std::back_inserter(targets),
                     [&](const std::string& name) { return named.count(name) > 0; });
        return targets;
    }

    std::vector<NodeName> ReadNodes(const Json::Value& shader, const char* member) const
    {
        std::vector<NodeName> nodes;
        const Json::Value& value = shader[member];
        if (value.isNull()) {
            return nodes;
        }
        if (!value.isArray()) {
            file.Fail(value, std::string("\"") + member +
                                 "\" must be a list of nodes, such as [\"NODE\", \"NODE\"]");
        }
        for (const Json::Value& node : value) {
            if (!node.isString()) {
                file.Fail(node, "a node must be a string, its name");
            }
            if (ValidUtf8(node.asString()) != node.asString()) {
                file.Fail(node, "the name is not valid UTF-8");
            }
            nodes.push_back({node.asString(), file.At(node)});
        }
        return nodes;
    }

    MacroRange ReadMacro(const std::string& name, const Json::Value& value) const
    {
        if (!IsMacroName(name)) {
            file.Fail(value, "'" + name + "' is not a valid macro name");
        }
        MacroRange range;
        range.name = name;
        range.isAxis = value.isArray();
        if (!range.isAxis) {
            range.values = {ReadInt(value, "the value of " + name)};
            return range;
        }
        std::set<int> seen;
        for (const Json::Value& one : value) {
            range.values.push_back(ReadInt(one, "each value of " + name));
            if (!seen.insert(range.values.back()).second) {
                file.Fail(one, name + " has this value twice");
            }
        }
        if (range.values.empty()) {
            file.Fail(value, name + " has no values");
        }
        return range;
    }

    /// @param places gets the place of each name
    std::map<std::string, int> ReadInts(const Json::Value& value, const std::string& what,
                                        NamePlaces& places) const
    {
        std::map<std::string, int> ints;
        if (!value.isNull() && !value.isObject()) {
            file.Fail(value, what + " must be an object");
        }
        for (auto member = value.begin(); member != value.end(); ++member) {
            ints[member.name()] = ReadInt(*member, "the value of " + member.name());
            places.emplace(member.name(), file.AtName(*member, member.name()));
        }
        return ints;
    }

    void ReadMacros(const Json::Value& entry, ManifestShader& shader) const
    {
        const Json::Value& macros = entry["macros"];
        if (!macros.isNull() && !macros.isObject()) {
            file.Fail(macros, "\"macros\" must be an object");
        }
        for (auto macro = macros.begin(); macro != macros.end(); ++macro) {
            shader.macros.push_back(ReadMacro(macro.name(), *macro));
            shader.macroPlaces.emplace(macro.name(), file.AtName(*macro, macro.name()));
            shader.variants *= shader.macros.back().values.size();
            if (shader.variants > kMaxVariants) {
                file.Fail(macros, "more than " + std::to_string(kMaxVariants) + " combinations");
            }
        }
        const Json::Value& own = entry["targetMacros"];
        if (!own.isNull()) {
            CheckMembers(own, "\"targetMacros\"", ns_ruke::MorlTargets());
        }
        for (auto target = own.begin(); target != own.end(); ++target) {
            shader.targetMacros[target.name()] =
                ReadInts(*target, "\"" + target.name() + "\"", shader.macroPlaces);
            for (const auto& [name, value] : shader.targetMacros[target.name()]) {
                if (!IsMacroName(name)) {
                    file.Fail(*target, "'" + name + "' is not a valid macro name");
                }
            }
        }
        if (shader.VariantName(shader.variants - 1).size() > kMaxFileName) {
            file.Fail(macros, "the variant names are too long for file names");
        }
    }

    ManifestShader ReadShader(const Json::Value& entry,
                              const std::vector<std::string>& targets) const
    {
        CheckMembers(
            entry, "a shader",
            {"name", "vertex", "fragment", "targets", "macros", "targetMacros", "samplers"});
        ManifestShader shader;
        const Json::Value& name = entry["name"];
        shader.name = name.isString() ? name.asString() : "";
        if (!IsFileName(shader.name) || shader.name.size() > kMaxFileName) {
            file.Fail(ValueOrParent(name, entry),
                      "a shader needs a \"name\" of letters, digits, '_' and '-' (not "
                      "\"index\"), because files are named after it");
        }
        shader.place = file.At(name);
        shader.entry = entry;
        shader.targets = entry.isMember("targets") ? ReadTargets(entry["targets"]) : targets;
        shader.vertex = ReadNodes(entry, "vertex");
        shader.fragment = ReadNodes(entry, "fragment");
        if (shader.vertex.empty() && shader.fragment.empty()) {
            file.Fail(entry, "the shader has neither \"vertex\" nor \"fragment\" nodes");
        }
        ReadMacros(entry, shader);
        shader.samplers = ReadInts(entry["samplers"], "\"samplers\"", shader.samplerPlaces);
        return shader;
    }

    JsonFile file;
};

}  // namespace

std::string ManifestShader::VariantName(std::size_t variant) const
{
    std::string text;
    for (auto macro = macros.rbegin(); macro != macros.rend(); ++macro) {
        const std::size_t count = macro->values.size();
        if (macro->isAxis) {
            text.insert(0, text.empty() ? "" : ",");
            text.insert(0, std::to_string(macro->values[variant % count]));
            text.insert(0, macro->name + "=");
        }
        variant /= count;
    }
    return text.empty() ? "default" : text;
}

MacroValues ManifestShader::Macros(std::size_t variant, const std::string& target) const
{
    MacroValues values;
    for (auto macro = macros.rbegin(); macro != macros.rend(); ++macro) {
        const std::size_t count = macro->values.size();
        values[macro->name] = macro->values[variant % count];
        variant /= count;
    }
    const auto own = targetMacros.find(target);
    if (own != targetMacros.end()) {
        for (const auto& [macro, value] : own->second) {
            values[macro] = value;
        }
    }
    return values;
}

Manifest::Manifest(const std::string& newPath, const std::string& prefix)
    : path(AsGiven(prefix, ToPath(newPath))), shaders(ManifestReader(newPath, prefix).Read())
{
    ProtectInput(newPath);
}

void Manifest::CheckNames(const std::vector<std::string>& names) const
{
    std::vector<std::string> known;
    for (const ManifestShader& shader : shaders) {
        known.push_back(shader.name);
    }
    for (const std::string& name : names) {
        if (std::find(known.begin(), known.end(), name) == known.end()) {
            throw DiagnosticError(ErrorAt(
                {path}, "--shader: no shader is called '" + name + "'" + Suggestion(known, name)));
        }
    }
}

}  // namespace morlc
