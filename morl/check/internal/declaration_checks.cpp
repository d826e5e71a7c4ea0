// SPDX-License-Identifier: MIT
// What a pass declares: names, types, semantics, samplers, and how much of all that there is.
#include "morl/ast/stage.h"
#include "morl/check/internal/lost_code_checks.h"
#include "morl/check/internal/pass_checker.h"
#include "morl/translator/internal/bindings.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace ns_ruke {
namespace {

using Kind = ScopeEntry::Kind;

/// Whether members of a vector may have this name.
bool IsComponentName(std::string_view name)
{
    return name.size() <= 4 && (name.find_first_not_of("xyzw") == std::string_view::npos ||
                                name.find_first_not_of("rgba") == std::string_view::npos);
}

bool IsTexcoord(ENUM_TOKEN token)
{
    return token >= TOKEN_TEXCOORD0 && token <= TOKEN_TEXCOORD7;
}

bool IsPosition(const MorlDeclare* declare)
{
    return BindingToken(declare) == TOKEN_SV_POSITION;
}

bool IsRenderTarget(const MorlDeclare* declare)
{
    const ENUM_TOKEN binding = BindingToken(declare);
    return binding >= TOKEN_COLOR0 && binding <= TOKEN_COLOR3;
}

bool IsFurtherTarget(const MorlDeclare* declare)
{
    return IsRenderTarget(declare) && BindingToken(declare) != TOKEN_COLOR0;
}

std::string ArraySizeOf(const MorlDeclare& declare)
{
    if (declare.arraySize == nullptr) {
        return {};
    }
    return declare.arraySize->unitType == TOKEN_NUMBER
               ? static_cast<const MorlNumber*>(declare.arraySize)->value
               : "expression";
}

bool AreAlike(const MorlDeclare& a, const MorlDeclare& b)
{
    return a.varType == b.varType && BindingToken(&a) == BindingToken(&b) &&
           ArraySizeOf(a) == ArraySizeOf(b);
}

ValueType TypeOf(const MorlDeclare& declare)
{
    if (declare.varType == TOKEN_AUTO && BindingToken(&declare) == TOKEN_BLENDINDICES) {
        return {ValueBase::BoneIndex, 4, 1};
    }
    return KeywordMap::TypeOf(declare.varType);
}

}  // namespace

void PassChecker::DeclareGlobals(const std::vector<MorlDeclare*>& list,
                                 std::size_t LinkOrigin::*listEnd, Kind kind)
{
    std::size_t i = 0;
    for (std::size_t origin = 0; origin < input.link.origins.size(); ++origin) {
        node = static_cast<int>(origin);
        for (; i < input.link.origins[origin].*listEnd; ++i) {
            const MorlDeclare& declare = *list[i];
            if (declare.name.empty()) {
                continue;  // what is left of a macro block in a `#for`
            }
            CheckGlobal(declare, kind);
            const bool isArray = declare.arraySize != nullptr && kind == Kind::Uniform;
            ScopeEntry entry = {declare.name, kind, TypeOf(declare), isArray,
                                false,        node, declare.offset};
            entry.word = declare.varType;
            entry.variable = kind == Kind::Output ? Follow(entry, false) : entry.variable;
            const ScopeEntry* other = scope.Declare(entry);
            if (other != nullptr) {
                Warn(CheckKind::RepeatedName, declare.offset, declare.name,
                     HintOfRepetition(*other, declare.offset));
            }
        }
    }
}

void PassChecker::CheckGlobal(const MorlDeclare& declare, Kind kind)
{
    const std::uint32_t offset = declare.offset;
    CheckName(declare.name, offset);
    if (kind != Kind::Uniform) {
        CheckSemantic(declare, kind);
    }
    if (declare.arraySize != nullptr) {
        Expression(declare.arraySize);
        if (kind != Kind::Uniform) {
            Warn(CheckKind::LostArraySize, offset, declare.name);
        }
    }
    const ValueType type = KeywordMap::TypeOf(declare.varType);
    if (type.base == ValueBase::Sampler) {
        CheckSampler(declare);
    } else if (type.IsMatrix() && type.rows != type.columns) {
        Warn(CheckKind::MatrixShape, offset, KeywordMap::WordOf(declare.varType));
    } else if (type.base == ValueBase::Int && type.IsVector()) {
        Warn(CheckKind::IntVector, offset, KeywordMap::WordOf(declare.varType));
    }
}

void PassChecker::CheckSampler(const MorlDeclare& declare)
{
    if (declare.varType != TOKEN_SAMPLER2D && declare.varType != TOKEN_SAMPLERCUBE) {
        Warn(CheckKind::SamplerType, declare.offset, KeywordMap::WordOf(declare.varType));
    }
    if (BindingToken(&declare) != TOKEN_SAUTO) {
        Warn(CheckKind::UnboundSampler, declare.offset, declare.name);
        return;
    }
    const int place = SamplerRegister(input.pass, declare.name);
    if (place < 0 || place >= input.target.limits.samplers) {
        Warn(CheckKind::SamplerRegister, declare.offset, declare.name,
             ": " + std::to_string(place) + ", and there are 0 to " +
                 std::to_string(input.target.limits.samplers - 1));
    } else if (!takenRegisters.insert(place).second) {
        Warn(CheckKind::SharedRegister, declare.offset, declare.name);
    }
}

void PassChecker::CheckSemantic(const MorlDeclare& declare, Kind kind)
{
    const ENUM_TOKEN binding = BindingToken(&declare);
    const bool isVertex = input.pass.stage == kVertexStage;
    if (declare.registerBinding == nullptr) {
        Warn(CheckKind::MissingSemantic, declare.offset, declare.name);
    }
    CheckPlace(declare, kind, binding);
    if (kind == Kind::Input && declare.name == "oProjPos") {
        Warn(CheckKind::PositionInput, declare.offset, declare.name);
    }
    const bool isFromVertexPass =
        kind == Kind::Input && binding == TOKEN_TEXAUTO && input.pass.stage == kFragmentStage;
    if (isFromVertexPass && input.pass.semantics.empty()) {
        Warn(CheckKind::UnassignedTexcoord, declare.offset, declare.name);
    }
    if (IsRenderTarget(&declare) && (kind == Kind::Input || isVertex)) {
        Warn(CheckKind::ColorInput, declare.offset, declare.name);
    }
    if (kind != Kind::Output) {
        return;
    }
    if (isVertex && IsTexcoord(binding) && hasAutoTexcoords) {
        Warn(CheckKind::MixedTexcoords, declare.offset, declare.name);
    }
    if (!isVertex && binding == TOKEN_COLOR) {
        Warn(CheckKind::ColorOutput, declare.offset, declare.name);
    }
    if (!isVertex && IsFurtherTarget(&declare)) {
        Warn(CheckKind::SecondColor, declare.offset, declare.name);
    }
}

/// Whether the place that a semantic stands for is free, and large enough.
void PassChecker::CheckPlace(const MorlDeclare& declare, Kind kind, ENUM_TOKEN binding)
{
    if (KeywordMap::TypeOf(declare.varType).IsMatrix()) {
        Warn(CheckKind::MatrixVarying, declare.offset, declare.name);
    }
    if (binding == TOKEN_NONE || binding == TOKEN_TEXAUTO || binding == TOKEN_AUTO) {
        return;
    }
    const ENUM_TOKEN place = binding == TOKEN_COLOR ? TOKEN_COLOR0 : binding;
    if (!takenSemantics.emplace(kind, place).second) {
        Warn(CheckKind::SharedSemantic, declare.offset, declare.name);
    }
}

namespace {

/// What the declaration that counts has, and the other one has not.
std::string HintOfDifference(const MorlDeclare& first, const MorlDeclare& other)
{
    if (first.varType != other.varType) {
        return "; it is a '" + std::string(KeywordMap::WordOf(first.varType)) + "'";
    }
    const ENUM_TOKEN semantic = BindingToken(&first);
    if (semantic == BindingToken(&other)) {
        return "; its array has another size";
    }
    return semantic == TOKEN_NONE ? "; it has no semantic"
                                  : "; it is bound to " + std::string(KeywordMap::WordOf(semantic));
}

}  // namespace

// The first declaration of a name counts. Others are mistakes only if they differ.
void PassChecker::CheckRepetitions()
{
    for (const LinkRepetition& repetition : input.link.repetitions) {
        const MorlDeclare& declare = *repetition.declare;
        for (const auto* list :
             {&input.linked.inputs, &input.linked.outputs, &input.linked.uniforms}) {
            const auto first =
                std::find_if(list->begin(), list->end(),
                             [&](const MorlDeclare* other) { return other->name == declare.name; });
            const bool isSameList =
                first != list->end() && (*first)->bufferType == declare.bufferType;
            if (isSameList && !AreAlike(**first, declare)) {
                node = repetition.node;
                Warn(CheckKind::Redeclared, declare.offset, declare.name,
                     HintOfDifference(**first, declare));
            }
        }
    }
}

// Inputs are copied to variables whose names begin with kInputLocal, outputs with kOutputLocal.
void PassChecker::CheckCopies()
{
    for (const ScopeEntry& entry : scope.Entries()) {
        node = entry.node;
        CheckCopied(entry.name, entry.offset);
        if (entry.kind == Kind::Uniform) {
            continue;
        }
        std::string copy(entry.kind == Kind::Input ? kInputLocal : kOutputLocal);
        copy += entry.name;
        if (IsReservedWord(copy, input.target) || KeywordMap::Language().Find(copy) != TOKEN_NONE) {
            Warn(CheckKind::CopiedName, entry.offset, entry.name);
        } else if (IsComponentName(entry.name)) {
            componentNames.push_back(entry);
        }
    }
}

/// Warns if a name is that of such a copy.
void PassChecker::CheckCopied(std::string_view name, std::uint32_t offset)
{
    const std::pair<std::string_view, Kind> copies[] = {{kInputLocal, Kind::Input},
                                                        {kOutputLocal, Kind::Output}};
    for (const auto& [prefix, kind] : copies) {
        if (name.size() <= prefix.size() || name.substr(0, prefix.size()) != prefix) {
            continue;
        }
        const ScopeEntry* copied = scope.Find(name.substr(prefix.size()));
        if (copied != nullptr && copied->kind == kind) {
            Warn(CheckKind::CopiedName, offset, copied->name);
        }
    }
}

/// Whether an output is one that only the other stage has. What the pass declares says no more
/// then.
bool PassChecker::IsOfOtherStage()
{
    const std::vector<MorlDeclare*>& outputs = input.linked.outputs;
    const bool isVertex = input.pass.stage == kVertexStage;
    const auto position = std::find_if(outputs.begin(), outputs.end(), IsPosition);
    const auto color = std::find_if(outputs.begin(), outputs.end(), IsRenderTarget);
    const auto other = !isVertex ? position : position == outputs.end() ? color : outputs.end();
    if (other == outputs.end() || hasFaults) {
        return false;
    }
    const auto place = static_cast<std::size_t>(other - outputs.begin());
    const auto origin =
        std::find_if(input.link.origins.begin(), input.link.origins.end(),
                     [place](const LinkOrigin& one) { return place < one.outputs; });
    node = static_cast<int>(origin - input.link.origins.begin());
    Warn(CheckKind::WrongStage, (*other)->offset, (*other)->name);
    return true;
}

/// Without an output for it, the first render target stays as it is.
void PassChecker::CheckFirstColor()
{
    const std::vector<MorlDeclare*>& outputs = input.linked.outputs;
    const bool hasOthersOnly = input.pass.stage == kFragmentStage && !outputs.empty() &&
                               std::all_of(outputs.begin(), outputs.end(), IsFurtherTarget);
    const ScopeEntry* first = hasOthersOnly ? scope.Find(outputs.front()->name) : nullptr;
    if (first != nullptr) {
        node = first->node;
        Warn(CheckKind::NoFirstColor, first->offset, first->name);
    }
}

/// The elements of an array, 1 of what is none.
std::int64_t PassChecker::ElementsOf(const MorlDeclare& declare) const
{
    if (declare.arraySize == nullptr) {
        return 1;
    }
    if (declare.arraySize->unitType == TOKEN_NUMBER) {
        return std::strtol(static_cast<const MorlNumber*>(declare.arraySize)->value.c_str(),
                           nullptr, 10);
    }
    const bool isMacro = declare.arraySize->unitType == TOKEN_IDENTIFIER;
    const auto macro =
        isMacro ? input.pass.macros.find(static_cast<const MorlVariable*>(declare.arraySize)->name)
                : input.pass.macros.end();
    return macro != input.pass.macros.end() ? macro->second : 1;
}

/// What all devices of a target have is counted by declarations: more than that works on some.
class PassChecker::Counter {
public:
    /// @param newMost vectors of four components
    Counter(CheckKind newKind, int newMost, const char* newUnit, bool newIsPacked)
        : kind(newKind), most(newMost), unit(newUnit), isPacked(newIsPacked)
    {
    }

    void Add(ValueType type, std::int64_t elements, const ScopeEntry& entry)
    {
        constexpr std::int64_t kVector = 4;
        constexpr std::int64_t kMostElements = std::int64_t{1} << 30U;  // the sum stays in range
        const std::int64_t rows = type.IsMatrix() ? type.columns : 1;
        const std::int64_t used = type.IsMatrix() || !isPacked ? kVector : type.rows;
        components += rows * used * std::clamp<std::int64_t>(elements, 0, kMostElements);
        if (first == nullptr && Vectors() > most) {
            first = &entry;
        }
    }

    std::int64_t Vectors() const { return (components + 3) / 4; }

    const CheckKind kind;
    const int most;
    const char* const unit;
    const ScopeEntry* first = nullptr;  ///< the first one that is too many

private:
    const bool isPacked;
    std::int64_t components = 0;
};

void PassChecker::CheckLimits()
{
    const TargetLimits& limits = input.target.limits;
    const bool isVertex = input.pass.stage == kVertexStage;
    const int uniformLimit = isVertex ? limits.vertexUniforms : limits.fragmentUniforms;
    Counter samplers(CheckKind::ManySamplers, limits.samplers, "", false);
    Counter uniforms(CheckKind::ManyUniforms, uniformLimit, " vectors", limits.arePacked);
    Counter attributes(CheckKind::ManyAttributes, limits.attributes, "", false);
    Counter varyings(CheckKind::ManyVaryings, limits.varyings, " vectors", limits.arePacked);
    const auto count = [&](const std::vector<MorlDeclare*>& declares, Counter& counter) {
        for (const MorlDeclare* declare : declares) {
            const ScopeEntry* entry = scope.Find(declare->name);
            if (entry == nullptr || IsPosition(declare) || (!entry->isRead && !entry->isWritten)) {
                continue;
            }
            const bool isSampler = entry->type.base == ValueBase::Sampler;
            (isSampler ? samplers : counter).Add(entry->type, ElementsOf(*declare), *entry);
        }
    };
    count(input.linked.uniforms, uniforms);
    count(input.linked.inputs, isVertex ? attributes : varyings);
    if (isVertex) {
        count(input.linked.outputs, varyings);
    }
    for (const Counter* counter : {&samplers, &uniforms, &attributes, &varyings}) {
        if (counter->first != nullptr) {
            node = counter->first->node;
            Warn(counter->kind, counter->first->offset, counter->first->name,
                 ": " + std::to_string(counter->Vectors()) + counter->unit + ", and " +
                     std::string(limits.name) + " promises " + std::to_string(counter->most));
        }
    }
}

// A node with faults may have lost what declares or assigns an output.
void PassChecker::CheckOutputs()
{
    if (hasFaults) {
        return;
    }
    const std::vector<MorlDeclare*>& outputs = input.linked.outputs;
    if (input.pass.stage == kVertexStage &&
        std::none_of(outputs.begin(), outputs.end(), IsPosition)) {
        warnings.Add(CheckKind::NoPosition, -1, 0);
    }
    if (input.pass.stage == kFragmentStage && outputs.empty()) {
        warnings.Add(CheckKind::NoColor, -1, 0);
    }
    CheckFirstColor();
    for (const ScopeEntry& entry : scope.Entries()) {
        if (entry.depth > 0) {
            break;
        }
        const auto isDroppedIn = [&](const LinkOrigin& origin) {
            return FindDropped(*origin.node, entry.name) != nullptr;
        };
        if (entry.kind == Kind::Output && !entry.isWritten &&
            std::none_of(input.link.origins.begin(), input.link.origins.end(), isDroppedIn)) {
            node = entry.node;
            Warn(CheckKind::UnwrittenOutput, entry.offset, entry.name);
        }
    }
}

}  // namespace ns_ruke
