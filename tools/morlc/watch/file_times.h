// SPDX-License-Identifier: MIT
#pragma once

#include "platform.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace morlc {

/// The sizes, times and versions of some files at one moment. They are polled, because that is the
/// same code on all systems, and nothing needs to be kept in step with folders that come and go.
class FileTimes {
public:
    FileTimes() = default;

    /// @param files those that do not exist are left out
    explicit FileTimes(const std::vector<std::string>& files);

    bool operator==(const FileTimes& other) const { return stamps == other.stamps; }
    bool operator!=(const FileTimes& other) const { return !(*this == other); }

    /// The files that are new, gone, or others than before, in byte order.
    std::vector<std::string> ChangedSince(const FileTimes& before) const;

private:
    using Stamp = std::tuple<std::filesystem::file_time_type, std::uintmax_t, FileVersion>;

    std::map<std::string, Stamp> stamps;
};

}  // namespace morlc
