// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <morl/morl.h>
#include <memory>

namespace {

using namespace ns_ruke;

TEST(Tree, SharesOneConditionBetweenTheGroupsOfABlock)
{
    MorlParser parser;
    MorlProgram program;
    parser.Parse("#if A in float a; out float b; uniform float c; float f() { } #endif", program);
    const auto* inputs = static_cast<MorlMarcoIfDeclare*>(program.inputs.at(0));
    const auto* outputs = static_cast<MorlMarcoIfDeclare*>(program.outputs.at(0));
    const auto* uniforms = static_cast<MorlMarcoIfDeclare*>(program.uniforms.at(0));
    const auto* functions = static_cast<MorlMarcoIfFunction*>(program.functions.at(0));
    EXPECT_NE(inputs->condition, nullptr);
    EXPECT_EQ(inputs->condition, outputs->condition);
    EXPECT_EQ(inputs->condition, uniforms->condition);
    EXPECT_EQ(inputs->condition, functions->condition);
}

// A group that is taken out of its program keeps what it needs, and the program does not miss it.
TEST(Tree, GivesAwayGroupsOfABlock)
{
    for (const bool isProgramFirst : {false, true}) {
        auto program = std::make_unique<MorlProgram>();
        MorlParser().Parse("#if A + B in float a; out float b; float f() { } #endif", *program);
        std::unique_ptr<MorlDeclare> group(program->inputs[0]);
        program->inputs.clear();
        if (isProgramFirst) {
            program.reset();
        }
        const auto& taken = static_cast<const MorlMarcoIfDeclare&>(*group);
        EXPECT_EQ(static_cast<const MorlBinaryOperation*>(taken.condition)->operatorToken,
                  TOKEN_PLUS);
        group.reset();
        EXPECT_EQ(program == nullptr, isProgramFirst);
    }
}

/// An expression that counts its destruction.
struct Probe : MorlExpression {
    explicit Probe(int& destroyed) : count(destroyed) {}
    ~Probe() override { ++count; }
    int& count;
};

TEST(Tree, OwnsConditionsButForThoseOfFunctionGroups)
{
    int destroyed = 0;
    auto* declares = new MorlMarcoIfDeclare;
    declares->condition = new Probe(destroyed);
    delete declares;
    EXPECT_EQ(destroyed, 1);

    Probe condition(destroyed);
    auto* functions = new MorlMarcoIfFunction;
    functions->condition = &condition;
    delete functions;
    EXPECT_EQ(destroyed, 1);
}

TEST(Tree, CopiesNodesShallowly)
{
    MorlProgram program;
    program.stage = 1;
    program.mainFunction = new MorlFunction;
    program.inputs.push_back(new MorlDeclare);
    // The copy shares its children with the original, so only one of them may be destroyed.
    auto* copy = new MorlProgram(program);
    EXPECT_EQ(copy->inputs, program.inputs);
    EXPECT_EQ(copy->mainFunction, program.mainFunction);
    EXPECT_EQ(copy->stage, 1);
    copy->inputs.clear();
    copy->mainFunction = nullptr;
    delete copy;
}

}  // namespace
