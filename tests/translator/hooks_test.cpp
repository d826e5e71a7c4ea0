// SPDX-License-Identifier: MIT
// The operations of a back end, called one by one or overridden, as a host may.
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/samples.h"

#include <gtest/gtest.h>
#include <map>

namespace {

using namespace ns_ruke;

MorlDeclare* Declare(MorlDeclare& declare, MorlRegister& binding, ENUM_TOKEN semantic)
{
    binding.registerToken = semantic;
    binding.name = "(name)";
    declare.bufferType = TOKEN_UNIFORM;
    declare.varType = TOKEN_FLOAT;
    declare.name = "d";
    declare.registerBinding = &binding;
    return &declare;
}

/// The results of the operations of a back end that do not depend on the stage.
std::string WithoutStage(MorlTranslator& backEnd)
{
    std::string text = backEnd.WriteBuffer(TOKEN_UNIFORM) + backEnd.WriteBuffer(TOKEN_NONE);
    MorlDeclare declare;
    MorlRegister binding;
    text += backEnd.WriteRegister(&declare, nullptr);
    for (const ENUM_TOKEN semantic : {TOKEN_NORMAL, TOKEN_SAUTO, TOKEN_IDENTIFIER}) {
        Declare(declare, binding, semantic);
        text += backEnd.WriteRegister(&declare, &binding);
        text += backEnd.WriteUniformList({&declare});
    }
    declare.registerBinding = nullptr;
    return text;
}

template <class BackEnd>
std::string Sorted(BackEnd& backEnd)
{
    MorlDeclare first;
    MorlRegister tangent;
    MorlDeclare second;
    MorlRegister normal;
    std::vector<MorlDeclare*> list = {Declare(first, tangent, TOKEN_TANGENT),
                                      Declare(second, normal, TOKEN_NORMAL)};
    backEnd.Sort(list);
    const bool sorted = list[0] == &second && backEnd.SortByRegister(&second, &first);
    const int index = backEnd.GetRegisterIndex(&first);
    first.registerBinding = nullptr;
    second.registerBinding = nullptr;
    return (sorted ? "sorted " : "unsorted ") + std::to_string(index);
}

TEST(Hooks, NeedNoProgramWhereTheyReadNoStage)
{
    for (const std::string& target : MorlTargets()) {
        const auto backEnd = MakeTranslator(target);
        const std::string fresh = WithoutStage(*backEnd);
        EXPECT_NE(fresh.find("uniform"), std::string::npos) << target;
        {
            const auto program = std::make_unique<MorlProgram>();
            program->stage = kVertexStage;
            std::unordered_map<std::string, std::string> semantics;
            std::unordered_map<std::string, int> registers;
            ShaderOutput output;
            backEnd->WriteProgram(program.get(), semantics, registers, output);
        }
        EXPECT_EQ(WithoutStage(*backEnd), fresh) << target << ", after its program is gone";
    }
    MorlTranslatorGLSLES es;
    MorlTranslatorHLSL10 hlsl10;
    EXPECT_EQ(Sorted(es), "sorted 2");
    EXPECT_EQ(Sorted(hlsl10), "sorted 2");
}

/// Writes a program with a host's own back end, and counts how often it is asked to write a call.
template <class BackEnd>
int CountCalls(const char* target, const std::string& expression)
{
    struct Counting : BackEnd {
        explicit Counting(const BackEnd& original) : BackEnd(original) {}
        std::string WriteFunctionCall(MorlFunctionCall* call) override
        {
            ++calls;
            return BackEnd::WriteFunctionCall(call);
        }
        int calls = 0;
    };
    MorlProgram program;
    MorlParser().Parse("void main() { x = " + expression + "; }", program);
    program.stage = kVertexStage;
    std::unordered_map<std::string, std::string> semantics;
    std::unordered_map<std::string, int> registers;
    ShaderOutput output;
    // Copied from one that requests use, whose operations nobody overrides.
    Counting backEnd(dynamic_cast<const BackEnd&>(*MakeTranslator(target)));
    backEnd.WriteProgram(&program, semantics, registers, output);
    return backEnd.calls;
}

TEST(Hooks, AreAskedForNestedCalls)
{
    const morl_test::LogCapture log;
    for (const auto& [expression, calls] : std::initializer_list<std::pair<const char*, int>>{
             {"max(a, mul(b, c))", 2},
             {"saturate(float3x3construct(a, max(b, c), d)[0])", 3},
             {"tex2D(shadowMap, mul(a, b), max(c, d))", 3}}) {
        EXPECT_EQ(CountCalls<MorlTranslatorHLSL>("hlsl", expression), calls);
        EXPECT_EQ(CountCalls<MorlTranslatorHLSL10>("hlsl10", expression), calls);
        EXPECT_EQ(CountCalls<MorlTranslatorGLSL>("glsl", expression), calls);
        EXPECT_EQ(CountCalls<MorlTranslatorGLSLES>("glsles", expression), calls);
    }
}

/// Notes in which order its operations are called, and what they see.
template <class BackEnd>
struct Noting : BackEnd {
    std::string WriteVariableType(MorlDeclare* declare) override
    {
        notes += "type " + declare->name + Renamed(declare->name) + "; ";
        return BackEnd::WriteVariableType(declare);
    }
    std::string WriteRegister(MorlDeclare* declare, MorlRegister* binding) override
    {
        notes += "register " + declare->name + Renamed(declare->name) + "; ";
        return BackEnd::WriteRegister(declare, binding);
    }
    std::string WriteVariable(MorlVariable* variable) override
    {
        notes += variable->name + "; ";
        return BackEnd::WriteVariable(variable);
    }
    std::string Renamed(const std::string& name)
    {
        return this->variableNames.count(name) > 0 ? " renamed" : "";
    }
    std::string notes;
};

template <class BackEnd>
std::string NotesOf(const std::string& source)
{
    MorlProgram program;
    MorlParser().Parse(source, program);
    program.stage = kFragmentStage;
    std::unordered_map<std::string, std::string> semantics;
    std::unordered_map<std::string, int> registers;
    ShaderOutput output;
    Noting<BackEnd> backEnd;
    backEnd.WriteProgram(&program, semantics, registers, output);
    return backEnd.notes;
}

TEST(Hooks, AreAskedInTheirOrder)
{
    const morl_test::LogCapture log;
    const std::string source = "out float4 c : COLOR0; void main() { }";
    EXPECT_EQ(NotesOf<MorlTranslatorHLSL>(source), "type c; register c renamed; ");
    EXPECT_EQ(NotesOf<MorlTranslatorHLSL10>(source), "type c; register c renamed; ");
    EXPECT_EQ(NotesOf<MorlTranslatorHLSL10>("void main() { x = tex2D(shadowMapA, b, d); }"),
              "x; shadowMapA; d; b; ");
    EXPECT_EQ(log.errors, std::vector<std::string>{});
    NotesOf<MorlTranslatorHLSL10>("void main() { x = tex2D(shadowMapA, mul()); }");
    EXPECT_EQ(log.errors.front(), "Morl Compiler: not enough arguments: tex2D");
}

TEST(Hooks, CountRepeatedTextAfresh)
{
    std::string expression = "a";
    for (int i = 0; i < 4; ++i) {
        expression = "float3x3construct(" + expression + ",b,c)";
    }
    MorlProgram program;
    MorlParser().Parse("void main() { x = " + expression + "; }", program);
    auto* assign = static_cast<MorlAssignSentence*>(program.mainFunction->sentences[0]);
    auto* call = static_cast<MorlFunctionCall*>(assign->value);
    const morl_test::LogCapture log;
    MorlTranslatorHLSL backEnd;
    const std::string first = backEnd.WriteFunctionCall(call);
    for (int i = 0; i < 20'000; ++i) {
        ASSERT_EQ(backEnd.WriteFunctionCall(call), first) << i;
    }
    EXPECT_EQ(log.errors, std::vector<std::string>{});
}

TEST(Hooks, FillTheTableOfSemanticsInPlace)
{
    MorlProgram program;
    MorlParser().Parse("out float2 a : TEXAUTO; out float2 b : TEXAUTO;", program);
    program.stage = kVertexStage;
    std::unordered_map<std::string, std::string> semantics;
    std::unordered_map<std::string, int> registers;
    ShaderOutput output;
    output.semantics = {{"a", "old"}, {"kept", "kept"}};
    const std::string& a = output.semantics["a"];
    const std::string& kept = output.semantics["kept"];
    MorlTranslatorHLSL().WriteProgram(&program, semantics, registers, output);
    EXPECT_EQ(a, "TEXCOORD0");
    EXPECT_EQ(&kept, &output.semantics["kept"]);
    EXPECT_EQ(output.semantics["b"], "TEXCOORD1");
}

// The stage is that of the program being written, not of the one that is handed to the hook.
TEST(Hooks, TakeTheStageFromOnePlace)
{
    MorlProgram written;
    written.stage = kVertexStage;
    MorlProgram other;
    other.stage = kFragmentStage;
    std::unordered_map<std::string, std::string> semantics;
    std::unordered_map<std::string, int> registers;
    for (const char* target : {"hlsl", "hlsl10"}) {
        ShaderOutput output;
        const auto backEnd = MakeTranslator(target);
        backEnd->WriteProgram(&written, semantics, registers, output);
        EXPECT_EQ(backEnd->WriteMainFunction(&other),
                  "VS_OUTPUT main(VS_INPUT input){ \n\tVS_OUTPUT output;\n\treturn output;\n}\n");
    }
}

// The GLSL back ends write no bindings; the operation is for other tools.
TEST(Hooks, SpellBindingsForToolsThatAskGlsl)
{
    MorlTranslatorGLSL glsl;
    MorlTranslatorGLSLES es;
    MorlDeclare declare;
    MorlRegister binding;
    binding.name = "(name)";
    std::string text;
    for (int token = TOKEN_POSITION; token <= TOKEN_SAUTO; ++token) {
        binding.registerToken = static_cast<ENUM_TOKEN>(token);
        EXPECT_EQ(glsl.WriteRegister(&declare, &binding), es.WriteRegister(&declare, &binding));
        text += glsl.WriteRegister(&declare, &binding);
    }
    EXPECT_EQ(
        text,
        " : POSITION : NORMAL : TANGENT :  : BLENDINDICES : BLENDWEIGHT : TEXCOORD0 : TEXCOORD1"
        " : TEXCOORD2 : TEXCOORD3 : TEXCOORD4 : TEXCOORD5 : TEXCOORD6 : TEXCOORD7 :  : POSITION"
        " : COLOR : COLOR0 : COLOR1 : COLOR2 : COLOR3 : register(s0)");
    binding.registerToken = TOKEN_IDENTIFIER;
    EXPECT_EQ(glsl.WriteRegister(&declare, &binding), " : (name)");
    EXPECT_EQ(glsl.WriteRegister(&declare, nullptr), "");
}

// Calls that a back end writes in a special form still have names, for hosts that override the
// form.
TEST(Hooks, NameCallsThatHaveAForm)
{
    const std::pair<const char*, const char*> rows[] = {
        {"hlsl",
         "float3x3 float4x4 float4x4 tex1D tex2D own tex3D tex2Dproj texCUBE sample mul saturate "},
        {"hlsl10",
         "float3x3 float4x4 float4x4 tex1D tex2D own tex3D tex2Dproj texCUBE sample mul saturate "},
        {"glsl", "mat3 mat4 mat4 texture texture own texture texture2DProj texture  mul saturate "},
        {"glsles",
         "mat3 mat4 mat4 texture1D texture2D own texture3D texture2DProj textureCube  mul "
         "saturate "},
    };
    for (const auto& [target, expected] : rows) {
        std::string names;
        for (const ENUM_TOKEN token :
             {TOKEN_FLOAT3X3_CONSTRUCT, TOKEN_FLOAT4X4_CONSTRUCT, TOKEN_FLOAT4X4_TRANPOSE,
              TOKEN_TEX1D, TOKEN_TEX2D, TOKEN_TEX2DARRAY, TOKEN_TEX3D, TOKEN_TEX2DPROJ,
              TOKEN_TEXCUBE, TOKEN_SAMPLE, TOKEN_MUL, TOKEN_SATURATE}) {
            MorlFunctionCall call;
            call.name = "own";
            call.functionToken = token;
            names += MakeTranslator(target)->WriteFunctionName(&call) + " ";
        }
        EXPECT_EQ(names, expected) << target;
        EXPECT_EQ(MakeTranslator(target)->WriteVariableType(TOKEN_VOID), "void") << target;
    }
}

/// The text of a pass by a back end that asks its own virtual operations, as a host's class would.
template <class BackEnd>
std::string WrittenByHooks(const MorlCompiler& compiler, const PassProperty& pass)
{
    MorlParser parser;
    std::vector<MorlNode> copies(pass.nodeNames.size());
    std::vector<MorlNode*> nodes;
    for (std::size_t i = 0; i < copies.size(); ++i) {
        const MorlNode& original = *compiler.FindNode(pass.nodeNames[i]);
        copies[i].SetName(original.GetName());
        copies[i].SetContent(original.GetContent());
        for (const std::string& reference : original.GetReference()) {
            copies[i].AddReference(reference);
        }
        copies[i].Compile(&parser, pass.target);
        nodes.push_back(&copies[i]);
    }
    MorlProgram program;
    program.mainFunction = new MorlFunction;
    program.stage = pass.stage;
    auto macros = pass.macros;
    MorlLinker().Link(pass.target, macros, nodes, program);
    auto semantics = pass.semantics;
    auto registers = pass.samplerRegisters;
    ShaderOutput output;
    BackEnd().WriteProgram(&program, semantics, registers, output);
    return output.code;
}

// Requests are written straight from a target's record; a host's own class is asked.
TEST(Hooks, WriteTheSameAsRequests)
{
    const std::map<std::string, std::string (*)(const MorlCompiler&, const PassProperty&)> writers =
        {
            {"hlsl", WrittenByHooks<MorlTranslatorHLSL>},
            {"hlsl10", WrittenByHooks<MorlTranslatorHLSL10>},
            {"glsl", WrittenByHooks<MorlTranslatorGLSL>},
            {"glsles", WrittenByHooks<MorlTranslatorGLSLES>},
        };
    const morl_test::LogCapture log;
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t count = 0;
    for (morl_test::SampleRequest request : morl_test::RichestSamples()) {
        const auto writer = writers.find(request.target);
        if (writer == writers.end()) {
            continue;  // a further target
        }
        ShaderOutput vertex;
        compiler->Compile(request.vertex, vertex);
        EXPECT_EQ(writer->second(*compiler, request.vertex), vertex.code) << request.shader;
        request.fragment.semantics = vertex.semantics;
        ShaderOutput fragment;
        compiler->Compile(request.fragment, fragment);
        EXPECT_EQ(writer->second(*compiler, request.fragment), fragment.code) << request.shader;
        ++count;
    }
    EXPECT_GT(count, 0U);
}

}  // namespace
