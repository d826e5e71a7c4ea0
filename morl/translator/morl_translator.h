// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/program.h"
#include "morl/compiler/shader_output.h"
#include "morl/core/export.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

struct TargetRecord;
class WalkPart;

/// The base of the back ends: writes a linked program as source text of one target.
///
/// The base class defines the order of the sections, the walk over statements and expressions, and
/// the layout of the text. It calls the virtual operations for whatever differs by target, at every
/// level of nesting, so an override always takes effect.
///
/// A translator writes one program after the other, on one thread. Its operations may also be
/// called individually; they need a program only where their result depends on its stage.
class MORL_API MorlTranslator {
public:
    MorlTranslator();
    MorlTranslator(const MorlTranslator&) = default;
    MorlTranslator& operator=(const MorlTranslator&) = default;
    virtual ~MorlTranslator();

    /// Writes `newProgram` and fills `output`: replaces the code, appends the names of the
    /// uniforms, and sets the assigned semantics one entry at a time, so that references to
    /// existing entries stay valid. If an exception passes through, `output` is unchanged.
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
    /// The lines at the start of the entry function for the inputs, and for the outputs.
    virtual std::string WriteInputConvert(std::vector<MorlDeclare*> inputs) = 0;
    virtual std::string WriteOutputConvert(std::vector<MorlDeclare*> outputs) = 0;
    /// The binding of a declaration, with its " : "; empty without a binding.
    virtual std::string WriteRegister(MorlDeclare* declare, MorlRegister* binding) = 0;

protected:
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

    /// The program being written, or the last one written; not owned. Null before the first one.
    MorlProgram* program = nullptr;
    /// Replacements for the names of variables, by name.
    std::unordered_map<std::string, std::string> variableNames;
    /// The texture coordinates handed in, by declaration name.
    std::unordered_map<std::string, std::string> inputSemantics;
    /// The texture coordinates assigned while writing, by declaration name.
    std::unordered_map<std::string, std::string> outputSemantics;
    /// The sampler registers handed in, by declaration name.
    std::unordered_map<std::string, int> samplerRegisters;

private:
    friend class Answers;
    friend struct WrittenRequest;
    friend std::string Collect(MorlTranslator& translator, const TargetRecord* target,
                               const WalkPart& part);

    /// Counts the text that calls repeat, which kMaxRepeatedText bounds. The count restarts with
    /// each outermost call of an operation, and in a copied translator.
    struct Repetition {
        Repetition() = default;
        Repetition(const Repetition& /*other*/) noexcept {}
        Repetition& operator=(const Repetition& /*other*/) noexcept { return *this; }

        unsigned operations = 0;  ///< how deeply calls of operations are nested
        unsigned nested = 0;      ///< calls whose repeated arguments are being written
        std::size_t bytes = 0;    ///< added by repetition inside repetition
    };

    /// Lives as long as an operation runs.
    class Writing {
    public:
        explicit Writing(MorlTranslator& translator);
        Writing(const Writing&) = delete;
        Writing& operator=(const Writing&) = delete;
        ~Writing() { --repetition.operations; }

    private:
        Repetition& repetition;
    };

    Repetition repetition;
};

}  // namespace ns_ruke
