// SPDX-License-Identifier: MIT
#include "morl/compiler/internal/report.h"

#include "morl/ast/stage.h"
#include "morl/compiler/morl_node.h"
#include "morl/core/string_helper.h"
#include "morl/parser/keyword_map.h"
#include "morl/translator/internal/register_order.h"
#include "morl/translator/internal/walk.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

namespace ns_ruke {
namespace {

/// Describes the declarations of one request.
class Reflection {
public:
    Reflection(const PassProperty& newPass, const TargetRecord& newTarget,
               const ShaderOutput& newOutput)
        : pass(newPass), target(newTarget), output(newOutput)
    {
    }

    /// @param node the index of `source`
    void Describe(const MorlDeclare& declare, int node, const MorlNode& source,
                  ReportDeclare& result) const
    {
        result.name = declare.name;
        result.node = node;
        const TextPlace place = source.PlaceOf(declare.offset);
        result.line = place.line;
        result.column = place.column;
        result.type = KeywordMap::WordOf(declare.varType);
        result.writtenType = WrittenType(declare, target);
        AddArray(declare, result);
        if (declare.registerBinding != nullptr) {
            result.semantic = KeywordMap::WordOf(declare.registerBinding->registerToken);
            result.number = target.writesBindings ? NumberOfBinding(declare) : -1;
        }
    }

private:
    void AddArray(const MorlDeclare& declare, ReportDeclare& result) const
    {
        if (declare.arraySize == nullptr) {
            return;
        }
        MorlProgram none;
        none.stage = pass.stage;
        WrittenRequest request = {pass, none, nullptr};
        Answers answers(request, target);
        Text text;
        Walk(answers, text).Expression(declare.arraySize);
        result.arraySize = text.Copy();
        if (declare.arraySize->unitType == TOKEN_NUMBER) {
            result.elements = StringHelper::ConvertToInt32(result.arraySize);
        }
    }

    int NumberOfBinding(const MorlDeclare& declare) const
    {
        const ENUM_TOKEN token = BindingToken(&declare);
        if (token == TOKEN_SAUTO) {
            const auto found = pass.samplerRegisters.find(declare.name);
            return found != pass.samplerRegisters.end() ? found->second : 0;
        }
        if (token != TOKEN_TEXAUTO) {
            return -1;
        }
        const auto& semantics = pass.stage == kFragmentStage ? pass.semantics : output.semantics;
        const auto found = semantics.find(declare.name);
        return found != semantics.end() ? TexcoordNumber(found->second) : -1;
    }

    const PassProperty& pass;
    const TargetRecord& target;
    const ShaderOutput& output;
};

std::vector<ReportDeclare>& ListOf(const MorlDeclare& declare, PassReport& report)
{
    switch (declare.bufferType) {
    case TOKEN_UNIFORM:
        return report.uniforms;
    case TOKEN_IN:
        return report.inputs;
    default:
        return report.outputs;
    }
}

void AddMacros(const PassProperty& pass, const LinkReport& link, PassReport& report)
{
    for (const auto& [name, place] : link.usedMacros) {
        const auto value = pass.macros.find(name);
        const bool isSet = value != pass.macros.end();
        report.macros.push_back({name, isSet ? value->second : 0, isSet});
    }
    for (const auto& [name, value] : pass.macros) {
        if (link.usedMacros.count(name) == 0) {
            report.unusedMacros.push_back(name);
        }
    }
    std::sort(report.unusedMacros.begin(), report.unusedMacros.end());
}

}  // namespace

void FillReport(const PassProperty& pass, const TargetRecord& target, const LinkReport& link,
                WrittenLines& lines, const ShaderOutput& output, PassReport& report)
{
    report.nodes.reserve(link.origins.size());
    for (const LinkOrigin& origin : link.origins) {
        report.nodes.push_back(origin.node->GetName());
    }
    report.lines = lines.Resolve(output.code);
    const Reflection reflection(pass, target, output);
    const std::vector<const MorlDeclare*>& declares = lines.Declares();
    for (const MorlDeclare* declare : declares) {
        std::vector<ReportDeclare>& list = ListOf(*declare, report);
        if (list.capacity() == 0) {
            list.reserve(static_cast<std::size_t>(
                std::count_if(declares.begin(), declares.end(), [&](const MorlDeclare* other) {
                    return other->bufferType == declare->bufferType;
                })));
        }
        const int node = lines.NodeOf(declare);
        const MorlNode& source = *link.origins[static_cast<std::size_t>(node)].node;
        reflection.Describe(*declare, node, source, list.emplace_back());
    }
    AddMacros(pass, link, report);
}

}  // namespace ns_ruke
