// SPDX-License-Identifier: MIT
#include "nodes/line_merge.h"

#include "path.h"
#include "platform.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace morlc {
namespace {

/// A temporary file, which goes with this object.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& text = {})
        : file(MakeFileBeside(std::filesystem::temp_directory_path() / "morlc-merge",
                              /*isPrivate=*/true))
    {
        if (file.stream == nullptr) {
            throw std::runtime_error("cannot write a temporary file");
        }
        const bool isWritten = std::fwrite(text.data(), 1, text.size(), file.stream) == text.size();
        if (std::fclose(file.stream) != 0 || !isWritten) {
            Remove();
            throw std::runtime_error("cannot write " + Path());
        }
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() { Remove(); }

    std::string Text() const
    {
        std::ifstream stream(file.path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string Path() const { return PathText(file.path); }
    std::string Word() const { return QuoteWord(Path()); }

private:
    void Remove() const
    {
        std::error_code ignored;
        std::filesystem::remove(file.path, ignored);
    }

    NewFile file;
};

/// Has git merge three texts that end in line breaks.
MergedLines MergeFiles(const std::string& base, const std::string& ours, const std::string& theirs)
{
    constexpr int kMostConflicts = 127;  // beyond it, git has failed
    const ScratchFile baseFile(base);
    const ScratchFile ourFile(ours);
    const ScratchFile theirFile(theirs);
    const ScratchFile result;
    const int status =
        RunCommand("git merge-file -p -L ours -L base -L theirs " + ourFile.Word() + " " +
                   baseFile.Word() + " " + theirFile.Word() + " > " + result.Word());
    const std::string text = result.Text();
    if (status < 0 || status > kMostConflicts || text.empty()) {
        throw std::runtime_error("cannot merge lines: 'git merge-file' failed; is git installed?");
    }
    return {text, status > 0};
}

}  // namespace

MergedLines MergeLines(const std::string& base, const std::string& ours, const std::string& theirs)
{
    if (theirs == base || ours == theirs) {
        return {ours};
    }
    if (ours == base) {
        return {theirs};
    }
    MergedLines merged = MergeFiles(base + "\n", ours + "\n", theirs + "\n");
    merged.text.pop_back();
    return merged;
}

}  // namespace morlc
