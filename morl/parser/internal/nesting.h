// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/limits.h"
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

    /// Whether the nesting exceeds the bound. If so, reports and skips what nests too deeply.
    /// @param open how many blocks of it have been opened already
    bool ReportTooDeep(int open = 0)
    {
        // A block without room for a condition is of no use.
        const unsigned room = cost == kBlockNesting ? 1 : 0;
        if (parser.nesting + room <= kMaxNesting) {
            return false;
        }
        parser.SkipTooDeep(open);
        return true;
    }

private:
    MorlParser& parser;
    unsigned cost;
};

}  // namespace ns_ruke
