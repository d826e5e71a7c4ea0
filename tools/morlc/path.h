// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace morlc {

/// A path from its text. Texts are UTF-8 everywhere in the tool; the conversions of the standard
/// library take another encoding on some systems.
inline std::filesystem::path ToPath(const std::string& text)
{
    return std::filesystem::u8path(text);
}

/// The text of a path, with "/" between its parts.
inline std::string PathText(const std::filesystem::path& path)
{
    return path.generic_u8string();
}

}  // namespace morlc
