// SPDX-License-Identifier: MIT
#include "morl/check/author_faults.h"

#include "morl/ast/program.h"
#include "morl/core/internal/fault_collector.h"
#include "morl/core/messages.h"
#include "morl/core/text_lines.h"
#include "morl/parser/morl_parser.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

namespace ns_ruke {
namespace {

/// Each attempt costs a parse, and nobody mends more at once. A large source gets fewer.
constexpr std::size_t kMostAttempts = 20;
constexpr std::size_t kMostParsedBytes = std::size_t{1} << 20U;

/// A part that may be missing where a message stands.
struct MissingPart {
    std::string_view part;  ///< empty: nothing that could be put in
    std::size_t wordAfter =
        0;  ///< the bytes of the word behind it, if the message stands behind that
};

MissingPart MissingPartOf(std::string_view message)
{
    constexpr std::string_view kDeclarationEnd = messages::kInvalidEndOfLine;
    constexpr std::string_view kStart = messages::kMiss;
    constexpr std::string_view kEnd = messages::kMissEnd;
    if (message.substr(0, kDeclarationEnd.size()) == kDeclarationEnd) {
        return {";", message.size() - kDeclarationEnd.size()};
    }
    const bool isMiss = message.size() > kStart.size() + kEnd.size() &&
                        message.substr(0, kStart.size()) == kStart &&
                        message.substr(message.size() - kEnd.size()) == kEnd;
    return {isMiss ? message.substr(kStart.size(), message.size() - kStart.size() - kEnd.size())
                   : std::string_view()};
}

/// Where the last word before an offset ends; blanks and comments are no words.
std::size_t EndOfWordBefore(std::string_view text, std::size_t offset)
{
    std::size_t end = 0;
    for (std::size_t i = 0; i < std::min(offset, text.size());) {
        const std::string_view two = text.substr(i, 2);
        if (two == "//" || two == "/*") {
            const bool isLine = two == "//";
            const std::size_t close = isLine ? text.find('\n', i) : text.find("*/", i + 2);
            i = close == std::string_view::npos ? text.size() : close + (isLine ? 1 : 2);
            continue;
        }
        const bool isBlank =
            text[i] == ' ' || text[i] == '\t' || text[i] == '\r' || text[i] == '\n';
        ++i;
        end = isBlank ? end : i;
    }
    return end;
}

/// A source in which missing parts are put in, one after another.
class RepairedSource {
public:
    explicit RepairedSource(const std::string& content) : original(content), text(content) {}

    /// Puts a part in behind the word before a fault of this source.
    /// @return the place in the original source
    TextPlace PutIn(const MissingPart& missing, const ReportFault& fault)
    {
        const std::size_t offset = OffsetOf(fault);
        const std::size_t end = EndOfWordBefore(text, offset - std::min(missing.wordAfter, offset));
        const TextPlace place = PlaceOf(end);
        text.insert(end, missing.part);
        insertions.emplace_back(end, missing.part.size());
        return place;
    }

    /// Takes the part out that was put in last.
    void Undo()
    {
        text.erase(insertions.back().first, insertions.back().second);
        insertions.pop_back();
    }

    /// What the parser says of this source. Nothing is logged.
    std::vector<ReportFault> Parse() const
    {
        FaultCollector collector(FaultCollector::Mode::Quiet);
        MorlProgram program;
        MorlParser parser;
        parser.Parse(text, program);
        return std::move(collector.faults);
    }

    /// A fault of this source, with its place in the original one.
    ReportFault Placed(ReportFault fault) const
    {
        if (fault.line > 0) {
            const TextPlace place = PlaceOf(OffsetOf(fault));
            fault.line = place.line;
            fault.column = place.column;
        }
        return fault;
    }

private:
    std::size_t OffsetOf(const ReportFault& fault) const
    {
        const TextLines lines(text);
        const auto line = std::min(static_cast<std::size_t>(fault.line), lines.Starts().size());
        return lines.Starts()[line - 1] + static_cast<std::size_t>(fault.column) - 1;
    }

    /// The place of a byte of this source in the original one.
    TextPlace PlaceOf(std::size_t offset) const
    {
        // The last part was put into a text that had all others.
        for (auto i = insertions.rbegin(); i != insertions.rend(); ++i) {
            offset -= offset > i->first ? std::min(i->second, offset - i->first) : 0;
        }
        return TextLines(original).PlaceOf(std::min(offset, original.size()));
    }

    const std::string& original;
    std::string text;
    std::vector<std::pair<std::size_t, std::size_t>> insertions;  ///< where, and how many bytes
};

}  // namespace

std::vector<ReportFault> AuthorFaults(const std::string& content, std::vector<ReportFault> faults)
{
    std::vector<ReportFault> told;
    RepairedSource source(content);
    std::size_t attempts =
        std::min(kMostAttempts, kMostParsedBytes / std::max(content.size(), std::size_t{1}));
    for (std::size_t i = 0; i < faults.size();) {
        ReportFault fault = source.Placed(faults[i]);
        const MissingPart missing = MissingPartOf(fault.text);
        if (!missing.part.empty() && fault.line > 0 && attempts > 0) {
            --attempts;
            const TextPlace place = source.PutIn(missing, faults[i]);
            std::vector<ReportFault> rest = source.Parse();
            // The part was missing there if there is less to say with it.
            if (rest.size() < faults.size()) {
                fault.line = place.line;
                fault.column = place.column;
                told.push_back(fault);
                faults = std::move(rest);
                continue;
            }
            source.Undo();
        }
        told.push_back(std::move(fault));
        ++i;
    }
    return told;
}

}  // namespace ns_ruke
