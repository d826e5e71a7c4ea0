// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/answers.h"
#include "morl/translator/internal/call_forms.h"
#include "morl/translator/internal/text.h"
#include "morl/translator/morl_translator.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ns_ruke {

/// The walk over statements and expressions, and the layout of their text, which all targets share.
/// Whatever differs by target is answered by HookAnswers or RecordAnswers.
///
/// A null node appends nothing.
template <class Answers>
class Walk {
public:
    /// The arguments must outlive the walk.
    Walk(Answers& newAnswers, Text& appended) : answers(newAnswers), text(appended) {}

    void Sentence(MorlSentence* sentence, int indent);
    void Sentences(const std::vector<MorlSentence*>& sentences, int indent);
    void EmptySentence(int indent);
    void SpecialSentence(MorlSpecialSentence* sentence, int indent);
    void SingleComment(MorlSingleCommentSentence* sentence, int indent);
    void MultiComment(MorlMultiCommentSentence* sentence, int indent);
    void DefinitionSentence(MorlDefinitionSentence* sentence, int indent);
    void AssignSentence(MorlAssignSentence* sentence, int indent);
    void IfSentence(MorlIfSentence* sentence, int indent);
    void ForSentence(MorlForSentence* sentence, int indent);
    void DefinitionArray(MorlExpression* size);

    void Expression(MorlExpression* expression);
    void UnaryOperation(MorlUnaryOperation* operation);
    void BinaryOperation(MorlBinaryOperation* operation);
    void ParenthesiseExpression(MorlParenthesiseExpression* expression);

    /// A global declaration up to its array size: storage word, type, name, size.
    void Global(MorlDeclare* declare);
    /// The statements of a program's `main`, if it has one.
    void MainBody(const MorlProgram& linked);

    void FunctionCall(MorlFunctionCall* call);
    /// A call in the target's own form for it, if there is one, or in the usual form.
    void Call(MorlFunctionCall* call, const CallForms& forms);
    /// A call in the usual form: the name, and the arguments in parentheses.
    void PlainCall(MorlFunctionCall* call);

    Answers& answers;
    Text& text;

private:
    void Indent(int indent);
    void End(std::uint32_t offset, int indent);
    void MarkLines(const MorlMultiCommentSentence* sentence);
    void FormedCall(MorlFunctionCall* call, const CallForm& form);
    void SeparatedArguments(MorlFunctionCall* call, const CallForm& form, char separator);
    CallArguments Arguments(MorlFunctionCall* call, const CallForm& form);
    std::string Argument(MorlFunctionCall* call, std::size_t index, bool isRepeated);
    std::string Comparison(MorlFunctionCall* call);
    bool ReserveRepeatedText(const MorlFunctionCall* call, std::size_t size);
    static void ReportMissingArguments(const MorlFunctionCall* call);
};

extern template class Walk<HookAnswers>;
extern template class Walk<RecordAnswers>;

/// The text that a part of the walk writes with a translator's operations.
template <class Part>
std::string Collect(MorlTranslator& translator, const Part& part)
{
    HookAnswers answers(translator);
    Text text;
    Walk<HookAnswers> walk(answers, text);
    part(walk);
    return text.Copy();
}

}  // namespace ns_ruke
