// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/translator/morl_translator.h"

#include <memory>
#include <string>
#include <vector>

namespace ns_ruke {

/// The target languages that can be asked for, in a fixed order.
MORL_API std::vector<std::string> MorlTargets();

/// A new back end for a target, or null if no target has exactly this name.
MORL_API std::unique_ptr<MorlTranslator> MakeTranslator(const std::string& target);

}  // namespace ns_ruke
