// SPDX-License-Identifier: MIT
#include "morl/core/internal/read_file.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace ns_ruke {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using File = std::unique_ptr<std::FILE, CloseFile>;

File Open(const std::string& path)
{
#ifdef _WIN32
    return File(::_wfopen(std::filesystem::u8path(path).c_str(), L"r"));
#else
    return File(std::fopen(path.c_str(), "r"));
#endif
}

/// Whether reading could wait forever for somebody who writes.
bool IsPipe(const std::string& path)
{
    std::error_code ignored;
    const auto status = std::filesystem::status(std::filesystem::u8path(path), ignored);
    return std::filesystem::is_fifo(status) || std::filesystem::is_socket(status);
}

}  // namespace

std::optional<std::string> ReadFile(const std::string& path)
{
    if (IsPipe(path)) {
        errno = EINVAL;
        return std::nullopt;
    }
    const File file = Open(path);
    if (!file) {
        return std::nullopt;
    }
    std::string text;
    std::array<char, 16384> block{};
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
