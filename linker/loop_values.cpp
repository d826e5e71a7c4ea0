// SPDX-License-Identifier: MIT
#include "morl/linker/loop_values.h"

#include "morl/core/string_helper.h"

#include <algorithm>
#include <set>
#include <utility>

namespace ns_ruke {
namespace {

using Position = LoopValues::const_iterator;

/// Up to this many names are tried one by one.
constexpr std::size_t kFewValues = 8;

/// One substitution: the text as it is so far, and what it has cost.
class Substitution {
public:
    Substitution(const LoopValues& valuesInForce, const std::string& name)
        : values(valuesInForce), text(name)
    {
    }

    void Run()
    {
        if (values.size() <= kFewValues) {
            for (Position value = values.begin(); value != values.end(); ++value) {
                Try(value);
            }
            return;
        }
        Position first = values.lower_bound(text.size());
        while (first != values.end()) {
            const std::size_t length = first->first.size();
            if (length == 0) {
                break;
            }
            SubstituteLength(first, values.upper_bound(length));
            first = values.lower_bound(std::min(length - 1, text.size()));
            ++work;
        }
    }

    std::string& Text() { return text; }
    std::size_t Work() const { return work; }

private:
    /// Substitutes the names from `first` to `end`, all of one length. When they are more than the
    /// pieces of that length in the text, the pieces are looked up among the names instead.
    void SubstituteLength(Position first, Position end)
    {
        const std::size_t length = first->first.size();
        const std::size_t pieces = text.size() - length + 1;
        Position last = first;
        for (std::size_t tried = 0; first != end; ++first, ++tried) {
            if (tried > pieces) {
                SubstitutePieces(length, last);
                return;
            }
            Try(first);
            last = first;
        }
    }

    /// Substitutes the names of one length that come after `last`. A replacement can complete a
    /// further name, which counts if its turn is still to come.
    void SubstitutePieces(std::size_t length, Position last)
    {
        for (;;) {
            std::set<std::string_view> pieces;
            for (std::size_t i = 0; i + length <= text.size(); ++i) {
                pieces.insert(std::string_view(text).substr(i, length));
            }
            work += 16 * pieces.size();
            Position next = values.end();
            for (auto piece = pieces.upper_bound(last->first);
                 piece != pieces.end() && next == values.end(); ++piece) {
                next = values.find(*piece);
            }
            if (next == values.end()) {
                return;
            }
            Replace(next);
            last = next;
        }
    }

    void Try(Position value)
    {
        work += 1 + text.size() / 16;
        if (text.find(value->first) != std::string::npos) {
            Replace(value);
        }
    }

    void Replace(Position value)
    {
        text = StringHelper::ReplaceAll(text, value->first, value->second);
        work += 16 + text.size();
    }

    const LoopValues& values;
    std::string text;
    std::size_t work = 1;
};

}  // namespace

std::string SubstituteLoopValues(const LoopValues& values, const std::string& name,
                                 std::size_t& work)
{
    Substitution substitution(values, name);
    substitution.Run();
    work += substitution.Work();
    return std::move(substitution.Text());
}

}  // namespace ns_ruke
