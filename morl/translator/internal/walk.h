// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/answers.h"
#include "morl/translator/internal/text.h"
#include "morl/translator/internal/walk_part.h"
#include "morl/translator/morl_translator.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ns_ruke {

/// The walk over statements and expressions, and the layout of their text, which all targets share.
/// Whatever differs by target is in the answers.
///
/// A null node appends nothing.
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

    /// A global declaration: storage word, type and name. Begins a line.
    void Global(MorlDeclare* declare);
    /// The binding of a declaration: " : " and the semantic, the name in parentheses, the sampler's
    /// register or the texture coordinate. Nothing without a binding.
    void Binding(MorlDeclare* declare);
    /// The same without asking a translator.
    /// @param counter the number of the next texture coordinate
    void Binding(const MorlDeclare* declare, const MorlRegister* binding, std::uint32_t& counter);
    /// The entry function.
    void Main(const MorlProgram& linked);

    void FunctionCall(MorlFunctionCall* call);
    /// A call in the target's own form for it, if there is one, or in the usual form.
    void Call(MorlFunctionCall* call);
    /// A call in the usual form: the name, and the arguments in parentheses.
    void PlainCall(MorlFunctionCall* call);

    /// The line that is begun now is from this place of the current statement, or this declaration.
    void Mark(std::uint32_t offset) const;
    void Mark(const MorlDeclare* declare) const;

    Answers& answers;
    Text& text;

private:
    void InputConvert(const Declares& inputs);
    void OutputConvert(const Declares& outputs);
    void MainBody(const MorlProgram& linked);
    void Indent(int indent);
    void End(std::uint32_t offset, int indent);
    void MarkLines(const MorlMultiCommentSentence* sentence, WrittenLines& lines) const;
    void FormedCall(MorlFunctionCall* call, const CallForm& form);
    void SeparatedArguments(MorlFunctionCall* call, const CallForm& form, char separator);
    CallArguments Arguments(MorlFunctionCall* call, const CallForm& form);
    std::string Argument(MorlFunctionCall* call, std::size_t index, bool isRepeated);
    bool ReserveRepeatedText(const MorlFunctionCall* call, std::size_t size);
    static void ReportMissingArguments(const MorlFunctionCall* call);
};

/// The text that a part of the walk writes with a translator's operations.
/// @param target the record of the translator; null: it has none, or does not need it
std::string Collect(MorlTranslator& translator, const TargetRecord* target, const WalkPart& part);

}  // namespace ns_ruke
