// SPDX-License-Identifier: MIT
// The described interface of version 1.0, each name with its type: hosts written for it must
// compile.
#include <morl/morl.h>
#include <functional>
#include <future>
#include <type_traits>

using namespace ns_ruke;

/// A host's own form of new, for finding leaks.
void* operator new(std::size_t size, const char* /*file*/, int /*line*/)
{
    return ::operator new(size);
}

namespace {

template <class T>
using List = std::vector<T>;
template <class T>
using Map = std::unordered_map<std::string, T>;
using Text = std::string;
using Declares = List<MorlDeclare*>;
using Sentences = List<MorlSentence*>;
using Functions = List<MorlFunction*>;

// A data member, with its type.
#define MEMBER(owner, name, ...) \
    static_assert(std::is_same_v<decltype(owner::name), __VA_ARGS__>, #owner "::" #name)
// An operation of an object, with its arguments and its result.
#define CALL(owner, name, result, ...)                                                        \
    static_assert(std::is_same_v<decltype(std::declval<owner&>().name(__VA_ARGS__)), result>, \
                  #owner "::" #name)
#define ARG(...) std::declval<__VA_ARGS__>()

MEMBER(PassProperty, nodeNames, List<Text>);
MEMBER(PassProperty, macros, Map<int>);
MEMBER(PassProperty, target, Text);
MEMBER(PassProperty, stage, int);
MEMBER(PassProperty, semantics, Map<Text>);
MEMBER(PassProperty, samplerRegisters, Map<int>);
MEMBER(ShaderOutput, code, Text);
MEMBER(ShaderOutput, semantics, Map<Text>);
MEMBER(ShaderOutput, uniformNames, List<Text>);
CALL(MorlCompiler, Compile, void, ARG(PassProperty&), ARG(ShaderOutput&));
CALL(MorlNode, SetName, void, Text());
CALL(MorlNode, GetName, Text);
CALL(MorlNode, SetPosition, void, 1.0F, 2.0F);
CALL(MorlNode, SetContent, void, Text());
CALL(MorlNode, GetContent, Text);
CALL(MorlNode, AddReference, void, Text());
CALL(MorlNode, GetReference, List<Text>);
CALL(MorlNode, NeedCompile, bool, Text());
CALL(MorlNode, Compile, void, ARG(MorlParser*), Text());
CALL(MorlNode, GetProgram, MorlProgram*);

static_assert(std::is_same_v<decltype(StringHelper::StartWith(Text(), Text(), false)), bool>);
static_assert(std::is_same_v<decltype(StringHelper::ConvertToString(1U, 10)), Text>);
static_assert(std::is_same_v<decltype(StringHelper::ConvertToString(-1, 10)), Text>);
static_assert(std::is_same_v<decltype(StringHelper::Split(Text(), ".", false)), List<Text>>);
static_assert(std::is_same_v<decltype(StringHelper::ReplaceAll(Text(), "a", "b")), Text>);
static_assert(std::is_same_v<decltype(StringHelper::ConvertToInt32("1")), int>);

CALL(MorlParser, Init, void);
CALL(MorlParser, Parse, void, ARG(const Text&), ARG(MorlProgram&));
CALL(MorlParser, IsVarType, bool, TOKEN_FLOAT);
CALL(MorlLinker, Link, void, Text(), ARG(Map<int>&), ARG(List<MorlNode*>&), ARG(MorlProgram&));
CALL(MorlTranslator, WriteProgram, void, ARG(MorlProgram*), ARG(Map<Text>&), ARG(Map<int>&),
     ARG(ShaderOutput&));

MEMBER(MorlUnit, unitType, ENUM_TOKEN);
MEMBER(MorlRegister, registerToken, ENUM_TOKEN);
MEMBER(MorlRegister, name, Text);
MEMBER(MorlDeclare, bufferType, ENUM_TOKEN);
MEMBER(MorlDeclare, varType, ENUM_TOKEN);
MEMBER(MorlDeclare, name, Text);
MEMBER(MorlDeclare, arraySize, MorlExpression*);
MEMBER(MorlDeclare, registerBinding, MorlRegister*);
MEMBER(MorlMarcoIfDeclare, condition, MorlExpression*);
MEMBER(MorlMarcoIfDeclare, declares, Declares);
MEMBER(MorlMarcoIfDeclare, elseDeclares, Declares);
MEMBER(MorlMarcoForDeclare, varName, Text);
MEMBER(MorlMarcoForDeclare, start, int);
MEMBER(MorlMarcoForDeclare, end, int);
MEMBER(MorlMarcoForDeclare, declares, Declares);
MEMBER(MorlFunctionCall, name, Text);
MEMBER(MorlFunctionCall, functionToken, ENUM_TOKEN);
MEMBER(MorlFunctionCall, arguments, List<MorlExpression*>);
MEMBER(MorlUnaryOperation, operatorToken, ENUM_TOKEN);
MEMBER(MorlUnaryOperation, operand, MorlExpression*);
MEMBER(MorlBinaryOperation, operatorToken, ENUM_TOKEN);
MEMBER(MorlBinaryOperation, left, MorlExpression*);
MEMBER(MorlBinaryOperation, right, MorlExpression*);
MEMBER(MorlParenthesiseExpression, expression, MorlExpression*);
MEMBER(MorlVariable, name, Text);
MEMBER(MorlNumber, value, Text);
MEMBER(MorlFunction, returnType, ENUM_TOKEN);
MEMBER(MorlFunction, name, Text);
MEMBER(MorlFunction, parameters, Declares);
MEMBER(MorlFunction, sentences, Sentences);
MEMBER(MorlMarcoIfFunction, condition, MorlExpression*);
MEMBER(MorlMarcoIfFunction, functions, Functions);
MEMBER(MorlMarcoIfFunction, elseFunctions, Functions);
MEMBER(MorlMarcoForFunction, varName, Text);
MEMBER(MorlMarcoForFunction, start, int);
MEMBER(MorlMarcoForFunction, end, int);
MEMBER(MorlMarcoForFunction, functions, Functions);
MEMBER(MorlSingleCommentSentence, text, Text);
MEMBER(MorlMultiCommentSentence, text, Text);
MEMBER(MorlDefinitionSentence, varType, ENUM_TOKEN);
MEMBER(MorlDefinitionSentence, name, Text);
MEMBER(MorlDefinitionSentence, arraySize, MorlExpression*);
MEMBER(MorlAssignSentence, varType, ENUM_TOKEN);
MEMBER(MorlAssignSentence, target, MorlExpression*);
MEMBER(MorlAssignSentence, operatorToken, ENUM_TOKEN);
MEMBER(MorlAssignSentence, value, MorlExpression*);
MEMBER(MorlAssignSentence, withSemicolon, bool);
MEMBER(MorlMarcoAssignSentence, target, MorlExpression*);
MEMBER(MorlIfSentence, condition, MorlExpression*);
MEMBER(MorlIfSentence, sentences, Sentences);
MEMBER(MorlIfSentence, elseSentences, Sentences);
MEMBER(MorlElseIfSentence, elseSentences, Sentences);
MEMBER(MorlMarcoIfSentence, condition, MorlExpression*);
MEMBER(MorlMarcoIfSentence, sentences, Sentences);
MEMBER(MorlMarcoIfSentence, elseSentences, Sentences);
MEMBER(MorlForSentence, init, MorlSentence*);
MEMBER(MorlForSentence, condition, MorlExpression*);
MEMBER(MorlForSentence, step, MorlAssignSentence*);
MEMBER(MorlForSentence, sentences, Sentences);
MEMBER(MorlMarcoForSentence, varName, Text);
MEMBER(MorlMarcoForSentence, start, int);
MEMBER(MorlMarcoForSentence, end, int);
MEMBER(MorlMarcoForSentence, sentences, Sentences);
MEMBER(MorlProgram, comments, Sentences);
MEMBER(MorlProgram, inputs, Declares);
MEMBER(MorlProgram, outputs, Declares);
MEMBER(MorlProgram, uniforms, Declares);
MEMBER(MorlProgram, functions, Functions);
MEMBER(MorlProgram, mainFunction, MorlFunction*);
MEMBER(MorlProgram, stage, int);

// Operations that hosts name without their arguments are not overloaded.
template <class Operation>
constexpr bool IsOne(Operation /*operation*/)
{
    return true;
}
static_assert(IsOne(&MorlCompiler::Compile) && IsOne(&MorlNode::GetProgram) &&
              IsOne(&MorlNode::Compile) && IsOne(&MorlNode::NeedCompile) &&
              IsOne(&MorlParser::Parse) && IsOne(&MorlParser::IsFunction) &&
              IsOne(&MorlLinker::Link) && IsOne(&MorlTranslator::WriteProgram));
// Old expressions mean what they did.
static_assert(!std::is_constructible_v<MorlVariable, const char*> &&
              !std::is_constructible_v<MorlNumber, const char*>);
CALL(MorlParser, IsFunction, bool, Text());

/// A host's own back end: all operations of a back end and what they may use.
template <class Base>
class Host : public Base {
public:
    void Reset() override { Base::Reset(); }
    Text WriteFileHeader() override { return Base::WriteFileHeader(); }
    Text WriteFunctionCall(MorlFunctionCall* call) override
    {
        return Base::WriteFunctionCall(call);
    }
    Text WriteFunctionName(const MorlFunctionCall* call) override
    {
        return Base::WriteFunctionName(call);
    }
    Text WriteVariable(MorlVariable* variable) override { return Base::WriteVariable(variable); }
    Text WriteBuffer(ENUM_TOKEN token) override { return Base::WriteBuffer(token); }
    Text WriteVariableType(ENUM_TOKEN token) override { return Base::WriteVariableType(token); }
    Text WriteVariableType(MorlDeclare* declare) override
    {
        return Base::WriteVariableType(declare);
    }
    Text ConcludeVariableType(ENUM_TOKEN token) override
    {
        return Base::ConcludeVariableType(token);
    }
    Text WriteOperator(ENUM_TOKEN token) override { return Base::WriteOperator(token); }
    Text WriteKeyword(ENUM_TOKEN token) override { return Base::WriteKeyword(token); }
    Text WriteUniformList(Declares list) override { return Base::WriteUniformList(list); }
    Text WriteInputList(Declares list) override { return Base::WriteInputList(list); }
    Text WriteOutputList(Declares list) override { return Base::WriteOutputList(list); }
    Text WriteMainFunction(MorlProgram* linked) override { return Base::WriteMainFunction(linked); }
    Text WriteInputConvert(Declares list) override { return Base::WriteInputConvert(list); }
    Text WriteOutputConvert(Declares list) override { return Base::WriteOutputConvert(list); }
    Text WriteRegister(MorlDeclare* declare, MorlRegister* binding) override
    {
        return Base::WriteRegister(declare, binding);
    }

    Text UseWhatIsProtected()
    {
        this->variableNames["a"] = this->inputSemantics["a"] + this->outputSemantics["a"];
        this->samplerRegisters["a"] = this->program != nullptr ? this->program->stage : 0;
        MorlSpecialSentence special;
        MorlNumber number;
        number.value = "1";
        return this->WriteSentence(&special, 1) + this->WriteExpression(&number) +
               this->WriteSpecialSentence(&special, 0) + this->WriteNumber(&number) +
               this->WriteDefinitionArray(nullptr) + this->WriteAssignOperator(TOKEN_ASSIGN);
    }
};

}  // namespace

int main()
{
    TamberLogSystem::LogInitialize();
    Singleton<TamberLogSystem>::GetSingletonPtr()->LogInfo("Graphics", "%d of %s", 1, "two");
    Singleton<TamberLogSystem>::GetSingletonPtr()->LogError("Graphics", "100%");
    Host<MorlTranslatorHLSL> hlsl;
    Host<MorlTranslatorHLSL10> hlsl10;
    Host<MorlTranslatorGLSL> glsl;
    Host<MorlTranslatorGLSLES> glsles;
    MorlCompiler compiler;
    PassProperty pass;
    pass.target = "glsl";
    pass.stage = 0;
    ShaderOutput output;
    std::async(std::launch::async, &MorlCompiler::Compile, &compiler, std::ref(pass),
               std::ref(output))
        .get();
    MorlNode node;
    if (std::mem_fn(&MorlNode::GetProgram)(node) != nullptr || output.code.empty()) {
        return 1;
    }
    delete new (__FILE__, __LINE__) MorlVariable;
    delete ::new MorlVariable;
    MorlDeclare uniform(TOKEN_FLOAT, *std::make_unique<Text>("u"));
    const Text text = hlsl.UseWhatIsProtected() + hlsl10.UseWhatIsProtected() +
                      glsl.UseWhatIsProtected() + glsles.UseWhatIsProtected() +
                      hlsl10.WriteOutputDeclare(&uniform) +
                      std::to_string(hlsl10.GetRegisterIndex(&uniform));
    return text.empty() ? 1 : 0;
}
