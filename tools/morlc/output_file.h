// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace morlc {

/// Names a file that this process reads, so that it refuses to write it from here on: a slip in an
/// output path must not cost a source.
void ProtectInput(const std::string& path);

/// Makes a directory and those above it, as far as they are missing.
/// @throws std::runtime_error, with a message that names it, if that is impossible.
void MakeDirectories(const std::string& path);

/// The reader of standard output has gone, which is its own affair and needs no message.
class ClosedPipe : public std::runtime_error {
public:
    ClosedPipe() : std::runtime_error("standard output is closed") {}
};

/// Writes a file whole or not at all: a regular file appears under its name only when it is
/// complete, and the old file stays until then. "-" is standard output.
/// @throws std::runtime_error, with a text that names the file, when it cannot be written;
///         ClosedPipe
void WriteWhole(const std::string& path, const std::string& text);

/// Writes a file like WriteWhole, unless there is something of its name.
/// @return whether it was written
[[nodiscard]] bool WriteNew(const std::string& path, const std::string& text);

/// Writes a file like WriteWhole, unless another program has changed or removed it meanwhile.
/// @param old what was read from it
/// @return whether it was written
[[nodiscard]] bool WriteOver(const std::string& path, const std::string& old,
                             const std::string& text);

/// Removes a file, unless another program has changed it meanwhile.
/// @param old what was read from it
/// @return whether it was removed; if not, `errno` says why, and is 0 if it was changed
[[nodiscard]] bool RemoveKnown(const std::string& path, const std::string& old);

/// Fails, with a text that names the file, if somebody has made it read-only.
/// @throws std::runtime_error
void RefuseReadOnly(const std::string& path);

/// Removes the temporary files that killed commands have left in a folder.
void RemoveLeftovers(const std::string& folder);

/// Writes a file like WriteWhole, unless it already holds this text; then it keeps its time stamp.
/// Creates missing directories.
/// @param parts the text
/// @param root the folder of all outputs, if the file is one of them. Symbolic links below it are
///        not followed: a link in place of the file is replaced, one in place of a folder refused.
/// @return whether it was written.
bool WriteIfChanged(const std::string& path, const std::vector<std::string>& parts,
                    const std::filesystem::path& root = {});

/// Whether a folder between `root` and a file below it is a symbolic link.
/// @param link gets the first one
bool HasLinkedFolder(const std::filesystem::path& root, const std::filesystem::path& file,
                     std::filesystem::path& link);

}  // namespace morlc
