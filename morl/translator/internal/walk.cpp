// SPDX-License-Identifier: MIT
#include "morl/translator/internal/walk.h"

#include "morl/core/internal/graphics_log.h"
#include "morl/core/limits.h"
#include "morl/core/messages.h"
#include "morl/translator/internal/target_spellings.h"

namespace ns_ruke {

template <class Answers>
void Walk<Answers>::Indent(int indent)
{
    for (int i = 0; i < indent; ++i) {
        text.Append('\t');
    }
}

// Macro statements are handled by the linker; any that remain are not written.
template <class Answers>
void Walk<Answers>::Sentence(MorlSentence* sentence, int indent)
{
    if (sentence == nullptr) {
        return;
    }
    answers.Mark(text, sentence->offset);
    switch (sentence->unitType) {
    case TOKEN_EMPTY_SENTENCE:
        EmptySentence(indent);
        break;
    case TOKEN_DEFINITION_SENTENCE:
        DefinitionSentence(static_cast<MorlDefinitionSentence*>(sentence), indent);
        break;
    case TOKEN_ASSIGN:
        AssignSentence(static_cast<MorlAssignSentence*>(sentence), indent);
        break;
    case TOKEN_IF:
    case TOKEN_ELSE:
        IfSentence(static_cast<MorlIfSentence*>(sentence), indent);
        break;
    case TOKEN_FOR:
        ForSentence(static_cast<MorlForSentence*>(sentence), indent);
        break;
    case TOKEN_SINGLE_COMMENT:
        SingleComment(static_cast<MorlSingleCommentSentence*>(sentence), indent);
        break;
    case TOKEN_MULTI_COMMENT:
        MultiComment(static_cast<MorlMultiCommentSentence*>(sentence), indent);
        break;
    case TOKEN_SPECIAL_SENTENCE:
        SpecialSentence(static_cast<MorlSpecialSentence*>(sentence), indent);
        break;
    default:
        break;
    }
}

template <class Answers>
void Walk<Answers>::Sentences(const std::vector<MorlSentence*>& sentences, int indent)
{
    for (MorlSentence* sentence : sentences) {
        Sentence(sentence, indent);
    }
}

template <class Answers>
void Walk<Answers>::EmptySentence(int indent)
{
    Indent(indent);
    text.Append("; \n");
}

template <class Answers>
void Walk<Answers>::SpecialSentence(MorlSpecialSentence* sentence, int indent)
{
    Indent(indent);
    text.Append(answers.Keyword(sentence->keyword), "; \n");
}

template <class Answers>
void Walk<Answers>::SingleComment(MorlSingleCommentSentence* sentence, int indent)
{
    Indent(indent);
    text.Append("//", sentence->text, '\n');
}

template <class Answers>
void Walk<Answers>::MultiComment(MorlMultiCommentSentence* sentence, int indent)
{
    Indent(indent);
    text.Append("/*", sentence->text, "*/\n");
    MarkLines(sentence);
}

/// A comment of several lines has several lines in the source. Called when it has been written.
template <class Answers>
void Walk<Answers>::MarkLines(const MorlMultiCommentSentence* sentence)
{
    constexpr std::size_t kOpen = 2;   // of the comment
    constexpr std::size_t kClose = 3;  // and the line break
    const std::string& comment = sentence->text;
    const std::size_t start = text.Size() - kClose - comment.size();
    for (std::size_t end = comment.find('\n'); end != std::string::npos;
         end = comment.find('\n', end + 1)) {
        const std::size_t offset = sentence->offset + kOpen + end + 1;
        answers.MarkAt(start + end + 1, static_cast<std::uint32_t>(offset));
    }
}

template <class Answers>
void Walk<Answers>::DefinitionSentence(MorlDefinitionSentence* sentence, int indent)
{
    Indent(indent);
    if (sentence->varType != TOKEN_NONE) {
        text.Append(answers.Type(sentence->varType), ' ');
    }
    text.Append(sentence->name);
    DefinitionArray(sentence->arraySize);
    text.Append(";\n");
}

template <class Answers>
void Walk<Answers>::AssignSentence(MorlAssignSentence* sentence, int indent)
{
    Indent(indent);
    if (sentence->varType != TOKEN_NONE) {
        text.Append(answers.Type(sentence->varType), ' ');
    }
    Expression(sentence->target);
    text.Append(' ', kAssignOperators.Text(sentence->operatorToken), ' ');
    Expression(sentence->value);
    if (sentence->withSemicolon) {
        text.Append(";\n");
    }
}

template <class Answers>
void Walk<Answers>::IfSentence(MorlIfSentence* sentence, int indent)
{
    Indent(indent);
    text.Append(sentence->unitType == TOKEN_ELSE ? "else if(" : "if(");
    Expression(sentence->condition);
    text.Append(" ) {\n");
    Sentences(sentence->sentences, indent + 1);
    End(sentence->endOffset, indent);
    if (sentence->elseSentences.empty()) {
        return;
    }
    answers.Mark(text, sentence->elseOffset);
    Indent(indent);
    text.Append("else { \n");
    Sentences(sentence->elseSentences, indent + 1);
    End(sentence->elseEndOffset, indent);
}

template <class Answers>
void Walk<Answers>::MainBody(const MorlProgram& linked)
{
    if (linked.mainFunction == nullptr) {
        return;
    }
    const std::vector<MorlSentence*>& sentences = linked.mainFunction->sentences;
    for (std::size_t i = 0; i < sentences.size(); ++i) {
        answers.BeginStatement(i);
        Sentence(sentences[i], 1);
    }
}

template <class Answers>
void Walk<Answers>::Global(MorlDeclare* declare)
{
    const auto buffer = answers.Buffer(declare->bufferType);
    const auto type = answers.Type(declare);
    text.Append(buffer, ' ', type, ' ', declare->name);
    DefinitionArray(declare->arraySize);
}

// The init statement ends with a semicolon and a line break; the line break is removed again.
template <class Answers>
void Walk<Answers>::ForSentence(MorlForSentence* sentence, int indent)
{
    Indent(indent);
    text.Append("for(");
    Sentence(sentence->init, 0);
    text.Truncate(text.Size() - 1);
    Expression(sentence->condition);
    text.Append(';');
    if (sentence->step != nullptr) {
        AssignSentence(sentence->step, 0);
    }
    text.Append(" ) {\n");
    Sentences(sentence->sentences, indent + 1);
    End(sentence->endOffset, indent);
}

/// The end of a block.
template <class Answers>
void Walk<Answers>::End(std::uint32_t offset, int indent)
{
    answers.Mark(text, offset);
    Indent(indent);
    text.Append("} \n");
}

template <class Answers>
void Walk<Answers>::DefinitionArray(MorlExpression* size)
{
    if (size != nullptr) {
        text.Append('[');
        Expression(size);
        text.Append(']');
    }
}

template <class Answers>
void Walk<Answers>::Expression(MorlExpression* expression)
{
    if (expression == nullptr) {
        return;
    }
    switch (expression->unitType) {
    case TOKEN_FUNCTION_CALL:
        FunctionCall(static_cast<MorlFunctionCall*>(expression));
        break;
    case TOKEN_UNARY_OPERATION:
        UnaryOperation(static_cast<MorlUnaryOperation*>(expression));
        break;
    case TOKEN_BINARY_OPERATION:
        BinaryOperation(static_cast<MorlBinaryOperation*>(expression));
        break;
    case TOKEN_PARENTHESISE_EXPRESSION:
        ParenthesiseExpression(static_cast<MorlParenthesiseExpression*>(expression));
        break;
    case TOKEN_IDENTIFIER:
        answers.AppendVariable(text, static_cast<MorlVariable*>(expression));
        break;
    case TOKEN_NUMBER:
        text.Append(static_cast<MorlNumber*>(expression)->value);
        break;
    default:
        break;
    }
}

// The operator is always written before its operand, although the source has it after.
template <class Answers>
void Walk<Answers>::UnaryOperation(MorlUnaryOperation* operation)
{
    text.Append(answers.Operator(operation->operatorToken));
    Expression(operation->operand);
}

// No parentheses are added: the source's own are nodes of the tree.
template <class Answers>
void Walk<Answers>::BinaryOperation(MorlBinaryOperation* operation)
{
    Expression(operation->left);
    if (operation->operatorToken == TOKEN_INDEX) {
        text.Append('[');
        Expression(operation->right);
        text.Append(']');
        return;
    }
    text.Append(answers.Operator(operation->operatorToken));
    Expression(operation->right);
}

template <class Answers>
void Walk<Answers>::ParenthesiseExpression(MorlParenthesiseExpression* expression)
{
    text.Append('(');
    Expression(expression->expression);
    text.Append(')');
}

template <class Answers>
void Walk<Answers>::FunctionCall(MorlFunctionCall* call)
{
    answers.Ask(
        text, [call](MorlTranslator& hooks) { return hooks.WriteFunctionCall(call); },
        [this, call](auto& record) { Call(call, record.spellings.callForms); });
}

template <class Answers>
void Walk<Answers>::Call(MorlFunctionCall* call, const CallForms& forms)
{
    const CallForm* form = forms.Find(call->functionToken);
    if (form == nullptr) {
        PlainCall(call);
    } else {
        FormedCall(call, *form);
    }
}

// Forms that write each argument once need no text of its own for it.
template <class Answers>
void Walk<Answers>::FormedCall(MorlFunctionCall* call, const CallForm& form)
{
    switch (form.layout) {
    case CallLayout::Matrix:
        text.Append(form.matrix, '(');
        SeparatedArguments(call, form, ',');
        text.Append(form.end);
        break;
    case CallLayout::Product:
        SeparatedArguments(call, form, '*');
        break;
    case CallLayout::Saturate:
        text.Append("clamp(");
        SeparatedArguments(call, form, ',');
        text.Append(",0.0,1.0)");
        break;
    case CallLayout::Transposed:
        AppendTransposed(text, form, Arguments(call, form));
        break;
    case CallLayout::Sampling:
        AppendSampling(text, Arguments(call, form));
        break;
    }
}

// As many arguments as the form reads; missing ones are reported once and are empty.
template <class Answers>
void Walk<Answers>::SeparatedArguments(MorlFunctionCall* call, const CallForm& form, char separator)
{
    if (call->arguments.size() < form.arguments) {
        ReportMissingArguments(call);
    }
    for (std::size_t i = 0; i < form.arguments; ++i) {
        if (i > 0) {
            text.Append(separator);
        }
        if (i < call->arguments.size()) {
            Expression(call->arguments[i]);
        }
    }
}

template <class Answers>
void Walk<Answers>::PlainCall(MorlFunctionCall* call)
{
    text.Append(answers.FunctionName(call), '(');
    bool first = true;
    for (MorlExpression* argument : call->arguments) {
        if (!first) {
            text.Append(',');
        }
        first = false;
        Expression(argument);
    }
    text.Append(')');
}

// Arguments beyond those that the form reads are ignored. Missing ones are reported once and are
// empty. If the bound on repeated text is exceeded, all arguments are empty.
template <class Answers>
CallArguments Walk<Answers>::Arguments(MorlFunctionCall* call, const CallForm& form)
{
    if (call->arguments.size() < form.arguments) {
        ReportMissingArguments(call);
    }
    CallArguments texts;
    std::size_t size = 0;
    for (std::size_t i = 0; i < form.arguments && i < call->arguments.size(); ++i) {
        const bool isRepeated = i < form.repeated;
        texts[i] = Argument(call, i, isRepeated);
        size += isRepeated ? texts[i].size() : 0;
    }
    if (!ReserveRepeatedText(call, size * form.repeats)) {
        return {};
    }
    if (form.layout == CallLayout::Sampling && IsShadowMap(texts[0])) {
        texts[2] = Comparison(call);
    }
    return texts;
}

template <class Answers>
std::string Walk<Answers>::Argument(MorlFunctionCall* call, std::size_t index, bool isRepeated)
{
    const unsigned repeating = isRepeated ? 1 : 0;
    auto& repetition = answers.repetition;
    repetition.nested += repeating;
    Text argument;
    Walk(answers, argument).Expression(call->arguments[index]);
    repetition.nested -= repeating;
    return argument.Copy();
}

// The value that a shadow map is compared with.
template <class Answers>
std::string Walk<Answers>::Comparison(MorlFunctionCall* call)
{
    if (call->arguments.size() > 2) {
        return Argument(call, 2, false);
    }
    if (call->arguments.size() == 2) {  // with fewer, it has been reported
        ReportMissingArguments(call);
    }
    return {};
}

template <class Answers>
void Walk<Answers>::ReportMissingArguments(const MorlFunctionCall* call)
{
    LogGraphicsError(messages::kNotEnoughArguments + call->name);
}

// Only repetition inside repetition counts, because only that grows exponentially.
template <class Answers>
bool Walk<Answers>::ReserveRepeatedText(const MorlFunctionCall* call, std::size_t size)
{
    auto& repetition = answers.repetition;
    if (size == 0 || repetition.nested == 0) {
        return true;
    }
    if (repetition.bytes > kMaxRepeatedText) {
        return false;
    }
    repetition.bytes += size;
    if (repetition.bytes <= kMaxRepeatedText) {
        return true;
    }
    LogGraphicsError(messages::kExpressionTooLong + call->name);
    return false;
}

template class Walk<HookAnswers>;
template class Walk<RecordAnswers>;

}  // namespace ns_ruke
