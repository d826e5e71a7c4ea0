// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/call_forms.h"
#include "morl/translator/internal/target_spellings.h"
#include "morl/translator/morl_translator.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// Asks a translator's virtual operations, so that every override takes effect. This is what a
/// host's own class is walked with.
class HookAnswers {
public:
    explicit HookAnswers(MorlTranslator& hooks) : translator(hooks) {}

    void Variable(std::string& text, MorlVariable* variable) const
    {
        text += translator.WriteVariable(variable);
    }
    void Type(std::string& text, ENUM_TOKEN token) const
    {
        text += translator.WriteVariableType(token);
    }
    void Operator(std::string& text, ENUM_TOKEN token) const
    {
        text += translator.WriteOperator(token);
    }
    void Keyword(std::string& text, ENUM_TOKEN token) const
    {
        text += translator.WriteKeyword(token);
    }
    void FunctionName(std::string& text, const MorlFunctionCall* call) const
    {
        text += translator.WriteFunctionName(call);
    }
    template <class Walk>
    void Call(Walk& walk, MorlFunctionCall* call) const
    {
        walk.Append(translator.WriteFunctionCall(call));
    }

    MorlTranslator& translator;
};

/// Looks everything up in a target's record, without a virtual call or a string of its own: for
/// translators whose operations nobody overrides.
class RecordAnswers {
public:
    using Names = std::unordered_map<std::string, std::string>;

    /// @param newNames replacements for the names of variables
    RecordAnswers(MorlTranslator& owner, const TargetSpellings& newSpellings, const Names& newNames)
        : translator(owner), spellings(newSpellings), names(newNames)
    {
    }

    void Variable(std::string& text, const MorlVariable* variable) const
    {
        const auto renamed = names.find(variable->name);
        text += renamed != names.end() ? renamed->second : variable->name;
    }
    void Type(std::string& text, ENUM_TOKEN token) const { text += spellings.types.Text(token); }
    void Operator(std::string& text, ENUM_TOKEN token) const { text += kOperators.Text(token); }
    void Keyword(std::string& text, ENUM_TOKEN token) const { text += kKeywords.Text(token); }
    void FunctionName(std::string& text, const MorlFunctionCall* call) const
    {
        text += spellings.functions.Has(call->functionToken)
                    ? spellings.functions.Text(call->functionToken)
                    : call->name;
    }
    template <class Walk>
    void Call(Walk& walk, MorlFunctionCall* call) const
    {
        walk.Call(call, spellings.callForms);
    }

    MorlTranslator& translator;

private:
    const TargetSpellings& spellings;
    const Names& names;
};

/// The walk over statements and expressions, and the layout of their text, which all targets share.
/// Whatever differs by target is answered by HookAnswers or RecordAnswers.
///
/// A null node appends nothing.
template <class Answers>
class Walk {
public:
    /// @param appended must outlive the walk, and so must what the answers refer to.
    Walk(const Answers& newAnswers, std::string& appended)
        : answers(newAnswers), text(appended), writing(newAnswers.translator)
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
    /// Text that was written elsewhere.
    void Append(const std::string& written) { text += written; }

private:
    void Indent(int indent);
    void FormedCall(MorlFunctionCall* call, const CallForm& form);
    void SeparatedArguments(MorlFunctionCall* call, const CallForm& form, char separator);
    CallArguments Arguments(MorlFunctionCall* call, const CallForm& form);
    std::string Argument(MorlFunctionCall* call, std::size_t index, bool isRepeated);
    std::string Comparison(MorlFunctionCall* call);
    bool ReserveRepeatedText(const MorlFunctionCall* call, std::size_t size);
    static void ReportMissingArguments(const MorlFunctionCall* call);

    Answers answers;
    std::string& text;
    MorlTranslator::Writing writing;
};

extern template class Walk<HookAnswers>;
extern template class Walk<RecordAnswers>;

/// The text that a part of the walk writes.
template <class Answers, class Part>
std::string Collect(const Answers& answers, const Part& part)
{
    std::string text;
    Walk<Answers> walk(answers, text);
    part(walk);
    return text;
}

}  // namespace ns_ruke
