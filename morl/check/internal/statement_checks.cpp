// SPDX-License-Identifier: MIT
// Declarations and statements.
#include "morl/ast/stage.h"
#include "morl/check/internal/pass_checker.h"
#include "morl/translator/internal/bindings.h"

#include <algorithm>
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

PassChecker::PassChecker(const PassCheckInput& newInput, WarningList& newWarnings)
    : input(newInput), warnings(newWarnings)
{
    constexpr std::size_t kUsualTerms = 32;
    terms.reserve(kUsualTerms);
    values.reserve(kUsualTerms);
}

void PassChecker::Run()
{
    hasFaults =
        std::any_of(input.link.origins.begin(), input.link.origins.end(),
                    [](const LinkOrigin& origin) { return !origin.node->GetFaults().empty(); });
    const std::vector<MorlDeclare*>& outputs = input.linked.outputs;
    const auto isAutomatic = [](const MorlDeclare* output) {
        return BindingToken(output) == TOKEN_TEXAUTO;
    };
    hasAutoTexcoords = input.pass.stage == kVertexStage &&
                       std::any_of(outputs.begin(), outputs.end(), isAutomatic);
    DeclareGlobals(input.linked.inputs, &LinkOrigin::inputs, Kind::Input);
    DeclareGlobals(input.linked.outputs, &LinkOrigin::outputs, Kind::Output);
    DeclareGlobals(input.linked.uniforms, &LinkOrigin::uniforms, Kind::Uniform);
    CheckRepetitions();
    CheckCopies();
    scope.BeginBlock();
    const std::vector<MorlSentence*>& sentences = input.linked.mainFunction->sentences;
    std::size_t i = 0;
    for (std::size_t origin = 0; origin < input.link.origins.size(); ++origin) {
        node = static_cast<int>(origin);
        for (; i < input.link.origins[origin].sentences; ++i) {
            Statement(sentences[i]);
        }
    }
    CheckOutputs();
}

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
            const ScopeEntry* other = scope.Declare(
                {declare.name, kind, TypeOf(declare), isArray, false, node, declare.offset});
            if (other != nullptr) {
                Warn(CheckKind::RepeatedName, declare.offset, declare.name);
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
    if (!takenRegisters.insert(SamplerRegister(input.pass, declare.name)).second) {
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
    const bool isFromVertexPass =
        kind == Kind::Input && binding == TOKEN_TEXAUTO && input.pass.stage == kFragmentStage;
    if (isFromVertexPass && input.pass.semantics.empty()) {
        Warn(CheckKind::UnassignedTexcoord, declare.offset, declare.name);
    }
    if (kind == Kind::Input && isVertex && binding == TOKEN_COLOR0) {
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
    if (!isVertex && binding >= TOKEN_COLOR1 && binding <= TOKEN_COLOR3) {
        Warn(CheckKind::SecondColor, declare.offset, declare.name);
    }
}

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
                     "; it is a '" + std::string(KeywordMap::WordOf((*first)->varType)) + "'");
            }
        }
    }
}

// Inputs are copied to variables whose names begin with kInputLocal, outputs with kOutputLocal.
void PassChecker::CheckCopies()
{
    constexpr std::string_view kWordsWithI[] = {"f", "n", "nt", "nline", "nout", "nput"};
    constexpr std::size_t kLongestWord = 5;
    for (const ScopeEntry& entry : scope.Entries()) {
        node = entry.node;
        CheckCopied(entry.name, entry.offset);
        if (entry.kind == Kind::Uniform || entry.name.size() > kLongestWord) {
            continue;
        }
        const bool isWord = entry.kind == Kind::Input
                                ? std::find(std::begin(kWordsWithI), std::end(kWordsWithI),
                                            entry.name) != std::end(kWordsWithI)
                                : entry.name == "urn";
        if (isWord) {
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

// A node with faults may have lost what declares or assigns an output.
void PassChecker::CheckOutputs()
{
    if (hasFaults) {
        return;
    }
    const std::vector<MorlDeclare*>& outputs = input.linked.outputs;
    const auto isPosition = [](const MorlDeclare* output) {
        return BindingToken(output) == TOKEN_SV_POSITION;
    };
    if (input.pass.stage == kVertexStage &&
        std::none_of(outputs.begin(), outputs.end(), isPosition)) {
        warnings.Add(CheckKind::NoPosition, -1, 0);
    }
    if (input.pass.stage == kFragmentStage && outputs.empty()) {
        warnings.Add(CheckKind::NoColor, -1, 0);
    }
    for (const ScopeEntry& entry : scope.Entries()) {
        if (entry.depth > 0) {
            break;
        }
        if (entry.kind == Kind::Output && !entry.isWritten) {
            node = entry.node;
            Warn(CheckKind::UnwrittenOutput, entry.offset, entry.name);
        }
    }
}

void PassChecker::CheckName(std::string_view name, std::uint32_t offset)
{
    if (IsReservedWord(name, input.target)) {
        Warn(CheckKind::ReservedName, offset, name);
    }
}

void PassChecker::DeclareLocal(const std::string& name, ENUM_TOKEN token, bool isArray,
                               std::uint32_t offset, Kind kind)
{
    CheckName(name, offset);
    const ValueType type = KeywordMap::TypeOf(token);
    if (type.base == ValueBase::Int && type.IsVector()) {
        Warn(CheckKind::IntVector, offset, std::string(KeywordMap::WordOf(type)));
    }
    const ScopeEntry* other = scope.Declare({name, kind, type, isArray, false, node, offset});
    const bool isRepeated =
        other != nullptr && (other->depth == scope.Depth() || other->kind == Kind::Input ||
                             other->kind == Kind::Output);
    if (isRepeated) {
        Warn(CheckKind::RepeatedName, offset, name);
    }
    if (name[0] == 'i' || name[0] == 'r') {
        CheckCopied(name, offset);
    }
}

void PassChecker::Statements(const std::vector<MorlSentence*>& sentences)
{
    scope.BeginBlock();
    for (const MorlSentence* sentence : sentences) {
        Statement(sentence);
    }
    scope.EndBlock();
}

void PassChecker::Statement(const MorlSentence* sentence)
{
    switch (sentence != nullptr ? sentence->unitType : TOKEN_NONE) {
    case TOKEN_DEFINITION_SENTENCE: {
        const auto& definition = static_cast<const MorlDefinitionSentence&>(*sentence);
        Expression(definition.arraySize);
        DeclareLocal(definition.name, definition.varType, definition.arraySize != nullptr,
                     definition.offset, Kind::Local);
        break;
    }
    case TOKEN_ASSIGN:
        Assignment(static_cast<const MorlAssignSentence&>(*sentence), Kind::Local);
        break;
    case TOKEN_IF:
    case TOKEN_ELSE:
        If(static_cast<const MorlIfSentence&>(*sentence));
        break;
    case TOKEN_FOR:
        For(static_cast<const MorlForSentence&>(*sentence));
        break;
    default:
        break;
    }
}

void PassChecker::Assignment(const MorlAssignSentence& assignment, Kind kind)
{
    isInitialiser = assignment.varType != TOKEN_NONE && assignment.value != nullptr &&
                    assignment.value->unitType == TOKEN_FUNCTION_CALL;
    const ValueType value = Expression(assignment.value);
    isInitialiser = false;
    if (assignment.target == nullptr) {
        return;
    }
    if (assignment.varType == TOKEN_NONE) {
        CheckAssigned(assignment, Target(*assignment.target), value);
    } else if (assignment.target->unitType == TOKEN_IDENTIFIER) {
        CheckAssigned(assignment, KeywordMap::TypeOf(assignment.varType), value);
        DeclareLocal(static_cast<const MorlVariable*>(assignment.target)->name, assignment.varType,
                     false, assignment.target->offset, kind);
    }
}

void PassChecker::CheckAssigned(const MorlAssignSentence& assignment, ValueType target,
                                ValueType value)
{
    if (!target.IsNumeric() || !value.IsNumeric() || assignment.value == nullptr) {
        return;
    }
    CheckInt(*assignment.value, value, target);
    const bool mayWiden = assignment.operatorToken != TOKEN_ASSIGN && value.IsNumber();
    if (target.IsMatrix() || value.IsMatrix() || target.rows == value.rows || mayWiden) {
        return;
    }
    Warn(CheckKind::WidthMismatch, assignment.offset,
         "a '" + std::string(KeywordMap::WordOf(target)) + "' is given a '" +
             std::string(KeywordMap::WordOf(value)) + "'");
}

/// What is assigned: a variable, or an element or a member of one.
ValueType PassChecker::Target(const MorlExpression& target)
{
    const MorlExpression* base = &target;
    while (base != nullptr && base->unitType == TOKEN_BINARY_OPERATION) {
        base = static_cast<const MorlBinaryOperation*>(base)->left;
    }
    if (base == nullptr || base->unitType != TOKEN_IDENTIFIER) {
        return Expression(&target);
    }
    ScopeEntry* entry = scope.Find(static_cast<const MorlVariable*>(base)->name);
    if (entry != nullptr) {
        entry->isWritten = true;
    }
    const bool isPlain = base == &target && entry != nullptr && !entry->isArray;
    return isPlain ? entry->type : Expression(&target);
}

void PassChecker::If(const MorlIfSentence& sentence)
{
    Expression(sentence.condition);
    Statements(sentence.sentences);
    Statements(sentence.elseSentences);
}

void PassChecker::For(const MorlForSentence& sentence)
{
    scope.BeginBlock();
    if (sentence.init != nullptr && sentence.init->unitType == TOKEN_ASSIGN) {
        Assignment(static_cast<const MorlAssignSentence&>(*sentence.init), Kind::LoopVariable);
    }
    Expression(sentence.condition);
    if (DependsOnData(sentence.condition)) {
        Warn(CheckKind::LoopBound, sentence.offset);
    }
    if (sentence.step != nullptr) {
        Assignment(*sentence.step, Kind::Local);
    }
    Statements(sentence.sentences);
    scope.EndBlock();
}

}  // namespace ns_ruke
