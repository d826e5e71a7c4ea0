// SPDX-License-Identifier: MIT
#include "tables.h"

#include <json/json.h>
#include <algorithm>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace morlc {
namespace {

/// The reader's messages span lines ("* Line 1, Column 2\n  Missing ..."); one line is wanted.
std::string OnOneLine(const std::string& message)
{
    std::string line;
    for (const char c : message) {
        const bool blank = c == '\n' || c == ' ';
        if (!blank || (!line.empty() && line.back() != ' ')) {
            line += blank ? ' ' : c;
        }
    }
    while (!line.empty() && line.back() == ' ') {
        line.pop_back();
    }
    return line;
}

Json::Value ReadJson(const std::string& path)
{
    errno = 0;
    std::ifstream file(path);
    if (!file || file.peek() == std::ifstream::traits_type::eof()) {
        const int error = errno;
        throw std::runtime_error(
            "cannot read " + path + ": " +
            (error != 0 ? std::generic_category().message(error) : "the file is empty"));
    }
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    Json::Value root;
    std::string errors;
    if (!Json::parseFromStream(builder, file, &root, &errors)) {
        throw std::runtime_error(path + ": not valid JSON: " + OnOneLine(errors));
    }
    return root;
}

}  // namespace

Semantics ReadSemantics(const std::string& path)
{
    const Json::Value root = ReadJson(path);
    if (!root.isObject()) {
        throw std::runtime_error(path + ": not a JSON object");
    }
    Semantics semantics;
    for (auto entry = root.begin(); entry != root.end(); ++entry) {
        if (!entry->isString()) {
            throw std::runtime_error(path + ": the value of \"" + entry.name() +
                                     "\" is not a string");
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
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "  ";
    return Json::writeString(builder, root) + "\n";
}

}  // namespace morlc
