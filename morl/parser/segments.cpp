// SPDX-License-Identifier: MIT
// program   -> { segment }
// segment   -> declare | function | comment | macro if | macro for
// macro if  -> "#if" expression { part } [ "#else" { part } ] "#endif"
// macro for -> "#for" Name ":" Number { part } "#endfor"
// part      -> segment at program level, sentence inside a function
#include "morl/ast/internal/ownership.h"
#include "morl/core/messages.h"
#include "morl/core/string_helper.h"
#include "morl/parser/internal/make_unit.h"
#include "morl/parser/internal/nesting.h"
#include "morl/parser/morl_parser.h"

#include <array>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace ns_ruke {
namespace {

using DeclareList = std::vector<MorlDeclare*> MorlProgram::*;

/// The lists of declarations, in the order in which a macro block makes its groups.
constexpr std::array<DeclareList, 3> kDeclareLists = {&MorlProgram::inputs, &MorlProgram::outputs,
                                                      &MorlProgram::uniforms};

/// The two branches of a program-level `#if` block while it is being read.
struct Branches {
    MorlProgram thenPart;
    MorlProgram elsePart;
};

std::unique_ptr<MorlMarcoIfDeclare> MakeIfGroup(const Branches& branches, DeclareList list)
{
    if ((branches.thenPart.*list).empty() && (branches.elsePart.*list).empty()) {
        return nullptr;
    }
    auto group = std::make_unique<MorlMarcoIfDeclare>();
    group->bufferType = TOKEN_IN;  // the same in all three lists; only the list tells the kind
    return group;
}

/// Turns the branches of an `#if` block into groups of `program`. Everything that can fail comes
/// first, so that the elements always have exactly one owner.
void AppendIfGroups(MorlProgram& program, Branches& branches, const MorlSharedCondition& condition)
{
    std::array<std::unique_ptr<MorlMarcoIfDeclare>, kDeclareLists.size()> groups;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        groups[i] = MakeIfGroup(branches, kDeclareLists[i]);
        ReserveMore(program.*kDeclareLists[i], groups[i] ? 1 : 0);
    }
    std::unique_ptr<MorlMarcoIfFunction> functions;
    if (!branches.thenPart.functions.empty() || !branches.elsePart.functions.empty()) {
        functions = std::make_unique<MorlMarcoIfFunction>();
        ReserveMore(program.functions, 1);
    }
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i]) {
            groups[i]->condition = condition.get();
            groups[i]->sharedCondition = condition;
            groups[i]->declares.swap(branches.thenPart.*kDeclareLists[i]);
            groups[i]->elseDeclares.swap(branches.elsePart.*kDeclareLists[i]);
            (program.*kDeclareLists[i]).push_back(groups[i].release());
        }
    }
    if (functions) {
        functions->condition = condition.get();
        functions->sharedCondition = condition;
        functions->functions.swap(branches.thenPart.functions);
        functions->elseFunctions.swap(branches.elsePart.functions);
        program.functions.push_back(functions.release());
    }
}

/// The head of a `#for`: name, start, offset.
struct ForHead {
    const std::string& name;
    int start;
    std::uint32_t offset;
};

std::unique_ptr<MorlMarcoForDeclare> MakeForGroup(const std::vector<MorlDeclare*>& declares,
                                                  const ForHead& head)
{
    if (declares.empty()) {
        return nullptr;
    }
    auto group = std::make_unique<MorlMarcoForDeclare>();
    group->bufferType = TOKEN_IN;  // as for `#if`
    group->offset = head.offset;
    group->varName = head.name;
    group->start = head.start;
    return group;
}

/// Turns the contents of a `#for` block into groups of `program`; what can fail comes first here
/// too.
void AppendForGroups(MorlProgram& program, MorlProgram& contents, const ForHead& head)
{
    std::array<std::unique_ptr<MorlMarcoForDeclare>, kDeclareLists.size()> groups;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        groups[i] = MakeForGroup(contents.*kDeclareLists[i], head);
        ReserveMore(program.*kDeclareLists[i], groups[i] ? 1 : 0);
    }
    std::unique_ptr<MorlMarcoForFunction> functions;
    if (!contents.functions.empty()) {
        functions = std::make_unique<MorlMarcoForFunction>();
        functions->varName = head.name;
        functions->start = head.start;
        ReserveMore(program.functions, 1);
    }
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i]) {
            groups[i]->declares.swap(contents.*kDeclareLists[i]);
            (program.*kDeclareLists[i]).push_back(groups[i].release());
        }
    }
    if (functions) {
        functions->functions.swap(contents.functions);
        program.functions.push_back(functions.release());
    }
}

}  // namespace

void MorlParser::ParseProgramSegment(MorlProgram* program)
{
    isUnwinding = false;
    std::string_view word;
    const ENUM_TOKEN token = ParseToken(word);
    if (token == TOKEN_MARCO_IF) {
        ParseMarcoIfProgramSegment(program);
    } else if (token == TOKEN_MARCO_FOR) {
        ParseMarcoForProgramSegment(program);
    } else if (IsGlobalBuffer(token)) {
        ParseGlobalSegment(program, token);
    } else if (IsVarType(token) || token == TOKEN_VOID) {
        ParseFunctionSegment(program, token);
    } else if (token == TOKEN_SINGLE_COMMENT || token == TOKEN_MULTI_COMMENT_BEGIN) {
        AppendOwned(program->comments, std::unique_ptr<MorlSentence>(ParseComment(token)));
    } else {
        LogErrorAndSkipLine(messages::kInvalidVarDeclare, word);
    }
}

void MorlParser::ParseGlobalSegment(MorlProgram* program, ENUM_TOKEN bufferToken)
{
    const std::uint32_t start = tokenStart;
    const std::uint32_t units = unitsMade;
    std::unique_ptr<MorlDeclare> declare(ParseGlobalDeclare(bufferToken));
    if (!declare) {
        if (isUnwinding) {
            SkipConstruct(start, 0);
        }
        return;
    }
    declare->copyWork = WorkSince(units, start) + kLinesOfDeclare;
    switch (declare->bufferType) {
    case TOKEN_UNIFORM:
        AppendOwned(program->uniforms, std::move(declare));
        break;
    case TOKEN_IN:
        AppendOwned(program->inputs, std::move(declare));
        break;
    default:
        AppendOwned(program->outputs, std::move(declare));
        break;
    }
}

// If several functions are named `main`, the last one wins.
void MorlParser::ParseFunctionSegment(MorlProgram* program, ENUM_TOKEN returnType)
{
    std::unique_ptr<MorlFunction> function(ParseFunction(returnType));
    if (function->name == "main") {
        if (program->mainFunction != nullptr) {
            NoteLost(MorlLostKind::Main, program->mainFunction->offset, function->offset);
        }
        delete program->mainFunction;
        program->mainFunction = function.release();
    } else {
        AppendOwned(program->functions, std::move(function));
    }
}

// Comments and a `main` inside the block are dropped with the temporary programs.
void MorlParser::ParseMarcoIfProgramSegment(MorlProgram* program)
{
    Nesting level(*this, kBlockNesting);
    if (level.ReportTooDeep(1)) {
        return;
    }
    ++marcoSentences;
    const MorlSharedCondition condition(ParseExpression(nullptr));
    const auto branches = std::make_unique<Branches>();
    MorlProgram* branch = &branches->thenPart;
    for (;;) {
        const ENUM_TOKEN token = ParseBlockToken("#endif");
        if (token == TOKEN_MARCO_ENDIF) {
            break;
        }
        if (token == TOKEN_MARCO_ELSE) {
            branch = &branches->elsePart;
        } else if (Eof()) {
            break;
        } else {
            ParseProgramSegment(branch);
        }
    }
    NoteLostMain(branches->thenPart);
    NoteLostMain(branches->elsePart);
    AppendIfGroups(*program, *branches, condition);
}

void MorlParser::ParseMarcoForProgramSegment(MorlProgram* program)
{
    Nesting level(*this, kBlockNesting);
    if (level.ReportTooDeep(1)) {
        return;
    }
    ++marcoSentences;
    const std::uint32_t offset = tokenStart;
    std::string name;
    int start = 0;
    if (!ParseMarcoForHead(name, start)) {
        return;
    }
    const auto contents = std::make_unique<MorlProgram>();
    while (ParseBlockToken("#endfor") != TOKEN_MARCO_ENDFOR && !Eof()) {
        ParseProgramSegment(contents.get());
    }
    NoteLostMain(*contents);
    AppendForGroups(*program, *contents, {name, start, offset});
}

void MorlParser::NoteLostMain(const MorlProgram& part)
{
    if (part.mainFunction != nullptr) {
        NoteLost(MorlLostKind::MainInBlock, part.mainFunction->offset);
    }
}

// Reads what follows "#for", up to and including the start value.
bool MorlParser::ParseMarcoForHead(std::string& name, int& start)
{
    std::string_view word;
    if (ParseToken(word) != TOKEN_IDENTIFIER) {
        LogErrorAndSkipLine(messages::kNotValidMarcoName, word);
        return false;
    }
    name = word;
    if (!CheckSkip(':')) {
        return false;
    }
    std::string_view number;
    if (ParseToken(number) != TOKEN_NUMBER) {
        LogErrorAndSkipLine(messages::kNotValidNumber, number);
        return false;
    }
    start = StringHelper::ConvertToInt32(std::string(number));
    return true;
}

// The next token of a macro block. The closing word, and "#else" in an "#if" block, are consumed;
// before anything else the parser stays where it is. At the end of the text, the closing word is
// reported as missing.
ENUM_TOKEN MorlParser::ParseBlockToken(const char* closingWord)
{
    SkipSpace();
    if (Eof()) {
        LogError(messages::kMiss, std::string(closingWord) + messages::kMissEnd);
        return TOKEN_NONE;
    }
    PushLoction();
    std::string_view word;
    const ENUM_TOKEN token = Current() == '#' ? ParseToken(word) : TOKEN_NONE;
    const bool closes = std::string_view(closingWord) == word;
    const bool divides = token == TOKEN_MARCO_ELSE && std::string_view(closingWord) == "#endif";
    if (closes || divides) {
        return token;
    }
    PopLoction();
    return TOKEN_NONE;
}

// If a statement yields nothing, the whole block is abandoned, and the enclosing body reads the
// rest of it as ordinary statements.
MorlMarcoIfSentence* MorlParser::ParseMarcoIfSentence()
{
    auto block = Make<MorlMarcoIfSentence>();
    block->condition = ParseExpression(nullptr);
    std::vector<MorlSentence*>* sentences = &block->sentences;
    for (;;) {
        const ENUM_TOKEN token = ParseBlockToken("#endif");
        if (token == TOKEN_MARCO_ENDIF) {
            return block.release();
        }
        if (token == TOKEN_MARCO_ELSE) {
            sentences = &block->elseSentences;
            continue;
        }
        const std::uint32_t start = position;
        std::unique_ptr<MorlSentence> sentence(Eof() ? nullptr : ParseSentence());
        if (!sentence) {
            NoteLostBlock(block->offset, start);
            return nullptr;
        }
        AppendOwned(*sentences, std::move(sentence));
    }
}

MorlMarcoForSentence* MorlParser::ParseMarcoForSentence()
{
    auto block = Make<MorlMarcoForSentence>();
    if (!ParseMarcoForHead(block->varName, block->start)) {
        return nullptr;
    }
    while (ParseBlockToken("#endfor") != TOKEN_MARCO_ENDFOR) {
        const std::uint32_t start = position;
        std::unique_ptr<MorlSentence> sentence(Eof() ? nullptr : ParseSentence());
        if (!sentence) {
            NoteLostBlock(block->offset, start);
            return nullptr;
        }
        AppendOwned(block->sentences, std::move(sentence));
    }
    return block.release();
}

// A block that is abandoned because what begins at `cause` yields nothing.
void MorlParser::NoteLostBlock(std::uint32_t offset, std::uint32_t cause)
{
    const bool isOpen = cause < length && text[cause] == '}';
    NoteLost(isOpen ? MorlLostKind::OpenBlock : MorlLostKind::Block, offset, cause);
}

}  // namespace ns_ruke
