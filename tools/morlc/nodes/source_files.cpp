// SPDX-License-Identifier: MIT
#include "nodes/source_files.h"

#include "json_file.h"
#include "nodes/node_file_slips.h"
#include "path.h"
#include "text.h"

#include <morl/compiler/node_files.h>
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <map>
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

/// Whether somebody may take a file for a source: another node file's ending, the one that Windows'
/// editor adds, or capital letters. Copies that editors and git leave are none.
bool IsMeantAsSource(const std::string& name)
{
    const std::string folded = Folded(name);
    const std::string ending = PathText(ToPath(folded).extension());
    return name.front() != '.' &&
           (ending == ".morl" || ending == kSourceEnding ||
            (ending == ".txt" && IsSourceName(PathText(ToPath(folded).stem()))));
}

/// Whether a name means a device on Windows, with or without an ending.
bool IsReservedOnWindows(const std::string& stem)
{
    const std::string name = Folded(stem.substr(0, stem.find('.')));
    const bool isPort = name.size() == 4 && name[3] >= '0' && name[3] <= '9' &&
                        (name.compare(0, 3, "com") == 0 || name.compare(0, 3, "lpt") == 0);
    return isPort || name == "con" || name == "prn" || name == "aux" || name == "nul";
}

}  // namespace

std::string SourceFolder(const std::string& nodeFile)
{
    return nodeFile.substr(0, nodeFile.rfind('.'));
}

bool HasSourceFolder()
{
    return std::any_of(
        std::begin(ns_ruke::kNodeFiles), std::end(ns_ruke::kNodeFiles),
        [](const char* nodeFile) { return fs::is_directory(ToPath(SourceFolder(nodeFile))); });
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

void WarnOfStraySources(const std::string& prefix, Diagnostics& diagnostics)
{
    std::vector<std::string> folders;
    for (const char* nodeFile : ns_ruke::kNodeFiles) {
        folders.push_back(SourceFolder(nodeFile));
    }
    std::map<std::string, fs::path> strays;  // the first source of each folder
    std::error_code error;
    for (fs::recursive_directory_iterator i("morl", error), end; !error && i != end;
         i.increment(error)) {
        const std::string name = PathText(i->path().filename());
        const std::string folder = PathText(i->path().parent_path());
        const bool isRead = std::find(folders.begin(), folders.end(), folder) != folders.end();
        const bool isSource = IsSourceName(name);
        if (isRead && !isSource && IsMeantAsSource(name)) {
            const std::string text = "this is not read: the name of a source ends in '.morlsource'";
            diagnostics.Report(WarningAt({AsGiven(prefix, i->path())}, text));
        }
        if (!isRead && isSource) {
            strays.emplace(folder, i->path());
        }
    }
    for (const auto& [folder, source] : strays) {
        const std::string text =
            "no node file has the name of this folder, so the sources in it are not read" +
            Suggestion(folders, folder);
        diagnostics.Report(WarningAt({AsGiven(prefix, source)}, text));
    }
}

std::optional<SourceFile> ReadSourceFile(const std::string& path, const std::string& prefix,
                                         Diagnostics& diagnostics)
{
    if (std::error_code ignored; !fs::is_regular_file(ToPath(path), ignored)) {
        diagnostics.Error("cannot read " + AsGiven(prefix, ToPath(path)) + ": it is not a file");
        return std::nullopt;
    }
    SourceText text = ReadSource(path, prefix);
    WarnOfBytes(text, diagnostics);
    std::vector<ns_ruke::NodeSourceFault> faults;
    ns_ruke::NodeSource source = ns_ruke::ReadNodeSource(text.Text(), faults);
    bool isValid = true;
    for (const ns_ruke::NodeSourceFault& fault : faults) {
        const Place place = text.At(fault.line, fault.column);
        diagnostics.Report(fault.isWarning ? WarningAt(place, fault.text)
                                           : ErrorAt(place, fault.text));
        isValid = isValid && fault.isWarning;
    }
    if (!isValid) {
        return std::nullopt;
    }
    const std::string name = source.hasName ? source.name : PathText(ToPath(path).stem());
    return SourceFile{path, std::move(text), name, std::move(source)};
}

bool IsFileName(const std::string& stem)
{
    constexpr std::size_t kLongest = 200;
    const auto isRefused = [](char c) {
        return static_cast<unsigned char>(c) < 0x20U || c == 0x7f ||
               std::strchr("<>:\"/\\|?*", c) != nullptr;
    };
    return !stem.empty() && stem.size() <= kLongest && stem.front() != '.' && stem.front() != ' ' &&
           stem.back() != '.' && stem.back() != ' ' && ValidUtf8(stem) == stem &&
           std::none_of(stem.begin(), stem.end(), isRefused) && !IsReservedOnWindows(stem);
}

std::string SafeStem(const std::string& name)
{
    constexpr std::size_t kLongest = 40;
    std::string stem;
    for (const char c : name.substr(0, kLongest)) {
        const bool isKept =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
        stem += isKept ? c : '_';
    }
    return "node_" + stem + "_" + Fingerprint(name);
}

std::string Folded(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

}  // namespace morlc
