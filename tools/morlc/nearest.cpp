// SPDX-License-Identifier: MIT
#include "nearest.h"

#include <morl/core/internal/nearest.h>

namespace morlc {

std::string Suggestion(const std::vector<std::string>& names, const std::string& wanted)
{
    const std::string nearest = ns_ruke::NearestName({names.begin(), names.end()}, wanted);
    return nearest.empty() ? "" : " (did you mean '" + nearest + "'?)";
}

}  // namespace morlc
