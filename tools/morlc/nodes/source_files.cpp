// SPDX-License-Identifier: MIT
#include "nodes/source_files.h"

#include "json_file.h"
#include "path.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace morlc {
namespace {

namespace fs = std::filesystem;

bool IsSourceName(const std::string& name)
{
    const std::size_t ending = std::strlen(kSourceEnding);
    return name.size() > ending && name.front() != '.' &&
           name.compare(name.size() - ending, ending, kSourceEnding) == 0;
}

}  // namespace

std::string SourceFolder(const std::string& nodeFile)
{
    return nodeFile.substr(0, nodeFile.rfind('.'));
}

std::vector<std::string> ListSources(const std::string& nodeFile)
{
    const fs::path folder = ToPath(SourceFolder(nodeFile));
    std::vector<std::string> paths;
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        return paths;
    }
    for (fs::directory_iterator i(folder, error), end; !error && i != end; i.increment(error)) {
        if (IsSourceName(PathText(i->path().filename()))) {
            paths.push_back(PathText(i->path()));
        }
    }
    if (error) {
        throw std::runtime_error("cannot read " + PathText(folder) +
                                 "/: " + error.default_error_condition().message());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::optional<SourceFile> ReadSourceFile(const std::string& path, const std::string& prefix,
                                         Diagnostics& diagnostics)
{
    if (std::error_code ignored; !fs::is_regular_file(ToPath(path), ignored)) {
        diagnostics.Error("cannot read " + AsGiven(prefix, ToPath(path)) + ": it is not a file");
        return std::nullopt;
    }
    const SourceText text = ReadSource(path, prefix);
    std::vector<ns_ruke::NodeSourceFault> faults;
    SourceFile file = {path, PathText(ToPath(path).stem()),
                       ns_ruke::ReadNodeSource(text.Text(), faults)};
    bool isValid = true;
    for (const ns_ruke::NodeSourceFault& fault : faults) {
        const Place place = text.At(fault.line, fault.column);
        diagnostics.Report(fault.isWarning ? WarningAt(place, fault.text)
                                           : ErrorAt(place, fault.text));
        isValid = isValid && fault.isWarning;
    }
    if (file.source.hasName) {
        file.name = file.source.name;
    }
    return isValid ? std::make_optional(std::move(file)) : std::nullopt;
}

}  // namespace morlc
