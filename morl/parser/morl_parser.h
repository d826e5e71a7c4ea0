// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/program.h"
#include "morl/core/export.h"
#include "morl/core/text_lines.h"
#include "morl/parser/keyword_map.h"
#include "morl/parser/token.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ns_ruke {

/// Reads one source text of the Morl language and builds its syntax tree: a recursive-descent
/// parser that works on the characters themselves, without a token stream.
///
/// Problems are logged as errors of the category "Graphics", each beginning with its location,
/// "Morl Compiler(line:L,ch:C): " (1-based; the column counts bytes), and parsing goes on with the
/// next line: the program receives what could be read.
///
/// A parser may be used for any number of texts, by one thread at a time.
class MORL_API MorlParser {
public:
    MorlParser();
    MorlParser(const MorlParser&) = default;
    MorlParser& operator=(const MorlParser&) = default;
    virtual ~MorlParser();

    /// Fills the keyword table. The constructor already does this; calling it again changes
    /// nothing.
    void Init();

    /// Parses a whole text and adds what it declares to `program`.
    /// @param source need only live during the call.
    void Parse(const std::string& source, MorlProgram& program);

    // Classification of tokens and words. These depend on the argument alone.
    bool IsGlobalBuffer(ENUM_TOKEN token) const;
    /// The types of variables; not `void`, and not the matrix helpers, which are functions.
    bool IsVarType(ENUM_TOKEN token) const;
    bool IsRegister(ENUM_TOKEN token) const;
    bool IsControl(ENUM_TOKEN token) const;
    /// Whether a name can be called. False for every name, so the parser does not ask: the language
    /// has no user functions.
    bool IsFunction(std::string name) const;
    bool IsAssignOperator(ENUM_TOKEN token) const;
    bool IsBinaryOperator(ENUM_TOKEN token) const;
    bool IsUnaryOperator(ENUM_TOKEN token) const;
    bool IsSpecialKeyWord(ENUM_TOKEN token) const;
    bool IsSystemFunction(ENUM_TOKEN token) const;
    bool IsKeyword(std::string& word) const;
    /// How tightly an operator binds: from 5 (tightest) to 0 ("&&", "||" and anything that is not
    /// an operator).
    int GetOperatorPriority(ENUM_TOKEN token) const;

private:
    class Nesting;

    // Characters and tokens.
    bool Eof() const { return position >= length; }
    char Current() const { return text[position]; }
    void PeekNext();
    void Advance(std::uint32_t count);
    void SkipSpace();
    void SkipLine();
    void PushLoction();
    void PopLoction();
    bool CheckSkip(char expected);
    ENUM_TOKEN ParseToken(std::string_view& word);
    ENUM_TOKEN ParseSymbol();
    void ParseNumber(std::string_view& word);
    bool ValidVariable(char c, bool first) const;
    bool IsNumber(char c, bool allowDot) const;
    bool IsSpace(char c) const;
    bool IsEnter(char c) const;
    TextPlace Place() const;
    std::string GetLocation() const;
    template <class Unit>
    std::unique_ptr<Unit> Make();
    /// What copying all that has been read will cost the linker, in units of kMaxLinkWork.
    /// @param units, start the values of `unitsMade` and `position` before it
    std::uint32_t WorkSince(std::uint32_t units, std::uint32_t start) const;
    /// Log a message with the current location. Callers pass the parts of a message, because
    /// building its text themselves would enlarge the stack frames of the recursive rules.
    void LogError(const char* message, std::string_view word = {}) const;
    void LogErrorAndSkipLine(const char* message, std::string_view word = {});
    void SkipTooDeep(int open);
    void SkipConstruct(std::uint32_t start, int open);
    std::uint32_t EndOfConstruct(std::uint32_t start, int open) const;

    // Expressions.
    MorlExpression* ParseExpression(MorlBinaryOperation* parent);
    MorlExpression* ParsePrimary(bool& failed);
    MorlExpression* ParsePrefixMinus();
    bool OperandEnds() const;
    MorlExpression* ParseNextExpression(MorlBinaryOperation* parent, MorlExpression* left);
    MorlExpression* ParseOperation(MorlBinaryOperation* parent, MorlExpression* left,
                                   ENUM_TOKEN operatorToken);
    MorlExpression* ParseIndex(MorlExpression* left);
    MorlParenthesiseExpression* ParseParenthesiseExpression();
    MorlFunctionCall* ParseFunctionCall(ENUM_TOKEN token, std::string_view name);
    bool ParseParameter(int expectedCount, std::vector<MorlExpression*>& arguments);

    // Declarations and functions.
    MorlDeclare* ParseGlobalDeclare(ENUM_TOKEN bufferToken);
    bool ParseVarDeclare(ENUM_TOKEN& varType, std::string& name);
    bool ParseArraySize(MorlExpression*& size);
    MorlRegister* ParseRegister();
    MorlRegister* ParseNamedRegister();
    MorlFunction* ParseFunction(ENUM_TOKEN returnType);
    void ParseParameter(std::vector<MorlDeclare*>& parameters);
    void AppendParameter(std::vector<MorlDeclare*>& parameters, ENUM_TOKEN type,
                         const std::string& name);
    void ParseFunctionBody(std::vector<MorlSentence*>& sentences);

    // Statements.
    MorlSentence* ParseSentence();
    MorlSentence* ParseSentenceOf(ENUM_TOKEN token, std::string_view word);
    MorlSpecialSentence* ParseSpecialSentence(ENUM_TOKEN keyword);
    MorlSentence* ParseComment(ENUM_TOKEN token);
    MorlSentence* ParseSingleComment();
    MorlSentence* ParseMultiComment();
    MorlSentence* ParseDefinitionSentence(ENUM_TOKEN varType, std::string_view typeText);
    MorlAssignSentence* ParseAssignSentence(ENUM_TOKEN token, std::string_view firstWord,
                                            bool withSemicolon);
    MorlSentence* ParseControlSentence(ENUM_TOKEN token);
    MorlSentence* ParseIfSentence(bool isElseIf);
    MorlSentence* ParseForSentence();
    MorlSentence* ParseMarcoSentence(ENUM_TOKEN token);
    bool ParseBlock(std::vector<MorlSentence*>& sentences, std::uint32_t& endOffset);
    bool ParseBracedSentences(std::vector<MorlSentence*>& sentences);
    void SkipUnexpected();

    // Program segments and macro blocks.
    void ParseProgram(MorlProgram& program);
    void ParseProgramSegment(MorlProgram* program);
    void ParseGlobalSegment(MorlProgram* program, ENUM_TOKEN bufferToken);
    void ParseFunctionSegment(MorlProgram* program, ENUM_TOKEN returnType);
    void ParseMarcoIfProgramSegment(MorlProgram* program);
    void ParseMarcoForProgramSegment(MorlProgram* program);
    bool ParseMarcoForHead(std::string& name, int& start);
    ENUM_TOKEN ParseBlockToken(const char* closingWord);
    MorlMarcoIfSentence* ParseMarcoIfSentence();
    MorlMarcoForSentence* ParseMarcoForSentence();

    void NoteLostToken(ENUM_TOKEN token);
    void NoteLostBlock(std::uint32_t offset, std::uint32_t cause);
    void NoteLostMain(const MorlProgram& part);
    void NoteLost(MorlLostKind kind, std::uint32_t offset, std::uint32_t cause = 0);

    KeywordMap keywords;
    const char* text = nullptr;  ///< the caller's text; ends in a NUL at `length`
    std::uint32_t length = 0;
    std::uint32_t position = 0;
    std::int32_t line = 0;         ///< 0-based
    std::uint32_t lineStart = 0;   ///< where the line begins
    std::uint32_t tokenStart = 0;  ///< where the last token begins
    std::uint32_t savedPosition = 0;
    std::int32_t savedLine = 0;
    std::uint32_t savedLineStart = 0;

    std::uint32_t unitsMade = 0;   ///< of the tree, and lines that they will have
    std::uint32_t blockDepth = 0;  ///< how many `if` and `for` the current statement is in
    /// How many macro statements have been met.
    unsigned marcoSentences = 0;
    /// The current nesting, in units of kMaxNesting.
    unsigned nesting = 0;
    /// Whether what is being read lies around a construct that nests too deeply. Nothing more is
    /// said of it, or skipped, until the next statement or segment.
    bool isUnwinding = false;
    /// The operation that the last finished operation took as its left operand (see
    /// ParseOperation).
    const MorlBinaryOperation* adopted = nullptr;
    std::vector<MorlLostCode>* lost = nullptr;  ///< of the program that is being parsed
};

}  // namespace ns_ruke
