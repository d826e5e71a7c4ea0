// SPDX-License-Identifier: MIT
#include "morl/check/hints.h"

#include "morl/check/internal/hint_words.h"
#include "morl/core/messages.h"
#include "morl/core/nearest.h"
#include "morl/parser/keyword_map.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <vector>

namespace ns_ruke {
namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// A character or an operator that the language lacks, and what to write instead.
struct SymbolHint {
    std::string_view symbol;
    std::string_view hint;
};

constexpr SymbolHint kSymbolHints[] = {
    {"\xEF\xBB\xBF", "an invisible byte order mark stands here: remove it"},
    {"\xC2\xA0", "a blank of this line is a non-breaking one: write a plain one"},
    {"\xE2\x80\x93", "a typographic dash stands here: write '-'"},
    {"\xE2\x80\x94", "a typographic dash stands here: write '-'"},
    {"\xE2\x88\x92", "a typographic dash stands here: write '-'"},
    {"\xE2\x80\x98", "typographic quotes stand here: Morl has no texts"},
    {"\xE2\x80\x99", "typographic quotes stand here: Morl has no texts"},
    {"\xE2\x80\x9C", "typographic quotes stand here: Morl has no texts"},
    {"\xE2\x80\x9D", "typographic quotes stand here: Morl has no texts"},
    {"\xC3\x97", "a typographic times sign stands here: write '*'"},
    {"\"", "Morl has no texts: leave the quotes out"},
    {"'", "Morl has no texts: leave the quotes out"},
    {":=", "'=' assigns, without the ':'"},
    {"^", "there is no '^': pow(x, y) for a power"},
    {"\\n", "a backslash and an 'n' stand here: write a line break"},
    {"\\", "a statement may go on in the next line without a backslash"},
    {"<<", "there are no operators on bits: '* 2' for '<< 1'"},
    {">>", "there are no operators on bits: '/ 2' for '>> 1'"},
    {"->", "members follow a point: 'v.x'"},
    {"::", "there are no namespaces: leave '::' and what is before it out"},
    {"**", "there is no '**': pow(x, y)"},
};

/// Whether there is a byte outside of ASCII before a comment.
bool HasForeignByte(std::string_view line)
{
    const std::string_view code = line.substr(0, std::min(line.find("//"), line.find("/*")));
    return std::any_of(code.begin(), code.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// A hint for characters and operators that the language lacks.
std::string HintInSymbols(std::string_view line)
{
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char next = i + 1 < line.size() ? line[i + 1] : '\0';
        const char last = i > 0 ? line[i - 1] : '\0';
        if (line[i] == '/' && next == '/') {
            break;
        }
        const auto* const known = std::find_if(
            std::begin(kSymbolHints), std::end(kSymbolHints), [&](const SymbolHint& entry) {
                return line.substr(i, entry.symbol.size()) == entry.symbol;
            });
        if (known != std::end(kSymbolHints)) {
            return std::string(known->hint);
        }
        if (line[i] == '?') {
            return "there is no '?:': use 'if'";
        }
        if (line[i] == '!' && next != '=') {
            return "there is no '!': 'k == 0' for '!k'";
        }
        if ((line[i] == '&' || line[i] == '|') && next != line[i] && last != line[i]) {
            return "there are no operators on bits: '&&' and '||' combine conditions";
        }
        if (line[i] == '.' && IsDigit(next) && !IsWordCharacter(last)) {
            return "numbers begin with a digit: 0.5 for .5";
        }
    }
    return HasForeignByte(line) ? "names have the letters a to z and A to Z, digits and '_'" : "";
}

bool StartsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

/// The first word of a line; empty if it begins with something else.
std::string_view FirstWord(std::string_view line)
{
    const std::size_t begin = std::min(line.find_first_not_of(" \t"), line.size());
    std::size_t end = begin;
    while (end < line.size() && (IsWordCharacter(line[end]) || line[end] == '#')) {
        ++end;
    }
    return line.substr(begin, end - begin);
}

/// The word of these classes that a word was probably meant to be; empty: none, or it is one.
std::string NearestOf(std::string_view word, std::initializer_list<WordClass> classes)
{
    constexpr std::size_t kShortest = 3;  // shorter words resemble too many others
    std::vector<std::string_view> names;
    for (const Keyword& keyword : KeywordMap::Keywords()) {
        if (keyword.spelling == word) {
            return {};
        }
        if (std::find(classes.begin(), classes.end(), keyword.wordClass) != classes.end()) {
            names.push_back(keyword.spelling);
        }
    }
    return word.size() < kShortest ? "" : NearestName(names, word);
}

/// The same as a question.
std::string MeantWord(std::string_view word, std::initializer_list<WordClass> classes)
{
    return DidYouMean(NearestOf(word, classes), "");
}

/// The word that ends where the rest of the line begins.
std::string_view WordBefore(std::string_view line, std::size_t end)
{
    std::size_t begin = std::min(end, line.size());
    while (begin > 0 && IsWordCharacter(line[begin - 1])) {
        --begin;
    }
    return line.substr(begin, std::min(end, line.size()) - begin);
}

bool Contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

std::string_view FirstNonBlank(std::string_view line)
{
    return line.substr(std::min(line.find_first_not_of(" \t"), line.size()));
}

/// A type in parentheses before a value, as C converts.
bool HasCast(std::string_view line)
{
    for (std::size_t open = line.find('('); open != std::string_view::npos;
         open = line.find('(', open + 1)) {
        const std::size_t close = line.find(')', open);
        const std::string_view word =
            close == std::string_view::npos ? "" : line.substr(open + 1, close - open - 1);
        const bool isCall = open > 0 && IsWordCharacter(line[open - 1]);
        if (!isCall &&
            KeywordMap::RowOf(KeywordMap::Language().Find(word)).wordClass == WordClass::Type) {
            return true;
        }
    }
    return false;
}

/// A hint for the head of a loop.
std::string HintForLoop(std::string_view line)
{
    const std::size_t open =
        line.find("for (") != std::string_view::npos ? line.find("for (") : line.find("for(");
    if (open == std::string_view::npos || line[open > 0 ? open - 1 : 0] == '#') {
        return {};
    }
    const std::string_view head = line.substr(open, line.find('{', open) - open);
    const std::size_t first = head.find(';');
    const std::size_t second = first == std::string_view::npos ? first : head.find(';', first + 1);
    const std::size_t step =
        second != std::string_view::npos ? head.find_first_not_of(' ', second + 1) : second;
    if (step != std::string_view::npos &&
        (head.substr(step, 2) == "++" || head.substr(step, 2) == "--")) {
        return "write 'i++' for '++i', and 'i--' for '--i'";
    }
    if (first != std::string_view::npos && Contains(head.substr(0, first), ",")) {
        return "a 'for' has one counter: declare others above it";
    }
    return "a 'for' reads 'for (int i = 0; i < 4; i++) { ... }', and its condition begins with "
           "the counter";
}

/// A hint that follows from the message and the character that it points at, when nothing else is
/// known.
std::string HintForToken(std::string_view message, std::string_view rest)
{
    const char next = rest.empty() ? '\0' : rest.front();
    if (StartsWith(message, "miss ';'")) {
        switch (next) {
        case ')':
        case ']':
            return std::string("this '") + next + "' closes nothing: one is too many";
        case ',':
        case ':':
            return "a statement ends with ';'";
        case '=':
            return "one assignment in each statement";
        default:
            return {};
        }
    }
    if (StartsWith(message, "miss '")) {
        return "a " + std::string(message.substr(std::string_view("miss ").size(), 3)) +
               " is missing here";
    }
    if (StartsWith(message, "expression error")) {
        return "a value is missing here: a name, a number, a call or a '(' begins one";
    }
    if (StartsWith(message, "invalid end of line")) {
        return "a declaration reads 'in TYPE NAME : SEMANTIC;' or 'uniform TYPE NAME;'";
    }
    return {};
}

/// A hint that follows from the message and where it points.
std::string HintInPlace(const Excerpt& excerpt, std::string_view message)
{
    const bool isAtStart =
        excerpt.line.find_first_not_of(' ') >= std::min(excerpt.caret, excerpt.line.size());
    const std::string_view rest =
        std::string_view(excerpt.line).substr(std::min(excerpt.caret, excerpt.line.size()));
    const bool isClosed = std::string_view(";{}").find(excerpt.before) != std::string_view::npos;
    const bool missesEnd =
        StartsWith(message, "miss ';'") || StartsWith(message, "invalid end of line");
    if (missesEnd && rest.find_first_not_of(" \t\r") == std::string_view::npos) {
        return "a ';' is missing here";
    }
    if (StartsWith(message, "miss ';'") && isAtStart && !isClosed) {
        return "a ';' is missing at the end of the statement above this line";
    }
    if (rest.substr(0, 1) == "(" && excerpt.line.find("discard") != std::string::npos) {
        return "'discard;' has no parentheses";
    }
    const std::string_view firstWord = FirstWord(excerpt.line);
    const bool isBuffer = firstWord == "uniform" || firstWord == "in" || firstWord == "out";
    if (isBuffer && StartsWith(message, "wrong var definition")) {
        return "'uniform', 'in' and 'out' stand outside of 'main'";
    }
    if (isBuffer && Contains(excerpt.line, "[") && Contains(excerpt.line, "sampler")) {
        return "samplers are not arrays: declare one for each, as '#for' does";
    }
    if (Contains(excerpt.line, "main( ")) {
        return "nothing stands between the parentheses of 'main()', not even a blank";
    }
    if (Contains(excerpt.line, " main(") && !Contains(excerpt.line, "main()")) {
        return "the head is 'void main()': 'in' and 'out' declarations stand above it";
    }
    if (Contains(excerpt.line, "#else if")) {
        return "there is no '#else if': put another '#if' into the '#else' part";
    }
    if (Contains(excerpt.line, "# if") || Contains(excerpt.line, "# e") ||
        Contains(excerpt.line, "# for")) {
        return "no blank follows a '#': '#if', '#else', '#endif', '#for', '#endfor'";
    }
    if (StartsWith(message, "miss '('")) {
        const std::string_view called = WordBefore(excerpt.line, excerpt.caret);
        if (Contains(excerpt.line.substr(0, excerpt.caret), "if ")) {
            return "a condition stands in parentheses: 'if (a > b) { ... }'";
        }
        const WordClass wordClass =
            KeywordMap::RowOf(KeywordMap::Language().Find(called)).wordClass;
        if (HasCast(excerpt.line)) {
            return "a conversion is written as a call: 'float(i)'";
        }
        if (wordClass == WordClass::Function) {
            return "'" + std::string(called) + "' is a function: '" + std::string(called) + "(x)'";
        }
    }
    if (StartsWith(message, "wrong var definition") && rest.substr(0, 1) == ":") {
        return "semantics belong to 'in' and 'out', outside of 'main'";
    }
    if (StartsWith(FirstNonBlank(excerpt.line), "# ")) {
        return "a comment begins with '//'";
    }
    if (StartsWith(message, "miss ':'") || StartsWith(message, "not valid marco name")) {
        return "a '#for' reads '#for NAME : START', such as '#for LIGHTS : 0'; the macro's value "
               "is "
               "its end";
    }
    if (StartsWith(message, "invalid var type")) {
        return MeantWord(WordBefore(excerpt.line, excerpt.caret), {WordClass::Type});
    }
    if (StartsWith(message, "not valid var")) {
        const std::string_view word = WordBefore(excerpt.line, excerpt.caret);
        const bool isKnown = KeywordMap::Language().Find(word) != TOKEN_NONE;
        return isKnown && !isBuffer
                   ? "'" + std::string(word) + "' is a word of the language: use another name"
                   : "a declaration reads 'in TYPE NAME : SEMANTIC;' or 'uniform TYPE NAME;'";
    }
    std::string loop = HintForLoop(excerpt.line);
    if (!loop.empty() && !StartsWith(message, "unexpected character")) {
        return loop;
    }
    if (StartsWith(message, "miss ';'") && WordBefore(excerpt.line, excerpt.caret) == "Sample") {
        return "textures are sampled by functions: 'tex2D(map, uv)'";
    }
    if (StartsWith(message, "miss ';'") && rest.substr(0, 1) == "(") {
        const std::string meant = MeantWord(WordBefore(excerpt.line, excerpt.caret),
                                            {WordClass::Function, WordClass::Type});
        return !meant.empty() ? meant
                              : "functions of one's own cannot be called: put shared code into a "
                                "node; the intrinsics are " +
                                    std::string(PortableIntrinsics());
    }
    if (StartsWith(message, "miss ')'") && rest.substr(0, 1) == "=") {
        return "'==' compares";
    }
    if (StartsWith(message, "need if")) {
        return "an 'else' must follow the '}' of its 'if' directly";
    }
    if ((StartsWith(message, "expression error") || StartsWith(message, "miss ';'")) &&
        (Contains(excerpt.line, "/*") || Contains(rest, "//"))) {
        return "a comment cannot stand inside a statement";
    }
    if (StartsWith(message, "miss '}'")) {
        return "a '{' above is not closed, or a line above has an error";
    }
    const bool isDeclaration =
        StartsWith(message, "wrong var definition") || StartsWith(message, "invalid end of line");
    if (isDeclaration && excerpt.line.find(',') != std::string::npos) {
        return "one name in each declaration";
    }
    if (StartsWith(message, "invalid end of line") && excerpt.line.find('=') != std::string::npos) {
        return "what is declared outside of 'main' has no initial value: assign it in 'main'";
    }
    if (StartsWith(message, "need a register symbol")) {
        const std::string meant =
            MeantWord(WordBefore(excerpt.line, excerpt.caret), {WordClass::Semantic});
        return !meant.empty() ? meant
                              : "the semantics are POSITION, NORMAL, TANGENT, BINORMAL, "
                                "BLENDINDICES, BLENDWEIGHT, "
                                "TEXCOORD0 to TEXCOORD7, TEXAUTO, SV_Position, COLOR, COLOR0 to "
                                "COLOR3 and SAUTO";
    }
    if (StartsWith(message, "invalid var declare")) {
        std::string meant =
            MeantWord(FirstWord(excerpt.line),
                      {WordClass::Buffer, WordClass::Void, WordClass::Type, WordClass::Directive});
        if (!meant.empty()) {
            return meant;
        }
        return rest.substr(0, 1) == "}"
                   ? "this '}' closes nothing: it is one too many, or a block above has ended early"
                   : "outside of 'main' there are only declarations and 'void main()'";
    }
    if (StartsWith(message, "miss ','")) {
        return "a ',' or a ')' is missing";
    }
    if (StartsWith(message, "miss '('") && rest.find_first_of(";=[,") == 0) {
        return "outside of 'main' there are only 'uniform', 'in' and 'out': write 'uniform' in "
               "front, or move it into 'main'";
    }
    if (excerpt.line.find("] =") != std::string::npos) {
        return "arrays have no initial value: assign each element";
    }
    if (StartsWith(message, "need assign operator")) {
        if (excerpt.line.find("++") != std::string::npos ||
            excerpt.line.find("--") != std::string::npos) {
            return "'++' and '--' work on names and array elements: 'v.x += 1.0;'";
        }
        std::string meant = MeantWord(
            FirstWord(excerpt.line),
            {WordClass::Type, WordClass::Control, WordClass::Special, WordClass::Directive});
        if (!meant.empty()) {
            return meant;
        }
        const std::size_t after = excerpt.line.find(firstWord) + firstWord.size();
        const bool isTwoWords =
            !firstWord.empty() && !IsDigit(firstWord[0]) && firstWord[0] != '#' &&
            excerpt.line.substr(after, 1) == " " &&
            IsWordCharacter(excerpt.line[std::min(after + 1, excerpt.line.size() - 1)]);
        return isTwoWords
                   ? "there is no type '" + std::string(firstWord) + "'"
                   : "a statement is 'TYPE NAME;', 'NAME = VALUE;', 'if', 'for' or 'discard;'";
    }
    return HintForToken(message, rest);
}

/// Whether a line of a text begins like this.
bool HasLine(std::string_view text, std::string_view start)
{
    return StartsWith(text, start) ||
           text.find("\n" + std::string(start)) != std::string_view::npos;
}

}  // namespace

std::string HintForSource(std::string_view content)
{
    if (HasLine(content, "<<<<<<< ") && HasLine(content, ">>>>>>> ")) {
        return "a merge has left its marks, '<<<<<<<' to '>>>>>>>': keep one of the two versions";
    }
    const std::size_t open = content.rfind("/*");
    if (open != std::string_view::npos && content.find("*/", open + 2) == std::string_view::npos) {
        return "a comment that begins in line " +
               std::to_string(std::count(content.begin(),
                                         content.begin() + static_cast<std::ptrdiff_t>(open),
                                         '\n') +
                              1) +
               " has no end: add '*/'";
    }
    return {};
}

std::string MeantFirstWord(std::string_view line)
{
    return NearestOf(FirstWord(line),
                     {WordClass::Buffer, WordClass::Void, WordClass::Type, WordClass::Control,
                      WordClass::Special, WordClass::Directive});
}

std::string HintFor(const Excerpt& excerpt, std::string_view message)
{
    if (excerpt.line.empty()) {
        return message == messages::kInvalidVarDeclare
                   ? "the content of a node must not end in a line break or in blanks"
                   : "";
    }
    std::string hint = HintInWords(excerpt.line);
    if (hint.empty()) {
        hint = HintInSymbols(excerpt.line);
    }
    return hint.empty() ? HintInPlace(excerpt, message) : hint;
}

}  // namespace ns_ruke
