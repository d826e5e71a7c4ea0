// SPDX-License-Identifier: MIT
// An editor's session through the C interface: random edits and requests, and after each request a
// comparison with a new compiler that has the same nodes.
#include "support/log_capture.h"
#include "support/random_graph.h"

#include <gtest/gtest.h>
#include <json/json.h>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <morl/c/morl.hpp>
#include <sstream>
#include <utility>

namespace {

using namespace ns_ruke;
using morl::Sized;

/// How many edits and requests there are; "./dev edits" sets the variable.
long Count()
{
    const char* const count = std::getenv("MORL_EDITS");
    return count != nullptr ? std::atol(count) : 20000;
}

// The same of both interfaces, as text.

void ShowDeclares(std::ostream& out, const morl_result* result, std::int32_t list)
{
    auto d = Sized<morl_declare>();
    for (std::size_t i = 0; morl_get_declare(result, list, i, &d) == MORL_OK; ++i) {
        out << morl::ToView(d.name) << d.node << ":" << d.line << ":" << d.column
            << morl::ToView(d.type) << morl::ToView(d.written_type) << morl::ToView(d.array_size)
            << d.elements << morl::ToView(d.semantic) << d.number << " " << d.base_type << d.rows
            << d.columns << d.bytes << " " << d.offset << " " << d.semantic_kind << d.semantic_index
            << d.is_used;
        std::for_each(d.repeated_by, d.repeated_by + d.repeated_by_count,
                      [&out](int node) { out << "," << node; });
        out << "\n";
    }
}

void ShowDeclares(std::ostream& out, const std::vector<ReportDeclare>& list)
{
    for (const ReportDeclare& d : list) {
        out << d.name << d.node << ":" << d.line << ":" << d.column << d.type << d.writtenType
            << d.arraySize << d.elements << d.semantic << d.number << " "
            << static_cast<int>(d.baseType) << d.rows << d.columns << d.bytes << " " << d.offset
            << " " << static_cast<int>(d.semanticKind) << d.semanticIndex << d.isUsed;
        for (const int node : d.repeatedBy) {
            out << "," << node;
        }
        out << "\n";
    }
}

std::string Shown(const morl_result* result)
{
    auto output = Sized<morl_output>();
    morl_get_output(result, &output);
    std::ostringstream out;
    out << morl::ToView(output.code);
    for (std::size_t i = 0; i < output.semantic_count; ++i) {
        out << morl::ToView(output.semantics[i].name) << morl::ToView(output.semantics[i].semantic)
            << "\n";
    }
    for (std::size_t i = 0; i < output.uniform_count; ++i) {
        out << morl::ToView(output.uniforms[i]) << "\n";
    }
    auto f = Sized<morl_fault>();
    for (std::size_t i = 0; morl_get_fault(result, i, &f) == MORL_OK; ++i) {
        out << f.level << morl::ToView(f.node) << f.line << ":" << f.column << morl::ToView(f.text)
            << morl::ToView(f.hint) << "\n";
    }
    for (const morl_line* l = output.lines; l != output.lines + output.line_count; ++l) {
        out << (l->node < 0 ? "-" : morl::ToView(output.nodes[l->node])) << l->line << "\n";
    }
    ShowDeclares(out, result, MORL_UNIFORMS);
    ShowDeclares(out, result, MORL_INPUTS);
    ShowDeclares(out, result, MORL_OUTPUTS);
    auto m = Sized<morl_macro>();
    for (std::size_t i = 0; morl_get_macro(result, i, &m) == MORL_OK; ++i) {
        out << morl::ToView(m.name) << m.value << m.is_set << "\n";
    }
    for (std::size_t i = 0; i < output.unused_macro_count; ++i) {
        out << morl::ToView(output.unused_macros[i]) << "\n";
    }
    auto w = Sized<morl_warning>();
    for (std::size_t i = 0; morl_get_warning(result, i, &w) == MORL_OK; ++i) {
        out << morl::ToView(w.check) << morl::ToView(w.node) << w.line << ":" << w.column
            << morl::ToView(w.text) << "\n";
    }
    out << output.constant_bytes;
    return out.str();
}

std::string Shown(const ShaderOutput& output, const PassReport& report,
                  const std::vector<ReportWarning>& warnings)
{
    std::ostringstream out;
    out << output.code;
    for (const auto& [name, semantic] :
         std::map(output.semantics.begin(), output.semantics.end())) {
        out << name << semantic << "\n";
    }
    for (const std::string& name : output.uniformNames) {
        out << name << "\n";
    }
    for (const ReportFault& f : report.faults) {
        out << (f.level == LogLevel::Error) << f.node << f.line << ":" << f.column << f.text
            << f.hint << "\n";
    }
    for (const ReportLine& l : report.lines) {
        out << (l.node < 0 ? "-" : report.nodes[static_cast<std::size_t>(l.node)]) << l.line
            << "\n";
    }
    ShowDeclares(out, report.uniforms);
    ShowDeclares(out, report.inputs);
    ShowDeclares(out, report.outputs);
    for (const ReportMacro& m : report.macros) {
        out << m.name << m.value << m.isSet << "\n";
    }
    for (const std::string& name : report.unusedMacros) {
        out << name << "\n";
    }
    for (const ReportWarning& w : warnings) {
        out << w.check << w.node << w.line << ":" << w.column << w.text << "\n";
    }
    out << report.constantBytes;
    return out.str();
}

/// The editor: a compiler, and what its nodes should be.
class Session {
public:
    Session() : compiler(morl_compiler_create())
    {
        morl_set_log(
            [](void* host, const morl_log_line* line) {
                static_cast<Session*>(host)->parses +=
                    morl::ToView(line->text) == messages::kCompilerStart;
            },
            this, nullptr, nullptr);
        for (unsigned seed = 0; seed < 50; ++seed) {
            for (const morl_test::NodeSource& node : morl_test::RandomGraph(seed).nodes) {
                contents.push_back(node.content);
            }
        }
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session()
    {
        morl_compiler_destroy(compiler);
        morl_set_log(nullptr, nullptr, nullptr, nullptr);
    }

    void Step()
    {
        const auto kind = random() % 20;
        if (kind < 9) {
            Compile();
        } else if (kind < 15) {
            Set();
        } else if (kind < 17) {
            Remove();
        } else {
            Load(kind == 19);
        }
    }

    std::size_t requests = 0;

private:
    struct Node {
        std::string content;
        std::vector<std::string> references;
        std::string parsed{};  ///< the target that it was last parsed for
    };

    template <class List>
    const auto& PickFrom(const List& list)
    {
        return list[random() % std::size(list)];
    }

    Node MakeNode()
    {
        Node node{PickFrom(contents), {}};
        if (random() % 2 == 0) {
            node.content = morl_test::Damaged(node.content, random);
        }
        for (auto count = random() % 3; count > 0; --count) {
            node.references.emplace_back(PickFrom(kNames));
        }
        return node;
    }

    void Store(const std::string& name, Node node)
    {
        const auto old = nodes.find(name);
        if (old != nodes.end() && old->second.content == node.content) {
            node.parsed = old->second.parsed;
        }
        nodes[name] = std::move(node);
    }

    void Set()
    {
        const std::string name = PickFrom(kNames);
        Node node = MakeNode();
        if (nodes.count(name) > 0 && random() % 4 == 0) {
            node.content = nodes[name].content;  // as when an editor saves everything
        }
        std::vector<morl_text> references;
        for (const std::string& reference : node.references) {
            references.push_back(morl::ToText(reference));
        }
        const morl_node passed = {sizeof passed,
                                  morl::ToText(name),
                                  morl::ToText(node.content),
                                  references.data(),
                                  references.size(),
                                  1.5F,
                                  2.5F};
        ASSERT_EQ(morl_set_node(compiler, &passed), MORL_OK);
        Store(name, std::move(node));
    }

    void Remove()
    {
        const std::string name = PickFrom(kNames);
        ASSERT_EQ(morl_remove_node(compiler, morl::ToText(name)),
                  nodes.erase(name) > 0 ? MORL_OK : MORL_NOT_FOUND);
    }

    void Load(bool isMalformed)
    {
        Json::Value list(Json::arrayValue);
        std::vector<std::pair<std::string, Node>> added;
        for (auto count = 1 + random() % 3; count > 0; --count) {
            // A JSON document is text, so none of the bytes that are not.
            Node node = MakeNode();
            std::replace(node.content.begin(), node.content.end(), '\xe9', ' ');
            Json::Value object(Json::objectValue);
            object["name"] = PickFrom(kNames);
            object["content"] = node.content;
            object["ref"] = Json::Value(Json::arrayValue);
            for (const std::string& reference : node.references) {
                object["ref"].append(reference);
            }
            added.emplace_back(object["name"].asString(), std::move(node));
            list.append(object);
        }
        std::string text = Json::writeString(Json::StreamWriterBuilder(), list);
        if (isMalformed) {
            text.resize(random() % text.size());
        }
        const morl_status status =
            morl_load_nodes(compiler, morl::ToText("session"), morl::ToText(text));
        ASSERT_EQ(status, isMalformed ? MORL_NODES_REFUSED : MORL_OK) << text;
        auto fault = Sized<morl_fault>();
        ASSERT_EQ(morl_get_call_fault(compiler, 0, &fault), isMalformed ? MORL_OK : MORL_NOT_FOUND);
        if (!isMalformed) {
            for (auto& [name, node] : added) {
                Store(name, std::move(node));
            }
        }
        CheckNodes();
    }

    /// What a host reads back, in a loop over the names.
    void CheckNodes()
    {
        const morl_text* names = nullptr;
        std::size_t count = 0;
        ASSERT_EQ(morl_get_node_names(compiler, &names, &count), MORL_OK);
        ASSERT_EQ(count, nodes.size());
        for (std::size_t i = 0; i < count; ++i) {
            auto node = Sized<morl_node>();
            ASSERT_EQ(morl_get_node(compiler, names[i], &node), MORL_OK);
            const Node& expected = nodes.at(std::string(morl::ToView(names[i])));
            ASSERT_EQ(morl::ToView(node.content), expected.content);
            ASSERT_EQ(node.reference_count, expected.references.size());
            for (std::size_t j = 0; j < node.reference_count; ++j) {
                ASSERT_EQ(morl::ToView(node.references[j]), expected.references[j]);
            }
        }
    }

    void Compile()
    {
        const std::string target = PickFrom(targets);
        const std::int32_t stage = random() % 2 == 0 ? MORL_VERTEX : MORL_FRAGMENT;
        std::vector<std::string> named;
        for (const auto& [name, node] : nodes) {
            if (random() % 4 > 0) {
                named.insert(
                    named.begin() + static_cast<std::ptrdiff_t>(random() % (named.size() + 1)),
                    name);
            }
        }
        std::vector<morl_text> names;
        std::size_t expectedParses = 0;
        for (const std::string& name : named) {
            names.push_back(morl::ToText(name));
            expectedParses += std::exchange(nodes[name].parsed, target) != target ? 1 : 0;
        }
        const morl_value macros[] = {{morl::ToText("COUNT"), 2, 0},
                                     {morl::ToText("FANCY"), 1, 0},
                                     {morl::ToText("UNUSED"), 3, 0}};
        const morl_semantic semantics[] = {{morl::ToText("oFirst"), morl::ToText("TEXCOORD4")}};
        auto request = Sized<morl_request>();
        request.nodes = names.data();
        request.node_count = names.size();
        request.macros = macros;
        request.macro_count = std::size(macros);
        request.semantics = semantics;
        request.semantic_count = std::size(semantics);
        request.target = morl::ToText(target);
        request.stage = stage;
        request.wants_report = 1;
        request.wants_warnings = 1;
        morl_result* result = nullptr;
        parses = 0;
        ASSERT_EQ(morl_compile(compiler, &request, &result), MORL_OK);
        ASSERT_EQ(parses, expectedParses);
        const std::string shown = Shown(result);
        morl_result_destroy(result);
        ASSERT_EQ(shown, CompileAfresh(target, stage, named));
        ++requests;
    }

    std::string CompileAfresh(const std::string& target, int stage,
                              const std::vector<std::string>& named) const
    {
        MorlCompiler fresh(std::vector<NodeText>{});
        for (const auto& [name, node] : nodes) {
            fresh.SetNode(name, node.content, node.references);
        }
        PassProperty pass = morl_test::MakePass(target, stage, named);
        pass.macros = {{"COUNT", 2}, {"FANCY", 1}, {"UNUSED", 3}};
        pass.semantics = {{"oFirst", "TEXCOORD4"}};
        ShaderOutput output;
        PassReport report;
        std::vector<ReportWarning> warnings;
        fresh.CompileReported(pass, output, report, warnings);
        return Shown(output, report, warnings);
    }

    static constexpr const char* kNames[] = {"a", "b", "c", "d", "e"};

    morl_compiler* compiler;
    std::map<std::string, Node> nodes;
    std::vector<std::string> contents;
    std::vector<std::string> targets = MorlTargets();
    std::size_t parses = 0;
    std::mt19937 random{7};
};

TEST(Edits, GiveTheSameAsANewCompiler)
{
    Session session;
    const long count = Count();
    for (long i = 0; i < count; ++i) {
        session.Step();
        ASSERT_FALSE(HasFatalFailure()) << "step " << i;
    }
    EXPECT_GT(session.requests, static_cast<std::size_t>(count) / 3);
}

}  // namespace
