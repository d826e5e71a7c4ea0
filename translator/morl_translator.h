// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/program.h"
#include "morl/compiler/shader_output.h"
#include "morl/core/export.h"
#include "morl/translator/call_forms.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// The base of the back ends: writes a linked program as source text of one target.
///
/// The base owns the order of the sections, the walk over statements and expressions, and the
/// layout of the text; what differs by target it asks of the back end through the virtual
/// operations. Each target derives directly from this class; what several targets do alike, and for
/// the same reason, is in free functions beside it (hlsl_layout.h, glsl_layout.h, register_order.h,
/// call_forms.h), and their spellings are tables (spellings.h).
///
/// A translator serves one program after the other, on one thread.
class MORL_API MorlTranslator {
public:
    MorlTranslator();
    MorlTranslator(const MorlTranslator&) = default;
    MorlTranslator& operator=(const MorlTranslator&) = default;
    virtual ~MorlTranslator();

    /// Writes `program` and fills `output`: replaces its code, appends the names of the uniforms,
    /// sets the semantics that were assigned. If an exception passes through, `output` is as it
    /// was.
    /// @param newProgram not owned; read only.
    /// @param semantics texture coordinates by declaration name, for the fragment stage.
    /// @param registers sampler registers by declaration name.
    void WriteProgram(MorlProgram* newProgram,
                      std::unordered_map<std::string, std::string>& semantics,
                      std::unordered_map<std::string, int>& registers, ShaderOutput& output);

    // What a back end supplies. Each returns new text; the lists are copies of the program's lists.

    /// Forgets the program written before.
    virtual void Reset();
    virtual std::string WriteFileHeader();
    virtual std::string WriteFunctionCall(MorlFunctionCall* call);
    virtual std::string WriteFunctionName(const MorlFunctionCall* call) = 0;
    virtual std::string WriteVariable(MorlVariable* variable);
    /// The storage word of a global declaration.
    virtual std::string WriteBuffer(ENUM_TOKEN token) = 0;
    virtual std::string WriteVariableType(ENUM_TOKEN token) = 0;
    /// The declared type, or for `auto` the type that follows from the semantic.
    virtual std::string WriteVariableType(MorlDeclare* declare) = 0;
    /// The type of an `auto` declaration bound to this semantic.
    virtual std::string ConcludeVariableType(ENUM_TOKEN token) = 0;
    virtual std::string WriteOperator(ENUM_TOKEN token) = 0;
    virtual std::string WriteKeyword(ENUM_TOKEN token) = 0;
    virtual std::string WriteUniformList(std::vector<MorlDeclare*> uniforms) = 0;
    virtual std::string WriteInputList(std::vector<MorlDeclare*> inputs) = 0;
    virtual std::string WriteOutputList(std::vector<MorlDeclare*> outputs) = 0;
    virtual std::string WriteMainFunction(MorlProgram* linked) = 0;
    /// What stands at the head of the entry function for the inputs, and for the outputs.
    virtual std::string WriteInputConvert(std::vector<MorlDeclare*> inputs) = 0;
    virtual std::string WriteOutputConvert(std::vector<MorlDeclare*> outputs) = 0;
    /// The binding of a declaration, with its " : "; empty without a binding.
    virtual std::string WriteRegister(MorlDeclare* declare, MorlRegister* binding) = 0;

protected:
    /// Appends what WriteFunctionCall returns. The walk over expressions calls this one, so that
    /// the text of nested calls is not built again at every level.
    virtual void AppendFunctionCall(std::string& text, MorlFunctionCall* call);

    std::string WriteFunctionList(std::vector<MorlFunction*> functions);
    std::string WriteFunction(MorlFunction* function);
    std::string WriteDeclare(MorlDeclare* declare);

    std::string WriteSentence(MorlSentence* sentence, int indent);
    std::string WriteEmptySentence(MorlEmptySentence* sentence, int indent);
    std::string WriteSpecialSentence(MorlSpecialSentence* sentence, int indent);
    std::string WriteSingleComment(MorlSingleCommentSentence* sentence, int indent);
    std::string WriteMultiComment(MorlMultiCommentSentence* sentence, int indent);
    std::string WriteDefinitionSentence(MorlDefinitionSentence* sentence, int indent);
    std::string WriteAssignSentence(MorlAssignSentence* sentence, int indent);
    std::string WriteIfSentence(MorlIfSentence* sentence, int indent);
    std::string WriteForSentence(MorlForSentence* sentence, int indent);
    std::string WriteDefinitionArray(MorlExpression* size);
    std::string WriteAssignOperator(ENUM_TOKEN token);

    std::string WriteExpression(MorlExpression* expression);
    std::string WriteUnaryOperation(MorlUnaryOperation* operation);
    std::string WriteBinaryOperation(MorlBinaryOperation* operation);
    std::string WriteParenthesiseExpression(MorlParenthesiseExpression* expression);
    std::string WriteNumber(MorlNumber* number);

    // The writers above, appending to a text instead of returning one. A null node appends nothing.
    void AppendSentence(std::string& text, MorlSentence* sentence, int indent);
    void AppendSentences(std::string& text, const std::vector<MorlSentence*>& sentences,
                         int indent);
    void AppendExpression(std::string& text, MorlExpression* expression);
    /// The statements of the program's `main`, if it has one.
    void AppendMainBody(std::string& text, const MorlProgram* linked);
    /// A call in the usual form: the name, and the arguments in parentheses.
    void AppendPlainCall(std::string& text, MorlFunctionCall* call);

    /// A call in the form that the target has for it, or else in the usual form.
    void AppendCall(std::string& text, MorlFunctionCall* call, const CallForms& forms);
    /// A global declaration up to its array size: storage word, type, name, size.
    void AppendGlobal(std::string& text, MorlDeclare* declare);

    /// The texts of the first `count` arguments of a call that has a form of its own; further
    /// arguments are ignored. Missing ones are reported in one error line and are empty.
    /// @param repeated how many of the arguments, the first ones, the form writes more than once,
    /// and
    /// @param repeats how often beyond once. Inside of an argument that is itself repeated this
    /// counts
    ///        against kMaxRepeatedText; past that bound, which is reported once, the arguments of
    ///        such calls are empty.
    CallArguments WriteArguments(MorlFunctionCall* call, std::size_t count, std::size_t repeated,
                                 std::size_t repeats);
    static void ReportMissingArguments(const MorlFunctionCall* call);

    MorlProgram* program;  ///< the program being written; not owned; unset before the first one
    /// How variables are written that are not written as they stand, by name.
    std::unordered_map<std::string, std::string> variableNames;
    /// The texture coordinates handed in, by declaration name.
    std::unordered_map<std::string, std::string> inputSemantics;
    /// The texture coordinates assigned while writing, by declaration name.
    std::unordered_map<std::string, std::string> outputSemantics;
    /// The sampler registers handed in, by declaration name.
    std::unordered_map<std::string, int> samplerRegisters;

private:
    void AppendEmptySentence(std::string& text, int indent);
    void AppendSpecialSentence(std::string& text, MorlSpecialSentence* sentence, int indent);
    void AppendSingleComment(std::string& text, MorlSingleCommentSentence* sentence, int indent);
    void AppendMultiComment(std::string& text, MorlMultiCommentSentence* sentence, int indent);
    void AppendDefinitionSentence(std::string& text, MorlDefinitionSentence* sentence, int indent);
    void AppendAssignSentence(std::string& text, MorlAssignSentence* sentence, int indent);
    void AppendIfSentence(std::string& text, MorlIfSentence* sentence, int indent);
    void AppendForSentence(std::string& text, MorlForSentence* sentence, int indent);
    void AppendDefinitionArray(std::string& text, MorlExpression* size);
    void AppendUnaryOperation(std::string& text, MorlUnaryOperation* operation);
    void AppendBinaryOperation(std::string& text, MorlBinaryOperation* operation);
    void AppendParenthesiseExpression(std::string& text, MorlParenthesiseExpression* expression);

    bool WithinRepeatedText(const MorlFunctionCall* call, std::size_t size);

    unsigned repeatingCalls = 0;   ///< calls whose repeated arguments are being written
    std::size_t repeatedText = 0;  ///< bytes of this program that count against kMaxRepeatedText
};

}  // namespace ns_ruke
