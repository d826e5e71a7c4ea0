// SPDX-License-Identifier: MIT
#include "morl/translator/internal/walk.h"

#include "morl/core/internal/graphics_log.h"
#include "morl/core/limits.h"
#include "morl/core/messages.h"

#include <utility>

namespace ns_ruke {

void Walk::Mark(std::uint32_t offset) const
{
    if (WrittenLines* lines = answers.Lines()) {
        lines->Mark(text, offset);
    }
}

void Walk::Mark(const MorlDeclare* declare) const
{
    if (WrittenLines* lines = answers.Lines()) {
        lines->Mark(text, declare);
    }
}

void Walk::Indent(int indent)
{
    for (int i = 0; i < indent; ++i) {
        text.Append('\t');
    }
}

// Macro statements are handled by the linker; any that remain are not written.
void Walk::Sentence(MorlSentence* sentence, int indent)
{
    if (sentence == nullptr || answers.IsFull(text)) {
        return;
    }
    Mark(sentence->offset);
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

void Walk::Sentences(const std::vector<MorlSentence*>& sentences, int indent)
{
    for (MorlSentence* sentence : sentences) {
        Sentence(sentence, indent);
    }
}

void Walk::EmptySentence(int indent)
{
    Indent(indent);
    text.Append("; \n");
}

void Walk::SpecialSentence(MorlSpecialSentence* sentence, int indent)
{
    Indent(indent);
    answers.AppendKeyword(text, sentence->keyword);
    text.Append("; \n");
}

void Walk::SingleComment(MorlSingleCommentSentence* sentence, int indent)
{
    Indent(indent);
    text.Append("//", sentence->text, '\n');
}

void Walk::MultiComment(MorlMultiCommentSentence* sentence, int indent)
{
    Indent(indent);
    text.Append("/*", sentence->text, "*/\n");
    if (WrittenLines* lines = answers.Lines()) {
        MarkLines(sentence, *lines);
    }
}

// A comment of several lines has several lines in the source. Called when it has been written.
void Walk::MarkLines(const MorlMultiCommentSentence* sentence, WrittenLines& lines) const
{
    constexpr std::size_t kOpen = 2;   // of the comment
    constexpr std::size_t kClose = 3;  // and the line break
    const std::string& comment = sentence->text;
    const std::size_t start = text.Size() - kClose - comment.size();
    for (std::size_t end = comment.find('\n'); end != std::string::npos;
         end = comment.find('\n', end + 1)) {
        const std::size_t offset = sentence->offset + kOpen + end + 1;
        lines.MarkAt(start + end + 1, static_cast<std::uint32_t>(offset));
    }
}

void Walk::DefinitionSentence(MorlDefinitionSentence* sentence, int indent)
{
    Indent(indent);
    if (sentence->varType != TOKEN_NONE) {
        answers.AppendType(text, sentence->varType);
        text.Append(' ');
    }
    text.Append(sentence->name);
    DefinitionArray(sentence->arraySize);
    text.Append(";\n");
}

void Walk::AssignSentence(MorlAssignSentence* sentence, int indent)
{
    Indent(indent);
    if (sentence->varType != TOKEN_NONE) {
        answers.AppendType(text, sentence->varType);
        text.Append(' ');
    }
    Expression(sentence->target);
    text.Append(' ', kAssignOperators.Text(sentence->operatorToken), ' ');
    Expression(sentence->value);
    if (sentence->withSemicolon) {
        text.Append(";\n");
    }
}

void Walk::IfSentence(MorlIfSentence* sentence, int indent)
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
    Mark(sentence->elseOffset);
    Indent(indent);
    text.Append("else { \n");
    Sentences(sentence->elseSentences, indent + 1);
    End(sentence->elseEndOffset, indent);
}

void Walk::Main(const MorlProgram& linked)
{
    const TargetLayout& layout = answers.target->layout;
    layout.entry(*this);
    InputConvert(linked.inputs);
    OutputConvert(linked.outputs);
    MainBody(linked);
    layout.end(*this, linked.outputs);
    text.Append("}\n");
}

// Nothing, if the program has no `main`.
void Walk::MainBody(const MorlProgram& linked)
{
    if (linked.mainFunction == nullptr) {
        return;
    }
    const std::vector<MorlSentence*>& sentences = linked.mainFunction->sentences;
    for (std::size_t i = 0; i < sentences.size(); ++i) {
        if (WrittenLines* lines = answers.Lines()) {
            lines->BeginStatement(i);
        }
        Sentence(sentences[i], 1);
    }
}

void Walk::Global(MorlDeclare* declare)
{
    Mark(declare);
    answers.AppendBuffer(text, declare->bufferType);
    text.Append(' ');
    answers.AppendType(text, declare);
    text.Append(' ', declare->name);
}

void Walk::Binding(MorlDeclare* declare)
{
    MorlRegister* binding = declare->registerBinding;
    if (answers.hooks != nullptr) {
        text.Append(answers.hooks->WriteRegister(declare, binding));
    } else {
        Binding(declare, binding, answers.request->texcoordCounter);
    }
}

// The stage is only read for TEXAUTO.
void Walk::Binding(const MorlDeclare* declare, const MorlRegister* binding, std::uint32_t& counter)
{
    if (binding == nullptr) {
        return;
    }
    const TargetRecord& target = *answers.target;
    const ENUM_TOKEN token = binding->registerToken;
    text.Append(" : ", token == TOKEN_IDENTIFIER ? std::string_view(binding->name)
                                                 : target.semantics.Text(token));
    if (token == TOKEN_SAUTO) {
        AppendRegister(text, target.registerKind, answers.SamplerNumber(declare->name));
    } else if (token == TOKEN_TEXAUTO && target.writesBindings) {
        text.Append(answers.Texcoord(declare->name, counter));
    }
}

void Walk::InputConvert(const Declares& inputs)
{
    if (answers.hooks != nullptr) {
        text.Append(answers.hooks->WriteInputConvert(inputs));
    } else {
        answers.target->layout.inputConvert(*this, inputs);
    }
}

void Walk::OutputConvert(const Declares& outputs)
{
    if (answers.hooks != nullptr) {
        text.Append(answers.hooks->WriteOutputConvert(outputs));
    } else {
        answers.target->layout.outputConvert(*this, outputs);
    }
}

// The init statement ends with a semicolon and a line break; the line break is removed again.
void Walk::ForSentence(MorlForSentence* sentence, int indent)
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

// The end of a block.
void Walk::End(std::uint32_t offset, int indent)
{
    Mark(offset);
    Indent(indent);
    text.Append("} \n");
}

void Walk::DefinitionArray(MorlExpression* size)
{
    if (size != nullptr) {
        text.Append('[');
        Expression(size);
        text.Append(']');
    }
}

void Walk::Expression(MorlExpression* expression)
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
void Walk::UnaryOperation(MorlUnaryOperation* operation)
{
    answers.AppendOperator(text, operation->operatorToken);
    Expression(operation->operand);
}

// No parentheses are added: the source's own are nodes of the tree.
void Walk::BinaryOperation(MorlBinaryOperation* operation)
{
    Expression(operation->left);
    if (operation->operatorToken == TOKEN_INDEX) {
        text.Append('[');
        Expression(operation->right);
        text.Append(']');
        return;
    }
    answers.AppendOperator(text, operation->operatorToken);
    Expression(operation->right);
}

void Walk::ParenthesiseExpression(MorlParenthesiseExpression* expression)
{
    text.Append('(');
    Expression(expression->expression);
    text.Append(')');
}

void Walk::FunctionCall(MorlFunctionCall* call)
{
    if (answers.hooks != nullptr) {
        text.Append(answers.hooks->WriteFunctionCall(call));
    } else {
        Call(call);
    }
}

void Walk::Call(MorlFunctionCall* call)
{
    const CallForm* form = answers.target->callForms.Find(call->functionToken);
    if (form == nullptr) {
        PlainCall(call);
    } else {
        FormedCall(call, *form);
    }
}

// Forms that write each argument once need no text of its own for it.
void Walk::FormedCall(MorlFunctionCall* call, const CallForm& form)
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
void Walk::SeparatedArguments(MorlFunctionCall* call, const CallForm& form, char separator)
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

void Walk::PlainCall(MorlFunctionCall* call)
{
    answers.AppendFunctionName(text, call);
    text.Append('(');
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
CallArguments Walk::Arguments(MorlFunctionCall* call, const CallForm& form)
{
    bool isReported = call->arguments.size() < form.arguments;
    if (isReported) {
        ReportMissingArguments(call);
    }
    CallArguments texts;
    std::size_t size = 0;
    const auto write = [&](std::size_t i) {
        if (i < call->arguments.size()) {
            const bool isRepeated = i < form.repeated;
            texts[i] = Argument(call, i, isRepeated);
            size += isRepeated ? texts[i].size() : 0;
        } else if (!std::exchange(isReported, true)) {
            ReportMissingArguments(call);
        }
    };
    write(0);
    // What a shadow map is compared with is written before the other arguments.
    if (form.layout == CallLayout::Sampling && IsShadowMap(texts[0])) {
        write(2);
    }
    for (std::size_t i = 1; i < form.arguments; ++i) {
        write(i);
    }
    return ReserveRepeatedText(call, size * form.repeats) ? texts : CallArguments();
}

std::string Walk::Argument(MorlFunctionCall* call, std::size_t index, bool isRepeated)
{
    const unsigned repeating = isRepeated ? 1 : 0;
    auto& repetition = answers.repetition;
    repetition.nested += repeating;
    Text argument;
    Walk(answers, argument).Expression(call->arguments[index]);
    repetition.nested -= repeating;
    return argument.Copy();
}

void Walk::ReportMissingArguments(const MorlFunctionCall* call)
{
    LogGraphicsError(messages::kNotEnoughArguments + call->name);
}

// Only repetition inside repetition counts, because only that grows exponentially.
bool Walk::ReserveRepeatedText(const MorlFunctionCall* call, std::size_t size)
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

std::string Collect(MorlTranslator& translator, const TargetRecord* target, const WalkPart& part)
{
    const MorlTranslator::Writing writing(translator);
    Answers answers(translator, target);
    Text text;
    Walk walk(answers, text);
    part(walk);
    return text.Copy();
}

}  // namespace ns_ruke
