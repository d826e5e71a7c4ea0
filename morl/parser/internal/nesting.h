// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/limits.h"
#include "morl/core/messages.h"
#include "morl/parser/morl_parser.h"

namespace ns_ruke {

/// Counts one level of nesting for as long as it lives. Every recursive rule of the parser creates
/// one first.
class MorlParser::Nesting {
public:
    Nesting(MorlParser& owner, unsigned units) : parser(owner), cost(units)
    {
        parser.nesting += cost;
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { parser.nesting -= cost; }

    /// Whether the nesting exceeds the bound. If so, reports it and skips the rest of the line.
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
