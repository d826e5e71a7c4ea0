// SPDX-License-Identifier: MIT
#include "build/record.h"

#include "json_file.h"
#include "path.h"

namespace morlc {
namespace {

template <class Container>
Json::Value StringArray(const Container& strings)
{
    Json::Value array(Json::arrayValue);
    for (const auto& string : strings) {
        array.append(string);
    }
    return array;
}

template <class Map>
Json::Value Object(const Map& map)
{
    Json::Value object(Json::objectValue);
    for (const auto& [name, value] : map) {
        object[name] = value;
    }
    return object;
}

Json::Value NodeNames(const std::vector<NodeName>& nodes)
{
    Json::Value array(Json::arrayValue);
    for (const NodeName& node : nodes) {
        array.append(node.name);
    }
    return array;
}

/// The names are not copied, because a record may have a hundred thousand variants.
Json::Value Variants(const ShaderRecord& record)
{
    const auto borrowed = [](const std::string& text) { return Json::StaticString(text.c_str()); };
    Json::Value targets(Json::objectValue);
    for (const auto& [target, variants] : record.variants) {
        for (const auto& [name, variant] : variants) {
            Json::Value& files = targets[target][borrowed(name)];
            files = Json::Value(Json::objectValue);
            if (variant.vertex != nullptr) {
                files[Json::StaticString("vertex")] = borrowed(*variant.vertex);
            }
            if (variant.fragment != nullptr) {
                files[Json::StaticString("fragment")] = borrowed(*variant.fragment);
            }
        }
    }
    return targets;
}

Json::Value Texts(const ShaderRecord& record)
{
    Json::Value texts(Json::objectValue);
    for (const auto& [file, text] : record.texts) {
        texts[file] = ParseJson(text.reflection);
        texts[file]["hash"] = text.hash;
    }
    return texts;
}

Json::Value Macros(const ManifestShader& shader)
{
    Json::Value macros(Json::objectValue);
    for (const MacroRange& macro : shader.macros) {
        macros[macro.name] =
            macro.isAxis ? StringArray(macro.values) : Json::Value(macro.values.front());
    }
    return macros;
}

/// Files are read and removed by these names, so none may lead out of the directory.
std::string ReadFileName(const Json::Value& value)
{
    std::string name = value.asString();
    if (name.find("..") != std::string::npos || name.find_first_of("\\:") != std::string::npos ||
        name.compare(0, 1, "/") == 0) {
        Json::throwRuntimeError("not the name of a file of this directory");
    }
    return name;
}

/// The text that a variant names; null if it names none.
const std::string* ReadFile(ShaderRecord& record, const Json::Value& value)
{
    const std::string name = ReadFileName(value);
    return name.empty() ? nullptr : record.File(name);
}

ShaderRecord ReadRecord(const Json::Value& root)
{
    ShaderRecord record;
    const Json::Value& texts = root["texts"];
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        record.texts[ReadFileName(text.name())].hash = (*text)["hash"].asString();
    }
    const Json::Value& targets = root["variants"];
    for (auto target = targets.begin(); target != targets.end(); ++target) {
        for (auto variant = target->begin(); variant != target->end(); ++variant) {
            record.variants[target.name()][variant.name()] = {
                ReadFile(record, (*variant)["vertex"]), ReadFile(record, (*variant)["fragment"])};
        }
    }
    return record;
}

template <class Read>
auto ReadPart(const std::filesystem::path& path, const Read& read)
{
    const JsonFile file(PathText(path));
    try {
        return read(file.Root());
    } catch (const Json::Exception&) {
        file.Fail(file.Root(), "this file was not written by 'morlc build'");
    }
}

}  // namespace

const std::string* ShaderRecord::File(const std::string& name)
{
    return &*files.insert(name).first;
}

Json::Value ShaderRecord::ToJson(const ManifestShader& shader) const
{
    Json::Value root(Json::objectValue);
    root["version"] = kFormVersion;
    root["name"] = shader.name;
    root["nodes"]["vertex"] = NodeNames(shader.vertex);
    root["nodes"]["fragment"] = NodeNames(shader.fragment);
    root["macros"] = Macros(shader);
    root["targetMacros"] = Json::Value(Json::objectValue);
    for (const auto& [target, values] : shader.targetMacros) {
        root["targetMacros"][target] = Object(values);
    }
    root["samplers"] = Object(shader.samplers);
    root["texts"] = Texts(*this);
    root["variants"] = Variants(*this);
    return root;
}

ShaderRecord ShaderRecord::Read(const std::filesystem::path& path)
{
    return ReadPart(path, ReadRecord);
}

std::vector<std::string> ShaderRecord::ReadTextNames(const std::filesystem::path& path)
{
    return ReadPart(path, [](const Json::Value& root) {
        std::vector<std::string> names;
        const Json::Value& object = root["texts"];
        for (auto text = object.begin(); text != object.end(); ++text) {
            names.push_back(ReadFileName(text.name()));
        }
        return names;
    });
}

Json::Value MakeIndex(const std::map<std::string, const ShaderRecord*>& records)
{
    Json::Value root(Json::objectValue);
    root["version"] = kFormVersion;
    Json::Value& shaders = root["shaders"];
    shaders = Json::Value(Json::objectValue);
    Json::Value& hashes = root["hashes"];
    hashes = Json::Value(Json::objectValue);
    for (const auto& [name, record] : records) {
        shaders[name] = Variants(*record);
        for (const auto& [file, text] : record->texts) {
            hashes[file] = text.hash;
        }
    }
    return root;
}

std::filesystem::path RecordPath(const std::filesystem::path& directory, const std::string& shader)
{
    return directory / (shader + ".json");
}

std::filesystem::path IndexPath(const std::filesystem::path& directory)
{
    return RecordPath(directory, kIndexName);
}

}  // namespace morlc
