// SPDX-License-Identifier: MIT
#include "morl/check/hints.h"

#include "morl/check/internal/hint_words.h"
#include "morl/core/messages.h"
#include "morl/core/nearest.h"
#include "morl/parser/keyword_map.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <vector>

namespace ns_ruke {
namespace {

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
            return "there is no '!': 'k == 0' for '!k', 'a <= b' for '!(a > b)'";
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

bool IsSemantic(std::string_view word)
{
    return KeywordMap::RowOf(KeywordMap::Language().Find(word)).wordClass == WordClass::Semantic;
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

/// A fault, and what is known of its place.
struct FaultPlace {
    FaultPlace(const Excerpt& excerpt, std::string_view newMessage)
        : line(excerpt.line), message(newMessage)
    {
        const std::size_t caret = std::min(excerpt.caret, line.size());
        before = line.substr(0, caret);
        rest = line.substr(caret);
        lastWord = WordBefore(line, caret);
        firstWord = FirstWord(line);
        isAfterEnd = std::string_view(";{}").find(excerpt.before) != std::string_view::npos;
        isDeclaration = firstWord == "uniform" || firstWord == "in" || firstWord == "out";
    }

    bool Says(std::string_view start) const { return StartsWith(message, start); }
    bool Has(std::string_view part) const { return Contains(line, part); }
    bool IsAt(std::string_view start) const { return StartsWith(rest, start); }

    std::string_view line;
    std::string_view message;    ///< without its place
    std::string_view before;     ///< the line up to the place
    std::string_view rest;       ///< the line from the place on
    std::string_view firstWord;  ///< of the line
    std::string_view lastWord;   ///< that ends at the place
    bool isAfterEnd = false;     ///< whether the place follows the end of a statement or block
    bool isDeclaration = false;  ///< whether the line begins like a declaration of the shader
};

std::string HintForEnd(const FaultPlace& place)
{
    const bool isOver = place.rest.find_first_not_of(" \t\r") == std::string_view::npos;
    if ((place.Says("miss ';'") || place.Says("invalid end of line")) && isOver) {
        return "a ';' is missing here";
    }
    const bool isAtStart = place.before.find_first_not_of(' ') == std::string_view::npos;
    if (place.Says("miss ';'") && isAtStart && !place.isAfterEnd) {
        return "a ';' is missing at the end of the statement above this line";
    }
    return place.IsAt("(") && place.Has("discard") ? "'discard;' has no parentheses" : "";
}

std::string HintForPlaceInShader(const FaultPlace& place)
{
    if (place.isDeclaration && place.Says("wrong var definition")) {
        return "'uniform', 'in' and 'out' stand outside of 'main'";
    }
    if (place.Says("wrong var definition") && place.IsAt(":")) {
        return "semantics belong to 'in' and 'out', outside of 'main'";
    }
    if (place.isDeclaration && place.Has("[") && place.Has("sampler")) {
        return "samplers are not arrays: declare one for each, as '#for' does";
    }
    if (place.Says("invalid var declare:main")) {
        return "the head is 'void main()'";
    }
    if (place.Has("main( ")) {
        return "nothing stands between the parentheses of 'main()', not even a blank";
    }
    return place.Has(" main(") && !place.Has("main()")
               ? "the head is 'void main()': 'in' and 'out' declarations stand above it"
               : "";
}

std::string HintForDirective(const FaultPlace& place)
{
    if (place.Has("#else if")) {
        return "there is no '#else if': put another '#if' into the '#else' part";
    }
    if (place.Has("# if") || place.Has("# e") || place.Has("# for")) {
        return "no blank follows a '#': '#if', '#else', '#endif', '#for', '#endfor'";
    }
    const std::string_view head = FirstNonBlank(place.line);
    if (StartsWith(head, "# ")) {
        return "a comment begins with '//'";
    }
    if (StartsWith(head, "#if") && place.Has("{")) {
        return "a '#if' has no braces: its block ends with '#endif'";
    }
    const bool isLoop = place.Says("miss ':'") || place.Says("not valid marco name") ||
                        place.Says("not valid number") || place.Says("unexpected character:,");
    return isLoop && !place.isDeclaration
               ? "a '#for' reads '#for NAME : START', such as '#for LIGHTS : 0'; the macro's value "
                 "is its end"
               : "";
}

std::string HintForParenthesis(const FaultPlace& place)
{
    if (!place.Says("miss '('")) {
        return {};
    }
    if (Contains(place.before, "if ")) {
        return "a condition stands in parentheses: 'if (a > b) { ... }'";
    }
    if (HasCast(place.line)) {
        return "a conversion is written as a call: 'float(i)'";
    }
    const std::string word(place.lastWord);
    const ENUM_TOKEN token = KeywordMap::Language().Find(word);
    return KeywordMap::RowOf(token).wordClass == WordClass::Function
               ? "'" + word + "' is a function: '" + word + "(x)'"
               : "";
}

std::string HintForName(const FaultPlace& place)
{
    if (place.Says("invalid var type")) {
        std::string meant = MeantWord(place.lastWord, {WordClass::Type});
        const bool isNameOnly = place.isDeclaration && place.rest.find_first_of(";:[") == 0;
        return meant.empty() && isNameOnly ? "a type stands before the name: 'uniform float k;'"
                                           : meant;
    }
    if (!place.Says("not valid var")) {
        return {};
    }
    if (place.IsAt("[") || (!place.before.empty() && place.before.back() == '[')) {
        return "the size follows the name: 'float a[3];'";
    }
    if (!place.lastWord.empty() && IsDigit(place.lastWord.front())) {
        return "a name does not begin with a digit";
    }
    const bool isKnown = KeywordMap::Language().Find(place.lastWord) != TOKEN_NONE;
    return isKnown && !place.isDeclaration
               ? "'" + std::string(place.lastWord) + "' is a word of the language: use another name"
               : "a declaration reads 'in TYPE NAME : SEMANTIC;' or 'uniform TYPE NAME;'";
}

std::string HintForLoop(const FaultPlace& place)
{
    const std::size_t blank = place.line.find("for (");
    const std::size_t open = blank != std::string_view::npos ? blank : place.line.find("for(");
    if (open == std::string_view::npos || place.line[open > 0 ? open - 1 : 0] == '#' ||
        place.Says("unexpected character")) {
        return {};
    }
    const std::string_view head = place.line.substr(open, place.line.find('{', open) - open);
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

std::string HintForCall(const FaultPlace& place)
{
    if (!place.Says("miss ';'") || (place.lastWord != "Sample" && !place.IsAt("("))) {
        return {};
    }
    if (place.lastWord == "Sample") {
        return "textures are sampled by functions: 'tex2D(map, uv)'";
    }
    std::string meant = MeantWord(place.lastWord, {WordClass::Function, WordClass::Type});
    return !meant.empty() ? meant
                          : "functions of one's own cannot be called: put shared code into a node; "
                            "the intrinsics are " +
                                std::string(PortableIntrinsics());
}

std::string HintForStatement(const FaultPlace& place)
{
    if (place.Says("miss ')'") && place.IsAt("=")) {
        return "'==' compares";
    }
    if (place.Says("need if")) {
        return "an 'else' must follow the '}' of its 'if' directly";
    }
    if ((place.Says("expression error") || place.Says("miss ';'")) &&
        (place.Has("/*") || Contains(place.rest, "//"))) {
        return "a comment cannot stand inside a statement";
    }
    return place.Says("miss '}'") ? "a '{' above is not closed, or a line above has an error" : "";
}

std::string HintForDeclaration(const FaultPlace& place)
{
    if ((place.Says("wrong var definition") || place.Says("invalid end of line")) &&
        place.Has(",")) {
        return "one name in each declaration";
    }
    if (place.Says("expression error") && place.Has("[]")) {
        return "an array has a size: 'float a[3]', or a macro in place of the number";
    }
    if (place.Says("invalid end of line") && place.Has("=")) {
        return "what is declared outside of 'main' has no initial value: assign it in 'main'";
    }
    if (place.Says("invalid end of line") && IsSemantic(place.lastWord)) {
        return "a ':' stands before the semantic";
    }
    if (place.Says("invalid end of line") && Contains(place.before, "-")) {
        return "names have letters, digits and '_'";
    }
    if (place.Says("miss ','")) {
        return "a ',' or a ')' is missing";
    }
    if (place.Says("miss '('") && place.rest.find_first_of(";=[,") == 0) {
        return "outside of 'main' there are only 'uniform', 'in' and 'out': write 'uniform' in "
               "front, or move it into 'main'";
    }
    return place.Has("] =") ? "arrays have no initial value: assign each element" : "";
}

std::string UpperCase(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return upper;
}

/// The semantic that is written otherwise: in other letters, or as a render target of HLSL.
std::string SemanticLike(std::string_view word)
{
    constexpr std::string_view kTarget = "SV_TARGET";
    const std::string upper = UpperCase(word);
    if (StartsWith(upper, kTarget)) {
        std::string color =
            "COLOR" + (upper.size() > kTarget.size() ? upper.substr(kTarget.size()) : "0");
        return IsSemantic(color) ? color : "";
    }
    for (const Keyword& keyword : KeywordMap::Keywords()) {
        if (keyword.wordClass == WordClass::Semantic && UpperCase(keyword.spelling) == upper) {
            return std::string(keyword.spelling);
        }
    }
    return {};
}

std::string HintForSemantic(const FaultPlace& place)
{
    if (!place.Says("need a register symbol")) {
        return {};
    }
    std::string meant = DidYouMean(SemanticLike(place.lastWord), "");
    if (meant.empty()) {
        meant = MeantWord(place.lastWord, {WordClass::Semantic});
    }
    return !meant.empty() ? meant
                          : "the semantics are POSITION, NORMAL, TANGENT, BINORMAL, "
                            "BLENDINDICES, BLENDWEIGHT, "
                            "TEXCOORD0 to TEXCOORD7, TEXAUTO, SV_Position, COLOR, COLOR0 to "
                            "COLOR3 and SAUTO";
}

std::string HintForFirstWord(const FaultPlace& place)
{
    if (!place.Says("invalid var declare")) {
        return {};
    }
    std::string meant = MeantWord(place.firstWord, {WordClass::Buffer, WordClass::Void,
                                                    WordClass::Type, WordClass::Directive});
    if (!meant.empty()) {
        return meant;
    }
    if (place.before.size() > 1 && place.before.substr(place.before.size() - 2) == "};") {
        return "no ';' follows a '}'";
    }
    return place.IsAt("}")
               ? "this '}' closes nothing: it is one too many, or a block above has ended early"
               : "outside of 'main' there are only declarations and 'void main()'";
}

std::string HintForAssignment(const FaultPlace& place)
{
    if (!place.Says("need assign operator")) {
        return {};
    }
    if (place.Has("++") || place.Has("--")) {
        return "'++' and '--' work on names and array elements: 'v.x += 1.0;'";
    }
    const std::string_view word = place.firstWord;
    std::string meant = MeantWord(
        word, {WordClass::Type, WordClass::Control, WordClass::Special, WordClass::Directive});
    if (!meant.empty()) {
        return meant;
    }
    const std::string_view after = place.line.substr(place.line.find(word) + word.size());
    const bool isTwoWords = !word.empty() && !IsDigit(word[0]) && word[0] != '#' &&
                            after.size() > 1 && after[0] == ' ' && IsWordCharacter(after[1]);
    return isTwoWords ? "there is no type '" + std::string(word) + "'"
                      : "a statement is 'TYPE NAME;', 'NAME = VALUE;', 'if', 'for' or 'discard;'";
}

/// Whether the text ends with a '+' that no value stands before: a sign, or '=+' meant as '+='.
bool IsAfterPlus(std::string_view before)
{
    if (before.empty() || before.back() != '+') {
        return false;
    }
    const std::size_t last = before.find_last_not_of(" \t", before.size() - 2);
    return last != std::string_view::npos &&
           std::string_view("=(,+-*/<>&|").find(before[last]) != std::string_view::npos;
}

std::string HintForComma(const FaultPlace& place)
{
    if (!place.before.empty() && IsDigit(place.before.back()) && place.rest.size() > 1 &&
        IsDigit(place.rest[1])) {
        return "numbers have a point: 1.5 for 1,5";
    }
    const ENUM_TOKEN first = KeywordMap::Language().Find(place.firstWord);
    return KeywordMap::RowOf(first).wordClass == WordClass::Type ? "one name in each declaration"
                                                                 : "a statement ends with ';'";
}

/// When nothing else is known: what the message and the character at the place say.
std::string HintForToken(const FaultPlace& place)
{
    const char next = place.rest.empty() ? '\0' : place.rest.front();
    if (place.Says("miss ';'")) {
        switch (next) {
        case ')':
        case ']':
            return std::string("this '") + next + "' closes nothing: one is too many";
        case ',':
            return HintForComma(place);
        case ':':
            return "a statement ends with ';'";
        case '=':
            return "one assignment in each statement";
        default:
            return !place.lastWord.empty() && IsDigit(place.lastWord[0]) && IsWordCharacter(next)
                       ? "a name does not begin with a digit"
                       : "";
        }
    }
    if (place.Says("miss '")) {
        return "a " + std::string(place.message.substr(std::string_view("miss ").size(), 3)) +
               " is missing here";
    }
    if (place.Says("expression error") && IsAfterPlus(place.before)) {
        return "no '+' stands in front of a value, and '+=' adds";
    }
    if (place.Says("expression error")) {
        return "a value is missing here: a name, a number, a call or a '(' begins one";
    }
    return place.Says("invalid end of line")
               ? "a declaration reads 'in TYPE NAME : SEMANTIC;' or 'uniform TYPE NAME;'"
               : "";
}

/// A hint that follows from the message and where it points. The first one that knows something
/// counts.
std::string HintInPlace(const Excerpt& excerpt, std::string_view message)
{
    using PlaceHint = std::string (*)(const FaultPlace& place);
    constexpr PlaceHint kPlaceHints[] = {
        HintForEnd,         HintForPlaceInShader, HintForDirective, HintForParenthesis,
        HintForName,        HintForLoop,          HintForCall,      HintForStatement,
        HintForDeclaration, HintForSemantic,      HintForFirstWord, HintForAssignment,
        HintForToken,
    };
    const FaultPlace place(excerpt, message);
    for (const PlaceHint hintFor : kPlaceHints) {
        std::string hint = hintFor(place);
        if (!hint.empty()) {
            return hint;
        }
    }
    return {};
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
