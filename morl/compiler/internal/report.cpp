// SPDX-License-Identifier: MIT
#include "morl/compiler/internal/report.h"

#include "morl/ast/stage.h"
#include "morl/compiler/internal/constant_buffer.h"
#include "morl/compiler/morl_node.h"
#include "morl/core/string_helper.h"
#include "morl/linker/morl_linker.h"
#include "morl/parser/keyword_map.h"
#include "morl/translator/internal/register_order.h"
#include "morl/translator/internal/walk.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ns_ruke {
namespace {

/// The longest array whose size in bytes is told. No target has longer ones.
constexpr int kMostElements = 65536;

DeclareType ToDeclareType(ValueBase base, ENUM_TOKEN type)
{
    switch (base) {
    case ValueBase::Float:
        return DeclareType::Float;
    case ValueBase::Int:
        return DeclareType::Int;
    case ValueBase::BoneIndex:
        return DeclareType::BoneIndex;
    case ValueBase::Sampler:
        break;
    default:
        return DeclareType::Unknown;
    }
    switch (type) {
    case TOKEN_SAMPLER1D:
        return DeclareType::Sampler1D;
    case TOKEN_SAMPLER1DARRAY:
        return DeclareType::Sampler1DArray;
    case TOKEN_SAMPLER2D:
        return DeclareType::Sampler2D;
    case TOKEN_SAMPLER2DARRAY:
        return DeclareType::Sampler2DArray;
    case TOKEN_SAMPLER3D:
        return DeclareType::Sampler3D;
    case TOKEN_SAMPLER3DARRAY:
        return DeclareType::Sampler3DArray;
    default:
        return DeclareType::SamplerCube;
    }
}

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
        const Keyword& row = KeywordMap::RowOf(declare.varType);
        result.type = row.spelling;
        result.writtenType = WrittenType(declare, target);
        AddArray(declare, result);
        AddType(declare, row.type, result);
        if (declare.registerBinding != nullptr) {
            AddSemantic(declare, result);
        }
    }

private:
    static void AddType(const MorlDeclare& declare, ValueType type, ReportDeclare& result)
    {
        if (declare.varType == TOKEN_AUTO && BindingToken(&declare) == TOKEN_BLENDINDICES) {
            type = {ValueBase::BoneIndex, 4, 1};
        }
        result.baseType = ToDeclareType(type.base, declare.varType);
        if (type.IsKnown() && type.base != ValueBase::Sampler) {
            result.rows = type.rows;
            result.columns = type.columns;
            const int elements = declare.arraySize != nullptr ? result.elements : 1;
            result.bytes = elements <= kMostElements ? static_cast<int>(sizeof(float)) * type.rows *
                                                           type.columns * elements
                                                     : 0;
        }
    }

    void AddSemantic(const MorlDeclare& declare, ReportDeclare& result) const
    {
        const Keyword& row = KeywordMap::RowOf(declare.registerBinding->registerToken);
        result.semantic = row.spelling;
        result.semanticKind =
            row.semantic != SemanticKind::None ? row.semantic : SemanticKind::Other;
        const int given = target.writesBindings ? NumberOfBinding(declare) : -1;
        result.semanticIndex = row.index >= 0 ? row.index : given;
        const bool isRenderTarget = row.semantic == SemanticKind::Color &&
                                    declare.bufferType == TOKEN_OUT && pass.stage == kFragmentStage;
        result.number = isRenderTarget ? row.index : given;
    }

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
        result.elements = ElementsOf(*declare.arraySize);
    }

    /// A number is what most arrays have.
    int ElementsOf(MorlExpression& size) const
    {
        if (size.unitType == TOKEN_NUMBER) {
            return StringHelper::ConvertToInt32(static_cast<MorlNumber&>(size).value);
        }
        std::unordered_map<std::string, int> macros = pass.macros;
        const float elements = MorlLinker().Evaluate(macros, &size);
        const bool isSize = elements >= 1.0F && elements <= static_cast<float>(kMostElements);
        return isSize ? static_cast<int>(elements) : 0;
    }

    int NumberOfBinding(const MorlDeclare& declare) const
    {
        const ENUM_TOKEN token = BindingToken(&declare);
        if (token == TOKEN_SAUTO) {
            return SamplerRegister(pass, declare.name);
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

/// Notes the nodes that repeat a declaration of an earlier one.
void AddRepetitions(const LinkReport& link, PassReport& report)
{
    for (std::vector<ReportDeclare>* list : {&report.uniforms, &report.inputs, &report.outputs}) {
        std::unordered_map<std::string_view, std::size_t> places;
        for (std::size_t i = 0; i < list->size() && !link.repetitions.empty(); ++i) {
            places.emplace((*list)[i].name, i);
        }
        for (const auto& [declare, node] : link.repetitions) {
            const auto place = places.find(declare->name);
            if (&ListOf(*declare, report) != list || place == places.end()) {
                continue;
            }
            ReportDeclare& known = (*list)[place->second];
            const int last = known.repeatedBy.empty() ? known.node : known.repeatedBy.back();
            if (node != last) {
                known.repeatedBy.push_back(node);
            }
        }
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
    for (std::size_t i = 0; i < declares.size(); ++i) {
        const MorlDeclare* const declare = declares[i];
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
        list.back().isUsed = lines.IsUsed(i);
    }
    AddRepetitions(link, report);
    AddMacros(pass, link, report);
    if (target.info.Has(kTextureObjects)) {
        LayOutConstants(report);
    }
}

}  // namespace ns_ruke
