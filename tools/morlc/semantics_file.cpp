// SPDX-License-Identifier: MIT
#include "semantics_file.h"

#include "json_file.h"

namespace morlc {

Semantics ReadSemantics(const std::string& path)
{
    const JsonFile file(path);
    const Json::Value& root = file.Root();
    if (!root.isObject()) {
        file.Fail(root, "not a JSON object");
    }
    Semantics semantics;
    for (auto entry = root.begin(); entry != root.end(); ++entry) {
        if (!entry->isString()) {
            file.Fail(*entry, "the value of \"" + entry.name() + "\" is not a string");
        }
        semantics[entry.name()] = entry->asString();
    }
    return semantics;
}

std::string FormatSemantics(const Semantics& semantics)
{
    Json::Value root(Json::objectValue);
    for (const auto& [name, semantic] : semantics) {
        root[name] = semantic;
    }
    return FormatJsonFile(root);
}

}  // namespace morlc
