// SPDX-License-Identifier: MIT
// What operating systems do in different ways. Each has its own source file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morlc {

/// Prepares the process: a closed pipe is a failed write, and standard streams pass bytes
/// unchanged.
/// @return the arguments without the program's name, in UTF-8.
std::vector<std::string> StartProcess(int argc, char** argv);

/// The path of this program; empty if it cannot be found out.
std::string ProgramPath();

/// A text as one word of a command that a build tool starts.
std::string QuoteWord(const std::string& text);

/// Runs a command with the system's shell, and waits for it.
/// @return its exit status; -1 if it did not end by itself
int RunCommand(const std::string& command);

/// Whether build tools start commands with a POSIX shell.
bool HasShell();

/// Whether standard error is a terminal that understands escape sequences for colours.
bool HasColourTerminal();

/// Whether standard error is a terminal.
bool HasTerminal();

/// Runs something on a thread with a stack of this many bytes, and waits for it. What it throws is
/// thrown here.
/// @throws std::runtime_error if there is no such thread.
void RunWithStack(std::size_t bytes, const std::function<void()>& work);

/// Does pieces of work in processes of their own, so that one that crashes, or that takes longer
/// than a minute, costs nothing but its own result. What they write to standard error is lost.
/// (On Windows, the pieces are done by threads.) No other thread may run meanwhile.
/// @param count of the pieces, which are numbered from 0
/// @param processes how many work at the same time, at least 1
/// @param work gives the result of a piece, and throws nothing
/// @param take receives each result, or nothing if there is none; one at a time
void RunApart(std::size_t count, std::size_t processes,
              const std::function<std::string(std::size_t)>& work,
              const std::function<void(std::size_t, std::optional<std::string>)>& take);

/// Opens an existing or new file for writing bytes; null: `errno` says why.
std::FILE* OpenToWrite(const std::string& path);

/// Waits until no other process has locked a folder, and locks it until this one ends. Where the
/// file system knows no locks, nothing happens.
void LockFolder(const std::filesystem::path& folder);

/// How the names of temporary files begin. Only a command that is killed leaves one.
constexpr const char* kTemporaryStart = ".morlc-";

/// An open file; the stream is null when it could not be made, and `errno` says why.
struct NewFile {
    std::FILE* stream = nullptr;
    std::filesystem::path path;
};

/// Makes a new file next to the one that it is to replace, of a name that nobody has. It gets the
/// permissions of that file, or those of any new file if there is none. (On Windows, those of its
/// folder.)
/// @param isPrivate nobody else may read it, whatever is there
NewFile MakeFileBeside(const std::filesystem::path& target, bool isPrivate = false);

/// Renames a file; one of the new name is replaced, without a moment in which there is none.
/// @return whether it was done; if not, `errno` says why.
bool RenameOver(const std::filesystem::path& from, const std::filesystem::path& target);

/// Renames a file, unless there is one of the new name; then `errno` is EEXIST.
/// @return whether it was done; if not, `errno` says why.
bool RenameToNew(const std::filesystem::path& from, const std::filesystem::path& target);

/// Exchanges two files of a folder, without a moment in which one of them is missing where the
/// system can do that.
/// @return whether it was done; if not, `other` is as it was, and on Windows `one` may be gone.
bool Exchange(const std::filesystem::path& one, const std::filesystem::path& other);

/// Which file this is, and when anything of it was changed last, its times included: what the
/// system says, and no program can set.
using FileVersion = std::pair<std::uint64_t, std::int64_t>;

/// The version of a file; zeros if there is no such file.
FileVersion VersionOf(const std::filesystem::path& file);

}  // namespace morlc
