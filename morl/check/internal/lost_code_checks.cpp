// SPDX-License-Identifier: MIT
#include "morl/check/internal/lost_code_checks.h"

#include "morl/ast/sentences.h"
#include "morl/check/internal/condition_order.h"
#include "morl/check/internal/hint_words.h"
#include "morl/core/nearest.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace ns_ruke {
namespace {

/// Looks for lost code in the tree of one node, and in what its parser has noted.
class LostCodeChecker {
public:
    LostCodeChecker(const MorlNode& newNode, int newIndex,
                    const std::unordered_map<std::string, int>& newMacros, WarningList& newWarnings)
        : node(newNode),
          index(newIndex),
          macros(newMacros),
          warnings(newWarnings),
          program(*newNode.Program())
    {
    }

    void Run()
    {
        for (const MorlLostCode& lost : program.lostCode) {
            CheckNoted(lost);
        }
        for (const MorlFunction* function : program.functions) {
            CheckFunction(*function);
        }
        for (const auto* list : {&program.inputs, &program.outputs, &program.uniforms}) {
            for (const MorlDeclare* declare : *list) {
                CheckDeclare(*declare);
            }
        }
        if (program.mainFunction != nullptr) {
            Check(program.mainFunction->sentences, false);
        }
    }

private:
    void Warn(CheckKind kind, std::uint32_t offset, std::string_view name = {},
              std::string_view hint = {})
    {
        warnings.Add(kind, index, offset, name, hint);
    }

    std::string LineOf(std::uint32_t offset) const
    {
        return std::to_string(node.PlaceOf(offset).line);
    }

    /// After an error, what follows on its line is lost as well; the error says enough.
    void CheckNoted(const MorlLostCode& lost)
    {
        if (IsTold(lost)) {
            return;
        }
        switch (lost.kind) {
        case MorlLostKind::OpenComment:
            Warn(CheckKind::OpenComment, lost.offset);
            break;
        case MorlLostKind::Statement:
        case MorlLostKind::Semicolon:
        case MorlLostKind::Word:
            WarnOfNoEffect(lost.offset);
            break;
        case MorlLostKind::Block:
            Warn(CheckKind::BrokenBlock, lost.offset, LineOf(lost.cause));
            break;
        case MorlLostKind::OpenBlock:
            Warn(CheckKind::OpenBlock, lost.offset, LineOf(lost.cause));
            break;
        case MorlLostKind::Directive:
            Warn(CheckKind::StrayDirective, lost.offset, WordAt(lost.offset));
            break;
        case MorlLostKind::While:
            Warn(CheckKind::While, lost.offset);
            lastLine = node.PlaceOf(lost.offset).line;
            break;
        case MorlLostKind::Main:
            Warn(CheckKind::SecondMain, lost.offset, LineOf(lost.cause));
            break;
        case MorlLostKind::MainInBlock:
            Warn(CheckKind::MainInBlock, lost.offset);
            break;
        }
    }

    /// Whether a fault of the node, or an earlier warning, says as much.
    bool IsTold(const MorlLostCode& lost) const
    {
        const std::vector<ReportFault>& faults = node.GetFaults();
        switch (lost.kind) {
        case MorlLostKind::Main:
        case MorlLostKind::MainInBlock:
            return false;
        case MorlLostKind::While: {
            const int line = node.PlaceOf(lost.offset).line;
            return std::any_of(faults.begin(), faults.end(),
                               [line](const ReportFault& fault) { return fault.line == line; });
        }
        case MorlLostKind::Block:
        case MorlLostKind::OpenBlock:
        case MorlLostKind::Directive:
            return !faults.empty() || hasTornHead;
        default:
            return !faults.empty();
        }
    }

    /// At most once per line: one bad statement drops several tokens.
    void WarnOfNoEffect(std::uint32_t offset)
    {
        const int line = node.PlaceOf(offset).line;
        if (line != lastLine) {
            const std::string& content = node.Content();
            const std::size_t end = std::min(content.find(';', offset), content.size());
            const bool compares =
                content.substr(offset, end - offset).find("==") != std::string::npos;
            Warn(KindOfLost(offset), offset, {}, compares ? "; '=' assigns" : "");
        }
        lastLine = line;
    }

    CheckKind KindOfLost(std::uint32_t offset)
    {
        const std::string_view content = node.Content();
        const std::size_t lineBreak = content.substr(0, offset).rfind('\n');
        const std::size_t line = lineBreak == std::string_view::npos ? 0 : lineBreak + 1;
        if ((content[offset] == '=' || content[offset] == ';') &&
            content.substr(line, 3) == "#if") {
            hasTornHead = true;
            return CheckKind::TornCondition;
        }
        const std::string word = WordAt(offset);
        const bool isDeclaration = word == "uniform" || word == "in" || word == "out";
        return isDeclaration ? CheckKind::LostDeclaration : CheckKind::NoEffect;
    }

    std::string WordAt(std::uint32_t offset) const
    {
        const std::string& content = node.Content();
        return content.substr(offset, content.find_first_of(" \t\r\n/;}", offset) - offset);
    }

    void CheckFunction(const MorlFunction& function)
    {
        if (function.unitType != TOKEN_FUNCTION || !node.GetFaults().empty()) {
            return;
        }
        const bool isAlmostMain = program.mainFunction == nullptr &&
                                  !NearestName({"main", "Main", "MAIN"}, function.name).empty();
        Warn(CheckKind::UnusedFunction, function.offset, function.name,
             DidYouMean(isAlmostMain ? "main" : "", "; "));
    }

    void CheckDeclare(const MorlDeclare& declare)
    {
        if (declare.unitType == TOKEN_MARCO_IF_DECLARE) {
            const auto& group = static_cast<const MorlMarcoIfDeclare&>(declare);
            CheckCondition(group.condition);
            for (const auto* list : {&group.declares, &group.elseDeclares}) {
                for (const MorlDeclare* member : *list) {
                    CheckDeclare(*member);
                }
            }
        }
        if (declare.unitType == TOKEN_MARCO_FOR_DECLARE) {
            for (const MorlDeclare* member :
                 static_cast<const MorlMarcoForDeclare&>(declare).declares) {
                if (member->unitType != TOKEN_DECLARE) {
                    Warn(CheckKind::BlockInDeclareLoop, declare.offset);
                }
            }
        }
    }

    void Check(const std::vector<MorlSentence*>& sentences, bool isLoopBody)
    {
        for (const MorlSentence* sentence : sentences) {
            if (sentence != nullptr && sentence->mayExpand) {
                Check(*sentence, isLoopBody);
            }
        }
    }

    void Check(const MorlSentence& sentence, bool isLoopBody)
    {
        switch (sentence.unitType) {
        case TOKEN_MARCO_IF_SENTENCE: {
            const auto& block = static_cast<const MorlMarcoIfSentence&>(sentence);
            CheckCondition(block.condition);
            CheckPlace(sentence, isLoopBody);
            Check(block.sentences, false);
            Check(block.elseSentences, false);
            break;
        }
        case TOKEN_MARCO_FOR_SENTENCE:
            CheckPlace(sentence, isLoopBody);
            ++loops;
            Check(static_cast<const MorlMarcoForSentence&>(sentence).sentences, false);
            --loops;
            break;
        case TOKEN_MARCO_ASSIGN_SENTENCE: {
            CheckPlace(sentence, isLoopBody);
            const MorlExpression* target = static_cast<const MorlAssignSentence&>(sentence).target;
            if (target != nullptr && target->unitType != TOKEN_IDENTIFIER) {
                Warn(CheckKind::MacroStep, sentence.offset);
            }
            break;
        }
        case TOKEN_IF:
        case TOKEN_ELSE:
            Check(static_cast<const MorlIfSentence&>(sentence).sentences, false);
            Check(static_cast<const MorlIfSentence&>(sentence).elseSentences, false);
            break;
        case TOKEN_FOR:
            Check(static_cast<const MorlForSentence&>(sentence).sentences, true);
            break;
        default:
            break;
        }
    }

    void CheckCondition(const MorlExpression* condition)
    {
        // In a '#for', its counter has other values than its macro.
        if (loops == 0 && condition != nullptr && CountsOtherwise(*condition, macros)) {
            Warn(CheckKind::ConditionOrder, condition->offset);
        }
    }

    void CheckPlace(const MorlSentence& sentence, bool isLoopBody)
    {
        if (isLoopBody) {
            Warn(CheckKind::BlockInLoop, sentence.offset);
        }
    }

    const MorlNode& node;
    int index;
    const std::unordered_map<std::string, int>& macros;
    WarningList& warnings;
    const MorlProgram& program;
    int loops = 0;             ///< around the statement, of those over a macro
    bool hasTornHead = false;  ///< whether the condition of a macro block has been torn
    int lastLine = 0;          ///< on which something without effect was found
};

}  // namespace

const MorlLostCode* FindDropped(const MorlNode& node, std::string_view name)
{
    if (node.Program() == nullptr) {
        return nullptr;
    }
    const std::string_view content = node.Content();
    const std::vector<MorlLostCode>& list = node.Program()->lostCode;
    const auto found = std::find_if(list.begin(), list.end(), [&](const MorlLostCode& lost) {
        const std::string_view rest = content.substr(lost.offset);
        return lost.kind == MorlLostKind::Statement && rest.substr(0, name.size()) == name &&
               (rest.size() == name.size() || !IsWordCharacter(rest[name.size()]));
    });
    return found != list.end() ? &*found : nullptr;
}

void CheckLostCode(const MorlNode& node, int index,
                   const std::unordered_map<std::string, int>& macros, WarningList& warnings)
{
    const MorlProgram* program = node.Program();
    if (program != nullptr &&
        (program->hasMacros || !program->lostCode.empty() || !program->functions.empty())) {
        LostCodeChecker(node, index, macros, warnings).Run();
    }
}

}  // namespace ns_ruke
