// SPDX-License-Identifier: MIT
#include "output_file.h"

#include "path.h"
#include "platform.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <set>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace morlc {
namespace {

[[noreturn]] void Fail(const std::string& name, int error)
{
    throw std::runtime_error("cannot write " + name + ": " +
                             std::generic_category().message(error));
}

/// The files that must not be written.
std::set<std::filesystem::path>& Inputs()
{
    static std::set<std::filesystem::path> inputs;
    return inputs;
}

void RefuseInput(const std::string& path)
{
    for (const std::filesystem::path& input : Inputs()) {
        std::error_code ignored;
        if (std::filesystem::equivalent(ToPath(path), input, ignored)) {
            throw std::runtime_error("cannot write " + path +
                                     ": this command reads it; choose another output");
        }
    }
}

/// A text in parts.
using Parts = std::vector<std::string>;

/// Writes a text and flushes the stream, without closing it. Returns whether all was written.
bool Put(std::FILE* stream, const Parts& parts)
{
    const bool complete =
        std::all_of(parts.begin(), parts.end(), [stream](const std::string& part) {
            return std::fwrite(part.data(), 1, part.size(), stream) == part.size();
        });
    return complete && std::fflush(stream) == 0;
}

/// Devices and pipes cannot be replaced, only written to.
void WriteInPlace(const std::string& path, const Parts& parts)
{
    std::FILE* const file = OpenToWrite(path);
    if (file == nullptr) {
        Fail(path, errno);
    }
    const bool complete = Put(file, parts);
    const int error = errno;
    std::fclose(file);
    if (!complete) {
        Fail(path, error);
    }
}

/// A new file next to the one to be replaced. It is deleted with this object unless it was renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::filesystem::path& target) : file(MakeFileBeside(target)) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        if (file.stream != nullptr) {
            std::fclose(file.stream);
        }
        if (isMade && !isRenamed) {
            std::error_code ignored;
            std::filesystem::remove(file.path, ignored);
        }
    }

    /// Writes the text and closes the file. Returns whether this succeeded; if not, `errno` says
    /// why.
    bool Write(const Parts& parts)
    {
        if (!isMade || !Put(file.stream, parts)) {
            return false;
        }
        const bool isClosed = std::fclose(file.stream) == 0;
        file.stream = nullptr;
        return isClosed;
    }

    /// Writes the text and renames the file to its target, as `rename` does. Returns whether this
    /// succeeded; if not, `errno` says why.
    bool Commit(const Parts& parts, const std::filesystem::path& target,
                decltype(&RenameOver) rename = RenameOver)
    {
        return Write(parts) && RenameTo(target, rename);
    }

    bool RenameTo(const std::filesystem::path& target, decltype(&RenameOver) rename)
    {
        isRenamed = rename(file.path, target);
        return isRenamed;
    }

    const std::filesystem::path& Path() const { return file.path; }

private:
    NewFile file;
    const bool isMade = file.stream != nullptr;
    bool isRenamed = false;
};

/// Whether a regular file has exactly this text.
bool Holds(const std::filesystem::path& path, const Parts& parts)
{
    std::error_code ignored;
    const std::size_t size =
        std::accumulate(parts.begin(), parts.end(), std::size_t{0},
                        [](std::size_t sum, const std::string& part) { return sum + part.size(); });
    if (!std::filesystem::is_regular_file(path, ignored) ||
        std::filesystem::file_size(path, ignored) != size) {
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    std::string old;
    return std::all_of(parts.begin(), parts.end(), [&](const std::string& part) {
        old.resize(part.size());
        return file.read(old.data(), static_cast<std::streamsize>(old.size())) && old == part;
    });
}

/// The file that a link leads to; the file itself if it is none.
std::filesystem::path LinkTarget(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path real = std::filesystem::weakly_canonical(ToPath(path), error);
    return error ? ToPath(path) : real;
}

/// @param followsLink whether a link stays a link, and what it points to is replaced
void WriteParts(const std::string& path, const Parts& parts, bool followsLink)
{
    if (path == "-") {
        if (!Put(stdout, parts)) {
            if (errno == EPIPE) {
                throw ClosedPipe();
            }
            Fail("standard output", errno);
        }
        return;
    }
    RefuseInput(path);
    std::error_code ignored;
    const auto status = followsLink ? std::filesystem::status(ToPath(path), ignored)
                                    : std::filesystem::symlink_status(ToPath(path), ignored);
    const bool isLink = std::filesystem::is_symlink(status);
    if (std::filesystem::is_directory(status)) {
        Fail(path, EISDIR);
    }
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) && !isLink) {
        WriteInPlace(path, parts);
        return;
    }
    RefuseReadOnly(path);
    const std::filesystem::path target = followsLink ? LinkTarget(path) : ToPath(path);
    TemporaryFile temporary(target);
    if (!temporary.Commit(parts, target)) {
        Fail(path, errno);
    }
}

}  // namespace

void ProtectInput(const std::string& path)
{
    Inputs().insert(ToPath(path));
}

void MakeDirectories(const std::string& path)
{
    std::error_code error;
    std::filesystem::create_directories(ToPath(path), error);
    if (error) {
        throw std::runtime_error("cannot make the directory " + path + ": " +
                                 error.default_error_condition().message());
    }
}

void RemoveLeftovers(const std::string& folder)
{
    std::error_code error;
    std::vector<std::filesystem::path> leftovers;
    for (std::filesystem::directory_iterator i(ToPath(folder), error), end; !error && i != end;
         i.increment(error)) {
        const std::string name = PathText(i->path().filename());
        const std::size_t start = std::strlen(kTemporaryStart);
        const std::string rest = name.substr(std::min(start, name.size()));
        const bool isTemporary =
            name.rfind(kTemporaryStart, 0) == 0 &&
            (rest.size() == 6 || rest.find_first_not_of("0123456789-") == std::string::npos);
        if (isTemporary && i->is_regular_file(error)) {
            leftovers.push_back(i->path());
        }
    }
    for (const std::filesystem::path& leftover : leftovers) {
        std::filesystem::remove(leftover, error);
    }
}

void WriteWhole(const std::string& path, const std::string& text)
{
    WriteParts(path, {text}, true);
}

bool WriteNew(const std::string& path, const std::string& text)
{
    const std::filesystem::path target = ToPath(path);
    TemporaryFile temporary(target);
    const bool isDone = temporary.Commit({text}, target, RenameToNew);
    if (!isDone && errno != EEXIST) {
        Fail(path, errno);
    }
    return isDone;
}

bool WriteOver(const std::string& path, const std::string& old, const std::string& text)
{
    RefuseReadOnly(path);
    const std::filesystem::path target = LinkTarget(path);
    TemporaryFile temporary(target);
    if (!temporary.Write({text})) {
        Fail(path, errno);
    }
    // What is there is looked at when no program can save to it any more.
    if (!Exchange(temporary.Path(), target)) {
        if (!Holds(target, {old})) {
            return false;
        }
        if (!temporary.RenameTo(target, RenameOver)) {
            Fail(path, errno);
        }
        return true;
    }
    if (Holds(temporary.Path(), {old})) {
        return true;
    }
    const bool isBack = Exchange(temporary.Path(), target);
    if (!isBack || !Holds(temporary.Path(), {text})) {
        // Saved once more meanwhile: the newer one is the one to keep.
        temporary.RenameTo(target, RenameOver);
    }
    return false;
}

bool RemoveKnown(const std::string& path, const std::string& old)
{
    const std::filesystem::path file = ToPath(path);
    TemporaryFile aside(file);
    if (!aside.Write({}) || !RenameOver(file, aside.Path())) {
        errno = errno == ENOENT ? 0 : errno;
        return false;
    }
    if (Holds(aside.Path(), {old})) {
        return true;
    }
    // A newer file that has its name again is the one to keep.
    if (!aside.RenameTo(file, RenameToNew) && errno != EEXIST) {
        aside.RenameTo(file, RenameOver);
    }
    errno = 0;
    return false;
}

void RefuseReadOnly(const std::string& path)
{
    using std::filesystem::perms;
    std::error_code ignored;
    const auto status = std::filesystem::status(ToPath(path), ignored);
    const perms writers = perms::owner_write | perms::group_write | perms::others_write;
    if (std::filesystem::is_regular_file(status) &&
        (status.permissions() & writers) == perms::none) {
        throw std::runtime_error("cannot write " + path +
                                 ": it is read-only; make it writable, if that is meant");
    }
}

bool WriteIfChanged(const std::string& path, const Parts& parts, const std::filesystem::path& root)
{
    std::filesystem::path link;
    if (!root.empty() && HasLinkedFolder(root, ToPath(path), link)) {
        throw std::runtime_error("cannot write " + path + ": " + PathText(link) +
                                 " is a symbolic link; remove it, or name its target as output");
    }
    std::error_code ignored;
    const bool isLink = std::filesystem::is_symlink(ToPath(path), ignored);
    if (!(isLink && !root.empty()) && Holds(ToPath(path), parts)) {
        return false;
    }
    const std::filesystem::path parent = ToPath(path).parent_path();
    if (!parent.empty()) {
        MakeDirectories(PathText(parent));
    }
    WriteParts(path, parts, root.empty());
    return true;
}

bool HasLinkedFolder(const std::filesystem::path& root, const std::filesystem::path& file,
                     std::filesystem::path& link)
{
    std::filesystem::path folder = root;
    for (const std::filesystem::path& part : file.lexically_relative(root).parent_path()) {
        folder /= part;
        std::error_code ignored;
        if (std::filesystem::is_symlink(folder, ignored)) {
            link = folder;
            return true;
        }
    }
    return false;
}

}  // namespace morlc
