// SPDX-License-Identifier: MIT
// Characters, locations and tokens.
#include "morl/core/internal/graphics_log.h"
#include "morl/core/limits.h"
#include "morl/core/messages.h"
#include "morl/parser/morl_parser.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace ns_ruke {
namespace {

enum CharacterClass : unsigned char {
    kLetter = 1,     ///< letters, "_" and "$": may start and continue a name
    kDigit = 2,      ///< may continue a name
    kWordStart = 4,  ///< the letters, and "#", which starts the macro keywords
    kSpace = 8,
};

constexpr std::array<unsigned char, 256> ClassifyCharacters()
{
    std::array<unsigned char, 256> classes{};
    for (unsigned c = 'a'; c <= 'z'; ++c) {
        classes[c] = kLetter | kWordStart;
        classes[c - 'a' + 'A'] = kLetter | kWordStart;
    }
    classes['_'] = kLetter | kWordStart;
    classes['$'] = kLetter | kWordStart;
    classes['#'] = kWordStart;
    for (unsigned c = '0'; c <= '9'; ++c) {
        classes[c] = kDigit;
    }
    classes[' '] = kSpace;
    classes['\t'] = kSpace;
    classes['\n'] = kSpace;
    classes['\r'] = kSpace;
    return classes;
}

constexpr std::array<unsigned char, 256> kClasses = ClassifyCharacters();

bool Is(char c, unsigned classes)
{
    return (kClasses[static_cast<unsigned char>(c)] & classes) != 0;
}

}  // namespace

MorlParser::MorlParser() : keywords(KeywordMap::Language()) {}

MorlParser::~MorlParser() = default;

void MorlParser::Init()
{
    keywords = KeywordMap::Language();
}

void MorlParser::Parse(const std::string& source, MorlProgram& program)
{
    static const std::string start = messages::kCompilerStart;
    static const std::string end = messages::kCompilerEnd;
    LogGraphicsInfo(start);
    text = source.c_str();
    length = static_cast<std::uint32_t>(source.size());
    position = 0;
    line = 0;
    lineStart = 0;
    nesting = 0;
    blockDepth = 0;
    isUnwinding = false;
    lost = &program.lostCode;
    const unsigned before = marcoSentences;
    PushLoction();
    if (source.size() > kMaxSourceSize) {
        LogError(messages::kSourceTooLong);
    } else {
        ParseProgram(program);
    }
    program.hasMacros = marcoSentences != before;
    LogGraphicsInfo(end);
}

void MorlParser::NoteLost(MorlLostKind kind, std::uint32_t offset, std::uint32_t cause)
{
    lost->push_back({kind, offset, cause});
}

void MorlParser::ParseProgram(MorlProgram& program)
{
    while (!Eof()) {
        ParseProgramSegment(&program);
    }
}

bool MorlParser::ValidVariable(char c, bool first) const
{
    return Is(c, first ? kLetter : kLetter | kDigit);
}

bool MorlParser::IsNumber(char c, bool allowDot) const
{
    return Is(c, kDigit) || (allowDot && c == '.');
}

bool MorlParser::IsSpace(char c) const
{
    return Is(c, kSpace);
}

bool MorlParser::IsEnter(char c) const
{
    return c == '\n' || c == '\r';
}

// Despite its name, this consumes the current character. The end of the text is never passed.
void MorlParser::PeekNext()
{
    if (Eof()) {
        return;
    }
    const bool endsLine = Current() == '\n';
    ++position;
    if (endsLine) {
        ++line;
        lineStart = position;
    }
}

// Consumes characters, which must not include a line break.
void MorlParser::Advance(std::uint32_t count)
{
    position += count;
}

void MorlParser::SkipSpace()
{
    // The NUL at the end of the text is not a space.
    for (char c = Current(); IsSpace(c); c = Current()) {
        ++position;
        if (c == '\n') {
            ++line;
            lineStart = position;
        }
    }
}

void MorlParser::SkipLine()
{
    const std::string_view rest(text + position, length - position);
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    Advance(static_cast<std::uint32_t>(end));
    PeekNext();
}

void MorlParser::PushLoction()
{
    savedPosition = position;
    savedLine = line;
    savedLineStart = lineStart;
}

void MorlParser::PopLoction()
{
    position = savedPosition;
    line = savedLine;
    lineStart = savedLineStart;
}

bool MorlParser::CheckSkip(char expected)
{
    SkipSpace();
    if (!Eof() && Current() == expected) {
        PeekNext();
        return true;
    }
    LogErrorAndSkipLine(messages::kMiss, expected + std::string(messages::kMissEnd));
    return false;
}

std::uint32_t MorlParser::WorkSince(std::uint32_t units, std::uint32_t start) const
{
    return unitsMade - units + (position - start) / std::uint32_t{kBytesPerWork};
}

TextPlace MorlParser::Place() const
{
    return {line + 1, static_cast<int>(position - lineStart) + 1};
}

std::string MorlParser::GetLocation() const
{
    return FormatPlace(Place());
}

void MorlParser::LogError(const char* message, std::string_view word) const
{
    if (!isUnwinding) {
        LogGraphicsError(std::string(message).append(word), Place());
    }
}

void MorlParser::LogErrorAndSkipLine(const char* message, std::string_view word)
{
    if (!isUnwinding) {
        LogError(message, word);
        SkipLine();
    }
}

// Reports it once for a construct, over as many lines as that has. The levels around it then unwind
// without a further message.
void MorlParser::SkipTooDeep(int open)
{
    SkipSpace();
    const std::uint32_t start = position;
    LogErrorAndSkipLine(messages::kNestingTooDeep);
    isUnwinding = true;
    SkipConstruct(start, open);
}

// Skips what is left of a construct.
// @param start where it begins
// @param open how many blocks of it have been opened before that
void MorlParser::SkipConstruct(std::uint32_t start, int open)
{
    const std::uint32_t end = Eof() ? length : EndOfConstruct(start, open);
    while (position < end) {
        PeekNext();
    }
}

// A statement or block ends with its ";", its "}" without an `else` after it, or its closing word;
// an expression ends before a bracket that it has not opened.
std::uint32_t MorlParser::EndOfConstruct(std::uint32_t start, int open) const
{
    const std::string_view whole(text, length);
    for (std::size_t i = start; i < whole.size(); ++i) {
        const std::string_view rest = whole.substr(i);
        const char c = rest[0];
        const bool isComment = rest.substr(0, 2) == "//" || rest.substr(0, 2) == "/*";
        if (isComment) {
            i = std::min(whole.find(rest[1] == '/' ? "\n" : "*/", i), whole.size());
        } else if (c == '(' || c == '[' || c == '{' || rest.substr(0, 3) == "#if" ||
                   rest.substr(0, 4) == "#for") {
            ++open;
        } else if (c == ')' || c == ']' || c == '}' || rest.substr(0, 4) == "#end") {
            --open;
            if (open < 0) {
                return static_cast<std::uint32_t>(i);
            }
            const std::size_t next = whole.find_first_not_of(" \t\r\n", i + 1);
            const bool isBlock = c == '}' || c == '#';
            const bool goesOn = whole.substr(std::min(next, whole.size()), 4) == "else";
            if (open == 0 && isBlock && !goesOn) {
                const std::size_t word = c == '#' ? whole.find_first_of(" \t\r\n;/", i) : i + 1;
                return static_cast<std::uint32_t>(std::min(word, whole.size()));
            }
        } else if (c == ';' && open == 0) {
            return static_cast<std::uint32_t>(i + 1);
        }
    }
    return length;
}

// Names, keywords and numbers set `word` to their place in the text; other tokens leave it
// unchanged. At a character that begins no token, or at the end of the text, this returns
// TOKEN_NONE and consumes nothing.
ENUM_TOKEN MorlParser::ParseToken(std::string_view& word)
{
    SkipSpace();
    tokenStart = position;
    const char c = Current();
    if (Is(c, kWordStart)) {
        std::uint32_t end = position + 1;
        while (Is(text[end], kLetter | kDigit)) {
            ++end;
        }
        word = std::string_view(text + position, end - position);
        Advance(end - position);
        const ENUM_TOKEN keyword = keywords.Find(word);
        return keyword != TOKEN_NONE ? keyword : TOKEN_IDENTIFIER;
    }
    if (Is(c, kDigit)) {
        ParseNumber(word);
        return TOKEN_NUMBER;
    }
    return ParseSymbol();
}

// Digits with at most one "." among or after them: no sign, exponent or suffix.
void MorlParser::ParseNumber(std::string_view& word)
{
    const std::uint32_t start = position;
    std::uint32_t end = position;
    bool allowDot = true;
    while (IsNumber(text[end], allowDot)) {
        allowDot = allowDot && text[end] != '.';
        ++end;
    }
    Advance(end - position);
    word = std::string_view(text + start, end - start);
}

ENUM_TOKEN MorlParser::ParseSymbol()
{
    if (Eof()) {
        return TOKEN_NONE;
    }
    // There is always a next character, if only the NUL at the end of the text.
    const char next = text[position + 1];
    const auto one = [this](ENUM_TOKEN token) {
        Advance(1);
        return token;
    };
    const auto two = [this](ENUM_TOKEN token) {
        Advance(2);
        return token;
    };
    switch (Current()) {
    case ':':
        return one(TOKEN_COLON);
    case ';':
        return one(TOKEN_SEMICOLON);
    case '(':
        return one(TOKEN_LEFT_PARENTHESIS);
    case ')':
        return one(TOKEN_RIGHT_PARENTHESIS);
    case '[':
        return one(TOKEN_LEFT_BRACKET);
    case ']':
        return one(TOKEN_RIGHT_BRACKET);
    case '+':
        return next == '+'   ? two(TOKEN_INCREMENT)
               : next == '=' ? two(TOKEN_PLUS_ASSIGN)
                             : one(TOKEN_PLUS);
    case '-':
        return next == '-'   ? two(TOKEN_DECREMENT)
               : next == '=' ? two(TOKEN_MINUS_ASSIGN)
                             : one(TOKEN_MINUS);
    case '*':
        return next == '=' ? two(TOKEN_MULTIPLY_ASSIGN) : one(TOKEN_MULTIPLY);
    case '/':
        return next == '/'   ? two(TOKEN_SINGLE_COMMENT)
               : next == '*' ? two(TOKEN_MULTI_COMMENT_BEGIN)
               : next == '=' ? two(TOKEN_DIVIDE_ASSIGN)
                             : one(TOKEN_DIVIDE);
    case '%':
        return one(TOKEN_MODULO);
    case '.':
        return one(TOKEN_MEMBER);
    case '<':
        return next == '=' ? two(TOKEN_LESS_EQUAL) : one(TOKEN_LESS);
    case '>':
        return next == '=' ? two(TOKEN_GREATER_EQUAL) : one(TOKEN_GREATER);
    case '=':
        return next == '=' ? two(TOKEN_EQUAL) : one(TOKEN_ASSIGN);
    case '!':
        return next == '=' ? two(TOKEN_NOT_EQUAL) : one(TOKEN_NOT);
    case '&':
        return next == '&' ? two(TOKEN_AND) : TOKEN_NONE;
    case '|':
        return next == '|' ? two(TOKEN_OR) : TOKEN_NONE;
    default:
        return TOKEN_NONE;
    }
}

}  // namespace ns_ruke
