// SPDX-License-Identifier: MIT
#include "morl/linker/loop_values.h"

#include "morl/core/string_helper.h"

#include <algorithm>
#include <set>

namespace ns_ruke {
namespace {

using Position = LoopValues::const_iterator;

/// Substitutes the names of one length that come after `last`. There may be many more of them than
/// `text` has pieces of that length, so the pieces are looked up among the names. A replacement can
/// complete a further name, which counts if its turn is still to come.
void SubstitutePieces(std::string& text, const LoopValues& values, std::size_t length,
                      Position last)
{
    for (;;) {
        std::set<std::string_view> pieces;
        for (std::size_t i = 0; i + length <= text.size(); ++i) {
            pieces.insert(std::string_view(text).substr(i, length));
        }
        Position next = values.end();
        for (auto piece = pieces.upper_bound(last->first);
             piece != pieces.end() && next == values.end(); ++piece) {
            next = values.find(*piece);
        }
        if (next == values.end()) {
            return;
        }
        text = StringHelper::ReplaceAll(text, next->first, next->second);
        last = next;
    }
}

/// Substitutes the names from `first` to `end`, all of one length.
void SubstituteLength(std::string& text, const LoopValues& values, Position first, Position end)
{
    const std::size_t length = first->first.size();
    const std::size_t pieces = text.size() - length + 1;
    Position last = first;
    for (std::size_t tried = 0; first != end; ++first, ++tried) {
        if (tried > pieces) {
            SubstitutePieces(text, values, length, last);
            return;
        }
        if (text.find(first->first) != std::string::npos) {
            text = StringHelper::ReplaceAll(text, first->first, first->second);
        }
        last = first;
    }
}

}  // namespace

std::string SubstituteLoopValues(const LoopValues& values, const std::string& name)
{
    std::string text = name;
    Position first = values.lower_bound(text.size());
    while (first != values.end()) {
        const std::size_t length = first->first.size();
        if (length == 0) {
            break;
        }
        SubstituteLength(text, values, first, values.upper_bound(length));
        first = values.lower_bound(std::min(length - 1, text.size()));
    }
    return text;
}

}  // namespace ns_ruke
