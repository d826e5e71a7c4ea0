// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/call_forms.h"
#include "morl/translator/morl_translator.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ns_ruke {

/// The walk over statements and expressions, and the layout of their text, which all targets share.
/// For whatever differs by target, it calls the virtual operations of a translator.
///
/// A null node appends nothing.
class Walk {
public:
    /// @param hooks,appended must outlive the walk.
    Walk(MorlTranslator& hooks, std::string& appended)
        : translator(hooks), text(appended), writing(hooks)
    {
    }

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

    /// A call in the target's own form for it, if there is one, or in the usual form.
    void Call(MorlFunctionCall* call, const CallForms& forms);
    /// A call in the usual form: the name, and the arguments in parentheses.
    void PlainCall(MorlFunctionCall* call);

private:
    void Indent(int indent);
    CallArguments Arguments(MorlFunctionCall* call, const CallForm& form);
    std::string Argument(MorlFunctionCall* call, std::size_t index, bool isRepeated);
    std::string Comparison(MorlFunctionCall* call);
    bool ReserveRepeatedText(const MorlFunctionCall* call, std::size_t size);
    static void ReportMissingArguments(const MorlFunctionCall* call);

    MorlTranslator& translator;
    std::string& text;
    MorlTranslator::Writing writing;
};

/// The text that a part of the walk writes.
template <class Part>
std::string Collect(MorlTranslator& translator, const Part& part)
{
    std::string text;
    Walk walk(translator, text);
    part(walk);
    return text;
}

}  // namespace ns_ruke
