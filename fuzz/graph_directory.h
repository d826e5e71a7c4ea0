// SPDX-License-Identifier: MIT
#pragma once

#include "oracle.h"

#include <morl/morl.h>
#include <unistd.h>
#include <filesystem>
#include <fstream>
#include <string>

namespace morl_fuzz {

/// A directory of this process with the four node-definition files; entered when it is made,
/// removed when the process ends.
class GraphDirectory {
public:
    GraphDirectory()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "morl-fuzz-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            Fail("no temporary directory");
        }
        path = pattern;
        std::filesystem::current_path(path);
        std::filesystem::create_directory("morl");
        for (const char* file : ns_ruke::kNodeFiles) {
            Write(file, "[]");
        }
    }
    GraphDirectory(const GraphDirectory&) = delete;
    GraphDirectory& operator=(const GraphDirectory&) = delete;
    ~GraphDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    /// @param name as in kNodeFiles.
    void Write(const std::string& name, const std::string& text) const
    {
        std::ofstream file(path / name, std::ios::binary);
        if (!(file << text).flush()) {
            Fail("cannot write a node file");
        }
    }

private:
    std::filesystem::path path;
};

}  // namespace morl_fuzz
