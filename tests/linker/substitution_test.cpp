// SPDX-License-Identifier: MIT
// The order of substitutions decides the result when names overlap; it is checked against the plain
// walk over all names.
#include <gtest/gtest.h>
#include <morl/linker/loop_values.h>
#include <morl/morl.h>
#include <random>

namespace {

using namespace ns_ruke;

std::string SubstituteByWalking(const LoopValues& values, std::string name)
{
    for (const auto& [key, value] : values) {
        name = StringHelper::ReplaceAll(name, key, value);
    }
    return name;
}

/// What the linker makes of a variable name while these values are in force.
std::string SubstituteByLinking(const LoopValues& values, const std::string& name)
{
    std::string source;
    for (const auto& [key, value] : values) {
        source += key + " = " + value + ";";
    }
    MorlParser parser;
    MorlNode node;
    node.SetContent("void main() {" + source + "a." + name + " = 1; }");
    node.Compile(&parser, "glsl");
    MorlProgram program;
    program.mainFunction = new MorlFunction;
    std::unordered_map<std::string, int> macros;
    std::vector<MorlNode*> nodes = {&node};
    MorlLinker().Link("glsl", macros, nodes, program);
    const auto* assign = static_cast<const MorlAssignSentence*>(program.mainFunction->sentences[0]);
    const auto* member = static_cast<const MorlBinaryOperation*>(assign->target);
    return static_cast<const MorlVariable*>(member->right)->name;
}

TEST(Substitution, WalksLongerNamesFirst)
{
    const LoopValues values = {{"$A", "1"}, {"$AB", "2"}, {"$ABC", "3"}, {"$1", "9"}};
    EXPECT_EQ(SubstituteByLinking(values, "x$ABCx$ABx$Ax"), "x3x2x1x");
}

TEST(Substitution, IsThePlainWalkForManyNames)
{
    std::mt19937 random(11);
    const auto letters = [&random](std::size_t count, const std::string& alphabet) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += alphabet[random() % alphabet.size()];
        }
        return text;
    };
    for (int round = 0; round < 300; ++round) {
        LoopValues values;
        for (std::size_t i = random() % 120; i > 0; --i) {
            values["$" + letters(random() % 4, "$a12")] = letters(1 + random() % 2, "12");
        }
        // "x" keeps the name from starting with a digit, which would make it a swizzle.
        const std::string name = "x" + letters(random() % 10, "$a1");
        EXPECT_EQ(SubstituteByLinking(values, name), SubstituteByWalking(values, name)) << name;
    }
}

}  // namespace
