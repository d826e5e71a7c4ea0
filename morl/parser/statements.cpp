// SPDX-License-Identifier: MIT
// sentence   -> definition | assign | if | for | discard | comment | empty | macro block
// definition -> Type Name [ "[" expression "]" ] ";"  |  Type Name "=" expression ";"
// assign     -> target AssignOperator expression ";"  |  target ("++" | "--") ";"
// if         -> "if" "(" expression ")" block [ "else" block ]
// for        -> "for" "(" sentence expression ";" assign ")" block
// block      -> "{" { sentence } "}"  |  sentence
// empty      -> ":" AnyCharacter
#include "morl/ast/internal/ownership.h"
#include "morl/core/limits.h"
#include "morl/core/messages.h"
#include "morl/parser/internal/make_unit.h"
#include "morl/parser/internal/nesting.h"
#include "morl/parser/morl_parser.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace ns_ruke {
namespace {

bool IsAssignable(const MorlExpression* target)
{
    if (target == nullptr) {
        return false;
    }
    if (target->unitType == TOKEN_BINARY_OPERATION) {
        const ENUM_TOKEN token = static_cast<const MorlBinaryOperation*>(target)->operatorToken;
        return token == TOKEN_MEMBER || token == TOKEN_INDEX;
    }
    return target->unitType == TOKEN_IDENTIFIER || target->unitType == TOKEN_UNARY_OPERATION;
}

/// How many lines a statement has in the shader, without those of the statements in it.
std::uint32_t LinesOf(const MorlSentence& sentence)
{
    switch (sentence.unitType) {
    case TOKEN_IF:
    case TOKEN_ELSE:
        return static_cast<const MorlIfSentence&>(sentence).elseOffset != 0 ? 4 : 2;
    case TOKEN_FOR:
        return 2;
    case TOKEN_MULTI_COMMENT: {
        const std::string& text = static_cast<const MorlMultiCommentSentence&>(sentence).text;
        return 1 + static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n'));
    }
    default:
        return 1;
    }
}

}  // namespace

// Null if the statement yields nothing. Most failures have been reported by then, but not a target
// that cannot be assigned to, a `while`, or a token that starts no statement. In the last case only
// that token is consumed; a character that is not a token is not consumed.
MorlSentence* MorlParser::ParseSentence()
{
    isUnwinding = false;
    Nesting level(*this, kBlockNesting);
    if (level.ReportTooDeep()) {
        return nullptr;
    }
    PushLoction();
    std::string_view word;
    const ENUM_TOKEN token = ParseToken(word);
    const std::uint32_t start = tokenStart;
    const std::uint32_t units = unitsMade;
    const unsigned macros = marcoSentences;
    MorlSentence* sentence = ParseSentenceOf(token, word);
    if (sentence == nullptr && isUnwinding) {
        SkipConstruct(start, 0);
    }
    if (sentence != nullptr) {
        sentence->offset = start;
        sentence->mayExpand = marcoSentences != macros;
        sentence->lineWork = LinesOf(*sentence) * (1 + blockDepth / std::uint32_t{kBytesPerWork});
        unitsMade += sentence->lineWork;
        sentence->copyWork = WorkSince(units, start);
    }
    return sentence;
}

// The rest of a statement that begins with this token.
MorlSentence* MorlParser::ParseSentenceOf(ENUM_TOKEN token, std::string_view word)
{
    if (IsVarType(token)) {
        return ParseDefinitionSentence(token, word);
    }
    if (token == TOKEN_IDENTIFIER) {
        return ParseAssignSentence(token, word, true);
    }
    if (IsControl(token)) {
        return ParseControlSentence(token);
    }
    if (IsSpecialKeyWord(token)) {
        return ParseSpecialSentence(token);
    }
    switch (token) {
    case TOKEN_SINGLE_COMMENT:
    case TOKEN_MULTI_COMMENT_BEGIN:
        return ParseComment(token);
    case TOKEN_MARCO_IF:
    case TOKEN_MARCO_FOR:
        return ParseMarcoSentence(token);
    case TOKEN_COLON:
        PeekNext();  // skips the second character, usually ";", without checking it
        return Make<MorlEmptySentence>().release();
    default:
        NoteLostToken(token);
        return nullptr;
    }
}

// Notes a token that begins no statement and has been consumed.
void MorlParser::NoteLostToken(ENUM_TOKEN token)
{
    switch (token) {
    case TOKEN_NONE:
        break;  // a character that is no token; it is reported if nothing else takes it
    case TOKEN_SEMICOLON:
        NoteLost(MorlLostKind::Semicolon, tokenStart);
        break;
    case TOKEN_MARCO_ELSE:
    case TOKEN_MARCO_ENDIF:
    case TOKEN_MARCO_ENDFOR:
        NoteLost(MorlLostKind::Directive, tokenStart);
        break;
    default:
        NoteLost(MorlLostKind::Word, tokenStart);
    }
}

MorlSpecialSentence* MorlParser::ParseSpecialSentence(ENUM_TOKEN keyword)
{
    auto sentence = Make<MorlSpecialSentence>();
    sentence->keyword = keyword;
    return CheckSkip(';') ? sentence.release() : nullptr;
}

MorlSentence* MorlParser::ParseComment(ENUM_TOKEN token)
{
    switch (token) {
    case TOKEN_SINGLE_COMMENT:
        return ParseSingleComment();
    case TOKEN_MULTI_COMMENT_BEGIN:
        return ParseMultiComment();
    default:
        return nullptr;
    }
}

MorlSentence* MorlParser::ParseSingleComment()
{
    const std::string_view rest(text + position, length - position);
    auto comment = Make<MorlSingleCommentSentence>();
    comment->text = rest.substr(0, rest.find('\n'));
    SkipLine();
    return comment.release();
}

MorlSentence* MorlParser::ParseMultiComment()
{
    const std::string_view rest(text + position, length - position);
    auto comment = Make<MorlMultiCommentSentence>();
    const std::size_t end = rest.find("*/");
    comment->text = rest.substr(0, end);
    if (end == std::string_view::npos) {
        NoteLost(MorlLostKind::OpenComment, tokenStart);
    }
    for (std::size_t i = 0; i < comment->text.size(); ++i) {
        PeekNext();
    }
    if (!Eof()) {
        Advance(2);
    }
    return comment.release();
}

MorlSentence* MorlParser::ParseDefinitionSentence(ENUM_TOKEN varType, std::string_view typeText)
{
    PushLoction();
    std::string_view name;
    if (ParseToken(name) != TOKEN_IDENTIFIER) {
        LogErrorAndSkipLine(messages::kNotValidVar, name);
        return nullptr;
    }
    SkipSpace();
    if (Current() == '=') {
        PopLoction();
        return ParseAssignSentence(varType, typeText, true);
    }
    auto definition = Make<MorlDefinitionSentence>();
    definition->varType = varType;
    definition->name = name;
    switch (Current()) {
    case '[':
        Advance(1);
        return ParseArraySize(definition->arraySize) ? definition.release() : nullptr;
    case ';':
        Advance(1);
        return definition.release();
    default:
        LogErrorAndSkipLine(messages::kWrongDefinition, name);
        return nullptr;
    }
}

// `token` is the type of a definition, or TOKEN_IDENTIFIER, in which case the target is read again
// from the saved location, where the statement began. If the first word starts with "$", the
// statement is an assignment to a macro.
MorlAssignSentence* MorlParser::ParseAssignSentence(ENUM_TOKEN token, std::string_view firstWord,
                                                    bool withSemicolon)
{
    const std::uint32_t start = tokenStart;
    if (token == TOKEN_IDENTIFIER) {
        PopLoction();
    }
    std::unique_ptr<MorlExpression> target(ParseExpression(nullptr));
    if (!IsAssignable(target.get())) {
        if (target) {
            NoteLost(MorlLostKind::Statement, start);
        }
        return nullptr;
    }
    ENUM_TOKEN operatorToken = TOKEN_NONE;
    std::unique_ptr<MorlExpression> value;
    if (target->unitType != TOKEN_UNARY_OPERATION) {
        std::string_view word;
        operatorToken = ParseToken(word);
        if (!IsAssignOperator(operatorToken)) {
            LogErrorAndSkipLine(messages::kNeedAssignOperator, word);
            return nullptr;
        }
        value.reset(ParseExpression(nullptr));
        if (!value) {
            return nullptr;
        }
    }
    if (withSemicolon && !CheckSkip(';')) {
        return nullptr;
    }
    const bool macro = !firstWord.empty() && firstWord.front() == '$';
    marcoSentences += macro ? 1 : 0;
    std::unique_ptr<MorlAssignSentence> sentence =
        macro ? Make<MorlMarcoAssignSentence>() : Make<MorlAssignSentence>();
    sentence->varType = token == TOKEN_IDENTIFIER ? TOKEN_NONE : token;
    sentence->target = target.release();
    sentence->operatorToken = operatorToken;
    sentence->value = value.release();
    sentence->withSemicolon = withSemicolon;
    return sentence.release();
}

// There is no `while` loop: the keyword is read and yields nothing.
MorlSentence* MorlParser::ParseControlSentence(ENUM_TOKEN token)
{
    if (token == TOKEN_IF) {
        return ParseIfSentence(false);
    }
    if (token == TOKEN_FOR) {
        return ParseForSentence();
    }
    if (token != TOKEN_ELSE) {
        NoteLost(MorlLostKind::While, tokenStart);
        return nullptr;
    }
    std::string_view word;
    if (ParseToken(word) == TOKEN_IF) {
        return ParseIfSentence(true);
    }
    LogErrorAndSkipLine(messages::kNeedIf, word);
    return nullptr;
}

MorlSentence* MorlParser::ParseIfSentence(bool isElseIf)
{
    if (!CheckSkip('(')) {
        return nullptr;
    }
    std::unique_ptr<MorlExpression> condition(ParseExpression(nullptr));
    if (!condition) {
        LogErrorAndSkipLine(messages::kConditionError);
        return nullptr;
    }
    if (!CheckSkip(')')) {
        return nullptr;
    }
    std::unique_ptr<MorlIfSentence> sentence =
        isElseIf ? Make<MorlElseIfSentence>() : Make<MorlIfSentence>();
    sentence->condition = condition.release();
    if (!ParseBlock(sentence->sentences, sentence->endOffset)) {
        return nullptr;
    }
    PushLoction();
    std::string_view word;
    if (ParseToken(word) != TOKEN_ELSE) {
        PopLoction();
        return sentence.release();
    }
    sentence->elseOffset = tokenStart;
    return ParseBlock(sentence->elseSentences, sentence->elseEndOffset) ? sentence.release()
                                                                        : nullptr;
}

MorlSentence* MorlParser::ParseForSentence()
{
    if (!CheckSkip('(')) {
        return nullptr;
    }
    auto sentence = Make<MorlForSentence>();
    sentence->init = ParseSentence();
    if (sentence->init == nullptr || (sentence->init->unitType != TOKEN_EMPTY_SENTENCE &&
                                      sentence->init->unitType != TOKEN_ASSIGN)) {
        LogErrorAndSkipLine(messages::kNeedAssignExpression);
        return nullptr;
    }
    sentence->condition = ParseExpression(nullptr);
    if (sentence->condition == nullptr || sentence->condition->unitType != TOKEN_BINARY_OPERATION) {
        LogErrorAndSkipLine(messages::kNeedControlExpression);
        return nullptr;
    }
    if (!CheckSkip(';')) {
        return nullptr;
    }
    PushLoction();
    sentence->step = ParseAssignSentence(TOKEN_IDENTIFIER, "", false);
    if (!CheckSkip(')') || !ParseBlock(sentence->sentences, sentence->endOffset)) {
        return nullptr;
    }
    return sentence.release();
}

MorlSentence* MorlParser::ParseMarcoSentence(ENUM_TOKEN token)
{
    ++marcoSentences;
    switch (token) {
    case TOKEN_MARCO_IF:
        return ParseMarcoIfSentence();
    case TOKEN_MARCO_FOR:
        return ParseMarcoForSentence();
    default:
        return nullptr;
    }
}

// The body of an `if` or `for`: statements in braces, or one statement. False if the "}" is
// missing.
bool MorlParser::ParseBlock(std::vector<MorlSentence*>& sentences, std::uint32_t& endOffset)
{
    SkipSpace();
    bool isClosed = true;
    ++blockDepth;
    if (Current() == '{') {
        PeekNext();
        isClosed = ParseBracedSentences(sentences);
        endOffset = position - 1;
    } else {
        AppendOwned(sentences, std::unique_ptr<MorlSentence>(ParseSentence()));
        endOffset = position - 1;
        SkipSpace();
    }
    --blockDepth;
    return isClosed;
}

// What follows a "{", up to and including its "}".
bool MorlParser::ParseBracedSentences(std::vector<MorlSentence*>& sentences)
{
    SkipSpace();
    while (!Eof() && Current() != '}') {
        const std::uint32_t start = position;
        AppendOwned(sentences, std::unique_ptr<MorlSentence>(ParseSentence()));
        if (position == start && !Eof()) {
            SkipUnexpected();
        }
        SkipSpace();
    }
    return CheckSkip('}');
}

// Reports a character that begins no statement, and skips the line. A run of non-ASCII characters
// is reported whole, so that the message never cuts a UTF-8 character.
void MorlParser::SkipUnexpected()
{
    const std::string_view rest(text + position, length - position);
    const auto ascii = [](char c) { return static_cast<unsigned char>(c) < 128; };
    const auto end = std::find_if(rest.begin(), rest.end(), ascii);
    const auto count = std::max<std::ptrdiff_t>(end - rest.begin(), 1);
    LogErrorAndSkipLine(messages::kUnexpectedCharacter,
                        std::string(rest.substr(0, static_cast<std::size_t>(count))));
}

}  // namespace ns_ruke
