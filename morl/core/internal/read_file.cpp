// SPDX-License-Identifier: MIT
#include "morl/core/internal/read_file.h"

#include <array>
#include <cstdio>
#include <memory>

namespace ns_ruke {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

}  // namespace

std::optional<std::string> ReadFile(const std::string& path)
{
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "r"));
    if (!file) {
        return std::nullopt;
    }
    std::string text;
    std::array<char, 16384> block;
    std::size_t count = 0;
    do {
        count = std::fread(block.data(), 1, block.size(), file.get());
        text.append(block.data(), count);
    } while (count == block.size());
    if (std::ferror(file.get()) != 0) {
        return std::nullopt;
    }
    return text;
}

}  // namespace ns_ruke
