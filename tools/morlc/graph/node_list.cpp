// SPDX-License-Identifier: MIT
#include "graph/node_list.h"

#include "text.h"

#include <morl/core/log_scope.h>

namespace morlc {
namespace {

using ns_ruke::MorlDeclare;
using ns_ruke::MorlMarcoForDeclare;
using ns_ruke::MorlMarcoIfDeclare;

std::string ArrayOf(const MorlDeclare& declare)
{
    const auto* const number = dynamic_cast<const ns_ruke::MorlNumber*>(declare.arraySize);
    const auto* const variable = dynamic_cast<const ns_ruke::MorlVariable*>(declare.arraySize);
    if (number != nullptr) {
        return "[" + number->value + "]";
    }
    if (variable != nullptr) {
        return "[" + variable->name + "]";
    }
    return declare.arraySize != nullptr ? "[...]" : "";
}

void AppendDeclares(std::string& text, const char* title, const std::vector<MorlDeclare*>& declares,
                    const std::string& block)
{
    for (const MorlDeclare* declare : declares) {
        if (const auto* choice = dynamic_cast<const MorlMarcoIfDeclare*>(declare)) {
            AppendDeclares(text, title, choice->declares, block + "  #if");
            AppendDeclares(text, title, choice->elseDeclares, block + "  #else");
        } else if (const auto* loop = dynamic_cast<const MorlMarcoForDeclare*>(declare)) {
            AppendDeclares(text, title, loop->declares, block + "  #for " + loop->varName);
        } else if (declare != nullptr) {
            const ns_ruke::MorlRegister* const binding = declare->registerBinding;
            text += std::string("  ") + title + "  " +
                    std::string(ns_ruke::KeywordMap::WordOf(declare->varType)) + " " +
                    declare->name + ArrayOf(*declare) +
                    (binding != nullptr ? " : " + binding->name : "") + block + "\n";
        }
    }
}

void AppendNode(std::string& text, const ns_ruke::MorlNode& node, const std::string& file)
{
    const std::string name = node.GetName();
    text += Printable(name) + "  " + Printable(file) + "\n";
    for (const std::string& reference : node.GetReference()) {
        text += "  ref      " + Printable(reference) + "\n";
    }
    const ns_ruke::LogScope scope(name);
    ns_ruke::MorlProgram program;
    ns_ruke::MorlParser parser;
    parser.Parse(node.GetContent(), program);
    AppendDeclares(text, "in     ", program.inputs, "");
    AppendDeclares(text, "out    ", program.outputs, "");
    AppendDeclares(text, "uniform", program.uniforms, "");
}

}  // namespace

std::string FormatNodeList(const ns_ruke::MorlCompiler& compiler, const NodeOrigins& origins)
{
    std::string text;
    for (const std::string& name : compiler.GetNodeNames()) {
        AppendNode(text, *compiler.FindNode(name), origins.FileOf(name));
    }
    return text;
}

}  // namespace morlc
