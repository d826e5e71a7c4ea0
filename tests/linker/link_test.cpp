// SPDX-License-Identifier: MIT
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace {

using namespace ns_ruke;
using morl_test::LogCapture;
using Strings = std::vector<std::string>;

/// Nodes parsed from sources, and the program that they are linked into.
class Linked {
public:
    explicit Linked(const std::vector<morl_test::NodeSource>& sources)
    {
        for (const morl_test::NodeSource& source : sources) {
            nodes.push_back(std::make_unique<MorlNode>());
            nodes.back()->SetName(source.name);
            nodes.back()->SetContent(source.content);
            for (const std::string& reference : source.references) {
                nodes.back()->AddReference(reference);
            }
            nodes.back()->Compile(&parser, "glsl");
        }
        program.mainFunction = new MorlFunction;
        program.stage = 0;
    }

    void Link(std::unordered_map<std::string, int> macros = {})
    {
        std::vector<MorlNode*> list;
        for (const auto& node : nodes) {
            list.push_back(node.get());
        }
        MorlLinker().Link("glsl", macros, list, program);
        EXPECT_TRUE(list.empty());
    }

    /// The names of the uniforms, which tell the order of the nodes.
    std::string Uniforms() const
    {
        std::string names;
        for (const MorlDeclare* uniform : program.uniforms) {
            names += (names.empty() ? "" : " ") + uniform->name;
        }
        return names;
    }

    MorlParser parser;
    std::vector<std::unique_ptr<MorlNode>> nodes;
    MorlProgram program;
};

morl_test::NodeSource Marked(const std::string& name, const Strings& references)
{
    return {name, "uniform float " + name + ";", references};
}

/// The rule as documented: scan from the front, take the first node that is ready, start again.
std::string OrderByScanning(std::vector<morl_test::NodeSource> nodes)
{
    std::string order;
    Strings placed;
    const auto contains = [](const auto& list, const auto& matches) {
        return std::find_if(list.begin(), list.end(), matches) != list.end();
    };
    const std::vector<morl_test::NodeSource> all = nodes;
    const auto ready = [&](const morl_test::NodeSource& node) {
        return std::all_of(
            node.references.begin(), node.references.end(), [&](const std::string& name) {
                return !contains(all, [&](const auto& other) { return other.name == name; }) ||
                       contains(placed, [&](const auto& other) { return other == name; });
            });
    };
    for (auto next = nodes.begin(); next != nodes.end(); next = nodes.begin()) {
        next = std::find_if(nodes.begin(), nodes.end(), ready);
        if (next == nodes.end()) {
            break;
        }
        order += (order.empty() ? "" : " ") + next->name;
        placed.push_back(next->name);
        nodes.erase(next);
    }
    return order;
}

TEST(Link, OrdersRandomGraphsAsScanningDoes)
{
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::vector<morl_test::NodeSource> nodes;
        const auto count = static_cast<unsigned>(random() % 36);
        for (unsigned i = 0; i < count; ++i) {
            Strings references;
            for (auto j = random() % 3; j > 0; --j) {
                references.push_back("n" + std::to_string(random() % (count + 1)));
            }
            nodes.push_back(Marked("n" + std::to_string(i), references));
        }
        const LogCapture log;
        Linked linked(nodes);
        linked.Link();
        EXPECT_EQ(linked.Uniforms(), OrderByScanning(nodes)) << "round " << round;
    }
}

// A linker that has linked many declarations must not remember a program that has been destroyed.
TEST(Link, MayBeCopiedAfterALink)
{
    std::string source;
    std::string later;
    for (int i = 0; i < 100; ++i) {
        source += "in float a" + std::to_string(i) + ";";
        later += "in int a" + std::to_string(i) + ";";
    }
    MorlLinker linker;
    const auto link = [&](MorlLinker& used) {
        Linked linked({{"A", source, {}}, {"B", later, {}}});
        std::unordered_map<std::string, int> macros;
        std::vector<MorlNode*> nodes = {linked.nodes[0].get(), linked.nodes[1].get()};
        used.Link("glsl", macros, nodes, linked.program);
        const std::vector<MorlDeclare*>& inputs = linked.program.inputs;
        return std::count_if(inputs.begin(), inputs.end(), [](const MorlDeclare* input) {
            return input->varType == TOKEN_FLOAT;
        });
    };
    EXPECT_EQ(link(linker), 100);
    MorlLinker copy(linker);
    EXPECT_EQ(link(copy), 100);
    linker = copy;
    EXPECT_EQ(link(linker), 100);
}

TEST(Link, CountsIterationsAfresh)
{
    const std::string source = "void main() { #for N : 0 #if A x = 1; #endif #endfor }";
    const LogCapture log;
    MorlLinker linker;
    for (const int bound : {1'000'001, 1, 1'000'001}) {
        Linked linked(std::vector<morl_test::NodeSource>{{"A", source, {}}});
        std::unordered_map<std::string, int> macros = {{"N", bound}, {"A", bound == 1 ? 1 : 0}};
        std::vector<MorlNode*> nodes = {linked.nodes[0].get()};
        linker.Link("glsl", macros, nodes, linked.program);
        EXPECT_EQ(linked.program.mainFunction->sentences.size(), bound == 1 ? 1U : 0U);
    }
    EXPECT_EQ(log.errors, Strings(2, "MorlLinker: too many iterations: N"));
}

TEST(Link, HandsFunctionsOverAsTheyAre)
{
    Linked linked(
        {{"A", "float f() { } #if X float g() { } #endif", {}}, {"B", "float h() { }", {}}});
    linked.Link({{"X", 1}});
    ASSERT_EQ(linked.program.functions.size(), 3U);
    EXPECT_EQ(linked.program.functions[0], linked.nodes[0]->GetProgram()->functions[0]);
    EXPECT_EQ(linked.program.functions[1], linked.nodes[0]->GetProgram()->functions[1]);
    EXPECT_EQ(linked.program.functions[2], linked.nodes[1]->GetProgram()->functions[0]);
}

// No parser makes such a group, but a host may.
TEST(Link, ChoosesBetweenTheFunctionsOfAGroup)
{
    Linked linked(std::vector<morl_test::NodeSource>{{"A", "float f() { } float g() { }", {}}});
    MorlProgram& source = *linked.nodes[0]->GetProgram();
    MorlNumber condition;
    auto* group = new MorlMarcoIfFunction;
    group->unitType = TOKEN_MARCO_IF;
    group->condition = &condition;
    group->functions = {source.functions[0]};
    group->elseFunctions = {source.functions[1]};
    source.functions = {group};
    for (const char* value : {"1", "0"}) {
        condition.value = value;
        linked.program.functions.clear();
        linked.Link();
        EXPECT_EQ(linked.program.functions[0]->name, *value == '1' ? "f" : "g");
    }
}

TEST(Link, TakesWhatANodeHas)
{
    Linked linked({Marked("A", {}), Marked("B", {})});
    linked.nodes[0] = std::make_unique<MorlNode>();  // never parsed
    linked.Link();
    EXPECT_EQ(linked.Uniforms(), "B");
}

}  // namespace
