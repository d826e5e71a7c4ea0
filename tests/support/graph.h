// SPDX-License-Identifier: MIT
#pragma once

#include <morl/morl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace morl_test {

/// A new directory that is removed with this object.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory();

    std::filesystem::path path;
};

/// Makes a directory the current one for as long as it lives.
class InDirectory {
public:
    explicit InDirectory(const std::filesystem::path& directory);
    InDirectory(const InDirectory&) = delete;
    InDirectory& operator=(const InDirectory&) = delete;
    ~InDirectory();

private:
    std::filesystem::path previous;
};

struct NodeSource {
    std::string name;
    std::string content;
    std::vector<std::string> references;
};

std::string ReadText(const std::filesystem::path& path);
void WriteText(const std::filesystem::path& path, const std::string& text);

/// Writes the four node-definition files below `directory`; the first one holds `text`, the others
/// are empty arrays.
void WriteNodeFiles(const std::filesystem::path& directory, const std::string& text);

/// A compiler whose graph consists of these nodes.
std::unique_ptr<ns_ruke::MorlCompiler> MakeCompiler(const std::vector<NodeSource>& nodes);

/// A compiler with the sample nodes.
std::unique_ptr<ns_ruke::MorlCompiler> MakeSampleCompiler();

ns_ruke::PassProperty MakePass(const std::string& target, int stage,
                               const std::vector<std::string>& nodes);

/// The code of one request to a graph that consists of one node with this source.
std::string CompileSource(const std::string& source, const std::string& target, int stage,
                          const std::unordered_map<std::string, int>& macros = {});

}  // namespace morl_test
