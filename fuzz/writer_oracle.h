// SPDX-License-Identifier: MIT
#pragma once

#include "oracle.h"

#include <algorithm>
#include <string>

namespace morl_fuzz {

/// A back end that checks its writers against each other: the writer for a kind of statement and
/// the writer for any statement must give the same text, alone and as part of the program.
template <class Translator>
class WriterOracle : public Translator {
public:
    void Check(ns_ruke::MorlProgram& linked)
    {
        using namespace ns_ruke;
        std::unordered_map<std::string, std::string> semantics;
        std::unordered_map<std::string, int> registers;
        ShaderOutput output;
        this->WriteProgram(&linked, semantics, registers, output);
        std::string body;
        for (MorlSentence* sentence : linked.mainFunction->sentences) {
            const std::string text = this->WriteSentence(sentence, 1);
            if (sentence != nullptr && text != ByKind(sentence)) {
                Fail("two writers write one statement in two ways");
            }
            body += text;
        }
        if (this->WriteFunction(linked.mainFunction) != body ||
            output.code.find(body) == std::string::npos) {
            Fail("the program holds other statements than its main");
        }
        for (MorlDeclare* declare : linked.uniforms) {
            this->WriteRegister(declare, declare->registerBinding);
        }
    }

private:
    std::string ByKind(ns_ruke::MorlSentence* sentence)
    {
        using namespace ns_ruke;
        switch (sentence->unitType) {
        case TOKEN_EMPTY_SENTENCE:
            return this->WriteEmptySentence(static_cast<MorlEmptySentence*>(sentence), 1);
        case TOKEN_SPECIAL_SENTENCE:
            return this->WriteSpecialSentence(static_cast<MorlSpecialSentence*>(sentence), 1);
        case TOKEN_SINGLE_COMMENT:
            return this->WriteSingleComment(static_cast<MorlSingleCommentSentence*>(sentence), 1);
        case TOKEN_MULTI_COMMENT:
            return this->WriteMultiComment(static_cast<MorlMultiCommentSentence*>(sentence), 1);
        case TOKEN_DEFINITION_SENTENCE: {
            auto* definition = static_cast<MorlDefinitionSentence*>(sentence);
            std::string text = this->WriteDefinitionSentence(definition, 1);
            if (text.find(this->WriteDefinitionArray(definition->arraySize)) == std::string::npos) {
                Fail("a definition lost its array size");
            }
            return text;
        }
        case TOKEN_ASSIGN: {
            auto* assign = static_cast<MorlAssignSentence*>(sentence);
            Expect(this->WriteExpression(assign->target), ByKind(assign->target));
            Expect(this->WriteExpression(assign->value), ByKind(assign->value));
            this->WriteAssignOperator(assign->operatorToken);
            return this->WriteAssignSentence(assign, 1);
        }
        case TOKEN_FOR:
            return this->WriteForSentence(static_cast<MorlForSentence*>(sentence), 1);
        default:
            return this->WriteIfSentence(static_cast<MorlIfSentence*>(sentence), 1);
        }
    }

    std::string ByKind(ns_ruke::MorlExpression* expression)
    {
        using namespace ns_ruke;
        switch (expression != nullptr ? expression->unitType : TOKEN_NONE) {
        case TOKEN_FUNCTION_CALL:
            return this->WriteFunctionCall(static_cast<MorlFunctionCall*>(expression));
        case TOKEN_UNARY_OPERATION:
            return this->WriteUnaryOperation(static_cast<MorlUnaryOperation*>(expression));
        case TOKEN_BINARY_OPERATION:
            return this->WriteBinaryOperation(static_cast<MorlBinaryOperation*>(expression));
        case TOKEN_PARENTHESISE_EXPRESSION:
            return this->WriteParenthesiseExpression(
                static_cast<MorlParenthesiseExpression*>(expression));
        case TOKEN_IDENTIFIER:
            return this->WriteVariable(static_cast<MorlVariable*>(expression));
        case TOKEN_NUMBER:
            return this->WriteNumber(static_cast<MorlNumber*>(expression));
        default:
            return {};
        }
    }

    static void Expect(const std::string& a, const std::string& b)
    {
        if (a != b) {
            Fail("two writers write one expression in two ways");
        }
    }
};

/// Checks that a back end that sorts by register sorts in the order of its comparison.
template <class Translator>
void CheckOrder(Translator& translator, std::vector<ns_ruke::MorlDeclare*> declares)
{
    translator.Sort(declares);
    const auto before = [&translator](ns_ruke::MorlDeclare* a, ns_ruke::MorlDeclare* b) {
        return translator.SortByRegister(a, b);
    };
    if (!std::is_sorted(declares.begin(), declares.end(), before)) {
        Fail("declarations are not in register order");
    }
}

}  // namespace morl_fuzz
