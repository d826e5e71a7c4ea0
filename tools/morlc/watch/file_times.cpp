// SPDX-License-Identifier: MIT
#include "watch/file_times.h"

#include "path.h"

#include <set>
#include <system_error>

namespace morlc {

FileTimes::FileTimes(const std::vector<std::string>& files)
{
    for (const std::string& file : files) {
        std::error_code error;
        const auto time = std::filesystem::last_write_time(ToPath(file), error);
        const auto size = error ? 0 : std::filesystem::file_size(ToPath(file), error);
        if (!error) {
            stamps.emplace(file, Stamp(time, size, VersionOf(ToPath(file))));
        }
    }
}

std::vector<std::string> FileTimes::ChangedSince(const FileTimes& before) const
{
    std::set<std::string> changed;
    for (const auto& [file, stamp] : stamps) {
        const auto old = before.stamps.find(file);
        if (old == before.stamps.end() || old->second != stamp) {
            changed.insert(file);
        }
    }
    for (const auto& [file, stamp] : before.stamps) {
        if (stamps.count(file) == 0) {
            changed.insert(file);
        }
    }
    return {changed.begin(), changed.end()};
}

}  // namespace morlc
