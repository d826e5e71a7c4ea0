// SPDX-License-Identifier: MIT
#include "morl/check/author_faults.h"

#include "morl/ast/program.h"
#include "morl/check/hints.h"
#include "morl/core/internal/fault_collector.h"
#include "morl/core/messages.h"
#include "morl/core/text_lines.h"
#include "morl/parser/morl_parser.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ns_ruke {
namespace {

/// Each attempt costs a parse, and nobody mends more at once. A large source gets fewer.
constexpr std::size_t kMostAttempts = 40;
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

/// What to put in place of some bytes.
struct Repair {
    std::size_t offset;
    std::size_t removed;
    std::string added;
};

/// The line of an offset: where it begins, and where it ends.
std::pair<std::size_t, std::size_t> LineAround(std::string_view text, std::size_t offset)
{
    const std::size_t before = offset == 0 ? std::string_view::npos : text.rfind('\n', offset - 1);
    const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
    return {begin, std::min(text.find('\n', offset), text.size())};
}

/// Another word of the language for the first one of the line.
std::optional<Repair> OtherWord(std::string_view text, std::size_t offset)
{
    const auto [begin, end] = LineAround(text, offset);
    const std::string_view line = text.substr(begin, end - begin);
    const std::string meant = MeantFirstWord(line);
    const std::size_t word = line.find_first_not_of(" \t");
    if (meant.empty() || word == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t length = std::min(line.find_first_of(" \t(;[", word), line.size()) - word;
    return Repair{begin + word, length, meant};
}

/// Leaves out a type in parentheses, as C converts, whose end is at the place.
std::optional<Repair> WithoutCast(std::string_view text, std::size_t offset)
{
    const std::size_t open =
        text.substr(0, offset).find_last_not_of("abcdefghijklmnopqrstuvwxyz0123456789");
    const bool isCast = open != std::string_view::npos && text[open] == '(' && offset > open + 1 &&
                        offset < text.size() && text[offset] == ')';
    return isCast ? std::optional<Repair>({open, offset + 1 - open, ""}) : std::nullopt;
}

/// Leaves out bytes that no source has outside of comments, such as typographic signs.
std::optional<Repair> PlainBytes(std::string_view text, std::size_t offset)
{
    const auto isForeign = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    std::size_t begin = std::min(offset, text.size());
    while (begin > 0 && isForeign(text[begin - 1])) {
        --begin;
    }
    std::size_t end = begin;
    while (end < text.size() && isForeign(text[end])) {
        ++end;
    }
    return end > begin ? std::optional<Repair>({begin, end - begin, " "}) : std::nullopt;
}

/// Leaves out the line, with the block that it opens.
std::optional<Repair> WithoutLine(std::string_view text, std::size_t offset)
{
    const auto [begin, lineEnd] = LineAround(text, offset);
    std::size_t end = begin;
    for (int depth = 0; end < text.size() && (end < lineEnd || depth > 0); ++end) {
        depth += text[end] == '{' ? 1 : text[end] == '}' ? -1 : 0;
    }
    // A source must not end in a line break.
    const std::size_t start = end == text.size() && begin > 0 ? begin - 1 : begin;
    return end > start ? std::optional<Repair>({start, end - start, ""}) : std::nullopt;
}

/// Another head for the block that the line opens, so that what is in it stays.
std::optional<Repair> OtherHead(std::string_view text, std::size_t offset)
{
    const auto [begin, end] = LineAround(text, offset);
    const std::string_view line = text.substr(begin, end - begin);
    const std::size_t open = line.find_last_not_of(" \t\r");
    const std::size_t first = line.find_first_not_of(" \t}");
    if (open == std::string_view::npos || line[open] != '{' || first >= open ||
        line[first] == '#') {
        return std::nullopt;
    }
    return Repair{begin + first, open - first, "if (1 == 1) "};
}

/// Leaves out the statement, if there are others on its line.
std::optional<Repair> WithoutStatement(std::string_view text, std::size_t offset)
{
    const auto [lineBegin, lineEnd] = LineAround(text, offset);
    const std::string_view before = text.substr(lineBegin, offset - lineBegin);
    const std::size_t last = before.find_last_of(";{}");
    if (last == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t begin = lineBegin + last + 1;
    const std::size_t next = std::min(text.find_first_of(";{}", offset), lineEnd);
    const std::size_t end = next < lineEnd && text[next] == ';' ? next + 1 : next;
    return Repair{begin, end - begin, ""};
}

/// A source that is repaired in one place after another.
class RepairedSource {
public:
    explicit RepairedSource(const std::string& content) : original(content), text(content) {}

    const std::string& Text() const { return text; }

    void Apply(const Repair& repair)
    {
        done.push_back({repair, text.substr(repair.offset, repair.removed)});
        text.replace(repair.offset, repair.removed, repair.added);
    }

    /// Takes the last repair back.
    void Undo()
    {
        const Done& last = done.back();
        text.replace(last.repair.offset, last.repair.added.size(), last.before);
        done.pop_back();
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

    std::size_t OffsetOf(const ReportFault& fault) const
    {
        const TextLines lines(text);
        const auto line = std::min(static_cast<std::size_t>(fault.line), lines.Starts().size());
        const std::size_t offset =
            lines.Starts()[line - 1] + static_cast<std::size_t>(fault.column) - 1;
        return std::min(offset, text.size());
    }

    /// The place of a byte of this source in the original one.
    TextPlace PlaceOf(std::size_t offset) const
    {
        return TextLines(original).PlaceOf(OriginalOffset(offset));
    }

    std::size_t OriginalOffset(std::size_t offset) const
    {
        // The last repair was made in a text that had all others.
        for (auto i = done.rbegin(); i != done.rend(); ++i) {
            const Repair& repair = i->repair;
            if (offset > repair.offset) {
                const std::size_t into = std::min(repair.added.size(), offset - repair.offset);
                const bool isBehind = offset >= repair.offset + repair.added.size();
                offset = offset - into + (isBehind ? repair.removed : 0);
            }
        }
        return std::min(offset, original.size());
    }

private:
    struct Done {
        Repair repair;
        std::string before;  ///< the bytes that were removed
    };

    const std::string& original;
    std::string text;
    std::vector<Done> done;
};

/// Parses with a repair, and keeps it if there is less to say then.
/// @param faults of the source; replaced if the repair is kept
bool Mends(RepairedSource& source, const std::optional<Repair>& repair,
           std::vector<ReportFault>& faults, std::size_t& attempts)
{
    if (!repair || attempts == 0) {
        return false;
    }
    --attempts;
    source.Apply(*repair);
    std::vector<ReportFault> rest = source.Parse();
    if (rest.size() < faults.size()) {
        faults = std::move(rest);
        return true;
    }
    source.Undo();
    return false;
}

/// Puts a directive in place of a word like one whose block has no end for that reason.
/// @return where the word was in the original source
std::optional<std::size_t> MendDirective(RepairedSource& source, std::vector<ReportFault>& faults,
                                         std::size_t& attempts)
{
    constexpr std::string_view kDirectives[] = {"#if", "#else", "#endif", "#for", "#endfor"};
    const std::string_view text = source.Text();
    for (std::size_t at = text.find('#'); at != std::string_view::npos && !faults.empty();
         at = text.find('#', at + 1)) {
        const std::size_t end = std::min(text.find_first_of(" \t\r\n", at), text.size());
        const std::string_view word = text.substr(at, end - at);
        const bool isFirst = text.substr(0, at).find_last_not_of(" \t") == std::string_view::npos ||
                             text[text.substr(0, at).find_last_not_of(" \t")] == '\n';
        if (!isFirst || std::find(std::begin(kDirectives), std::end(kDirectives), word) !=
                            std::end(kDirectives)) {
            continue;
        }
        const std::size_t original = source.OriginalOffset(at);
        for (const std::string_view directive : {"#endif", "#endfor", "#if", "#else", "#for"}) {
            if (Mends(source, Repair{at, word.size(), std::string(directive)}, faults, attempts)) {
                return original;
            }
        }
        break;
    }
    return std::nullopt;
}

}  // namespace

std::vector<ReportFault> AuthorFaults(const std::string& content, std::vector<ReportFault> faults)
{
    if (faults.size() > 1 && !HintForSource(content).empty()) {
        faults.resize(1);
        return faults;
    }
    std::vector<ReportFault> told;
    RepairedSource source(content);
    std::size_t attempts =
        std::min(kMostAttempts, kMostParsedBytes / std::max(content.size(), std::size_t{1}));
    while (!faults.empty()) {
        ReportFault fault = faults.front();
        const std::optional<std::size_t> directive = MendDirective(source, faults, attempts);
        if (!directive) {
            break;
        }
        const TextPlace place = TextLines(content).PlaceOf(*directive);
        fault.line = place.line;
        fault.column = place.column;
        fault.text =
            messages::kUnexpectedCharacter +
            content.substr(*directive, content.find_first_of(" \t\r\n", *directive) - *directive);
        told.push_back(std::move(fault));
    }
    for (std::size_t i = 0; i < faults.size();) {
        ReportFault fault = source.Placed(faults[i]);
        if (fault.line == 0) {
            told.push_back(std::move(fault));
            ++i;
            continue;
        }
        const std::size_t offset = source.OffsetOf(faults[i]);
        if (Mends(source, WithoutCast(source.Text(), offset), faults, attempts)) {
            told.push_back(std::move(fault));
            continue;
        }
        const MissingPart missing = MissingPartOf(fault.text);
        if (!missing.part.empty()) {
            const std::size_t end =
                EndOfWordBefore(source.Text(), offset - std::min(missing.wordAfter, offset));
            const TextPlace place = source.PlaceOf(end);
            if (Mends(source, Repair{end, 0, std::string(missing.part)}, faults, attempts)) {
                // The part was missing there.
                fault.line = place.line;
                fault.column = place.column;
                told.push_back(std::move(fault));
                continue;
            }
        }
        told.push_back(std::move(fault));
        const bool isMended =
            Mends(source, OtherWord(source.Text(), offset), faults, attempts) ||
            Mends(source, PlainBytes(source.Text(), offset), faults, attempts) ||
            Mends(source, WithoutStatement(source.Text(), offset), faults, attempts) ||
            Mends(source, OtherHead(source.Text(), offset), faults, attempts) ||
            Mends(source, WithoutLine(source.Text(), offset), faults, attempts);
        i += isMended ? 0 : 1;
    }
    return told;
}

}  // namespace ns_ruke
