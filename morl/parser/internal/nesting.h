// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/limits.h"
#include "morl/core/messages.h"
#include "morl/parser/morl_parser.h"

namespace ns_ruke {

/// Holds one level of nesting while it lives. Every recursive rule of the parser opens one first.
class MorlParser::Nesting {
public:
    Nesting(MorlParser& owner, unsigned units) : parser(owner), cost(units)
    {
        parser.nesting += cost;
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { parser.nesting -= cost; }

    /// Whether the level is past the bound. If so, this is reported and the rest of the line given
    /// up.
    bool ReportTooDeep()
    {
        if (parser.nesting <= kMaxNesting) {
            return false;
        }
        parser.LogErrorAndSkipLine(messages::kNestingTooDeep);
        return true;
    }

private:
    MorlParser& parser;
    unsigned cost;
};

}  // namespace ns_ruke
