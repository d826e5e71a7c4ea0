// SPDX-License-Identifier: MIT
// Calls: constructors, matrices, sampling, and the arguments of intrinsics.
#include "morl/ast/stage.h"
#include "morl/check/internal/pass_checker.h"
#include "morl/translator/internal/bindings.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ns_ruke {
namespace {

std::string Quoted(std::string_view name)
{
    return "'" + std::string(name) + "'";
}

/// Whether a call with another number of arguments is reported here. A constructor takes any
/// number; what reads samplers or makes matrices is reported when it is written.
bool IsCounted(std::string_view arguments)
{
    return !arguments.empty() && arguments.find_first_of("cs") == std::string_view::npos;
}

}  // namespace

ValueType PassChecker::Call(const MorlFunctionCall& call)
{
    const bool isWhole = std::exchange(isInitialiser, false);
    const std::size_t first = values.size();
    for (const MorlExpression* argument : call.arguments) {
        const ValueType type = Expression(argument);
        values.push_back(type);
    }
    const ValueType result = CallOf(call, {values.data() + first, values.size() - first}, isWhole);
    values.resize(first);
    return result;
}

ValueType PassChecker::CallOf(const MorlFunctionCall& call, const Arguments& arguments,
                              bool isWhole)
{
    const std::string_view expected = KeywordMap::RowOf(call.functionToken).arguments;
    if (IsCounted(expected) && arguments.size() != expected.size()) {
        Warn(CheckKind::ArgumentCount, call.offset, call.name,
             ": " + std::to_string(arguments.size()) + " for " + std::to_string(expected.size()));
        return {};
    }
    switch (call.functionToken) {
    case TOKEN_FLOAT4X4_TRANPOSE:
        if (!isWhole) {
            Warn(CheckKind::MatrixHelperUse, call.offset, call.name);
        }
        return MatrixHelper(call);
    case TOKEN_FLOAT3X3_CONSTRUCT:
    case TOKEN_FLOAT4X4_CONSTRUCT:
        return MatrixHelper(call);
    case TOKEN_MUL:
        return Multiply(call, arguments);
    case TOKEN_TEX1D:
    case TOKEN_TEX2D:
    case TOKEN_TEX2DARRAY:
    case TOKEN_TEX3D:
    case TOKEN_TEX2DPROJ:
    case TOKEN_TEXCUBE:
        return Sample(call, arguments);
    default:
        break;
    }
    return KeywordMap::RowOf(call.functionToken).wordClass == WordClass::Type
               ? Constructor(call, arguments)
               : Intrinsic(call, arguments);
}

ValueType PassChecker::Constructor(const MorlFunctionCall& call, const Arguments& arguments)
{
    const ValueType type = KeywordMap::TypeOf(call.functionToken);
    const bool areKnown = std::all_of(arguments.begin(), arguments.end(), [](ValueType argument) {
        return argument.IsNumeric() || argument.base == ValueBase::BoneIndex ||
               argument.base == ValueBase::Bool;
    });
    if (type.base == ValueBase::Int && type.IsVector()) {
        Warn(CheckKind::IntVector, call.offset, call.name);
    }
    if (type.IsMatrix()) {
        const bool isCast = arguments.size() == 1 && arguments[0].IsMatrix();
        Warn(isCast ? CheckKind::MatrixCast : CheckKind::MatrixConstructor, call.offset, call.name);
        return type;
    }
    if (type.base == ValueBase::Float && type.IsNumber() && arguments.size() == 1 &&
        arguments[0].base == ValueBase::Int && HasOperator(call.arguments[0], {TOKEN_DIVIDE})) {
        Warn(CheckKind::IntDivision, call.arguments[0]->offset);
    }
    if (!areKnown || type.IsNumber()) {
        return type;
    }
    int components = 0;
    for (const ValueType argument : arguments) {
        components += argument.rows * argument.columns;
    }
    const bool isOneValue = arguments.size() == 1 && !arguments[0].IsMatrix() &&
                            (components == 1 || components > type.rows);
    if (isOneValue) {
        Warn(CheckKind::ScalarConstructor, call.offset, call.name);
    } else if (components != type.rows) {
        Warn(CheckKind::ConstructorArguments, call.offset, call.name);
    }
    return type;
}

// These paste the texts of their arguments together.
ValueType PassChecker::MatrixHelper(const MorlFunctionCall& call)
{
    Warn(CheckKind::MatrixHelper, call.offset, call.name);
    for (const MorlExpression* argument : call.arguments) {
        if (HasOperator(argument, {TOKEN_PLUS, TOKEN_MINUS, TOKEN_MULTIPLY, TOKEN_DIVIDE})) {
            Warn(CheckKind::MatrixHelperOperand, argument->offset, call.name);
        }
    }
    return KeywordMap::TypeOf(call.functionToken);
}

/// Whether an operand is a number, as far as that can be seen without checking it.
bool PassChecker::IsPlainNumber(const MorlExpression& operand)
{
    if (operand.unitType != TOKEN_IDENTIFIER) {
        return operand.unitType == TOKEN_NUMBER;
    }
    const ScopeEntry* entry = scope.Find(static_cast<const MorlVariable&>(operand).name);
    return entry != nullptr && !entry->isArray && entry->type.IsKnown() && entry->type.IsNumber();
}

/// Whether a product is one operand and plain numbers, whose order does not matter.
bool PassChecker::IsScaled(const MorlExpression* product)
{
    std::vector<Term> factors;
    AppendTerms(product, factors);
    std::size_t others = 0;
    for (std::size_t i = 0; i < factors.size(); ++i) {
        const bool isComponent =
            i + 1 < factors.size() && factors[i + 1].operatorToken == TOKEN_MEMBER &&
            factors[i + 1].operand->unitType == TOKEN_IDENTIFIER &&
            static_cast<const MorlVariable*>(factors[i + 1].operand)->name.size() == 1;
        const bool isNumber = isComponent || IsPlainNumber(*factors[i].operand);
        others += factors[i].operatorToken != TOKEN_MEMBER && !isNumber ? 1 : 0;
    }
    return others <= 1;
}

ValueType PassChecker::Multiply(const MorlFunctionCall& call, const Arguments& arguments)
{
    if (arguments.size() < 2) {
        return {};
    }
    const bool isTorn = HasOperator(call.arguments[0], {TOKEN_PLUS, TOKEN_MINUS}) ||
                        HasOperator(call.arguments[1], {TOKEN_PLUS, TOKEN_MINUS}) ||
                        (HasOperator(call.arguments[1], {TOKEN_MULTIPLY, TOKEN_DIVIDE}) &&
                         !IsScaled(call.arguments[1]));
    if (isTorn) {
        Warn(CheckKind::MulOperand, call.offset);
    }
    const ValueType left = arguments[0];
    const ValueType right = arguments[1];
    // A number scales whatever it meets.
    const bool haveSizes =
        left.IsNumeric() && right.IsNumeric() && !left.IsNumber() && !right.IsNumber();
    const int leftWidth = left.IsMatrix() ? left.columns : left.rows;
    if (haveSizes && (left.IsMatrix() || right.IsMatrix()) && leftWidth != right.rows) {
        Warn(CheckKind::WidthMismatch, call.offset,
             "in 'mul', a " + Quoted(KeywordMap::WordOf(left)) + " meets a " +
                 Quoted(KeywordMap::WordOf(right)));
        return {};
    }
    if (left.IsVector() && right.IsMatrix()) {
        return {ValueBase::Float, right.columns, 1};
    }
    if (left.IsMatrix() && right.IsVector()) {
        return {ValueBase::Float, left.rows, 1};
    }
    return left.IsMatrix() && right.IsMatrix()
               ? ValueType{ValueBase::Float, left.rows, right.columns}
               : ValueType();
}

/// Whether the sampler and the coordinates are of the kind that a function takes.
void PassChecker::CheckSampled(const MorlFunctionCall& call, const Arguments& arguments)
{
    struct Kind {
        ENUM_TOKEN function;
        ENUM_TOKEN sampler;
        int coordinates;
        const char* other;
    };
    constexpr Kind kKinds[] = {
        {TOKEN_TEX2D, TOKEN_SAMPLER2D, 2, "texCUBE"},
        {TOKEN_TEXCUBE, TOKEN_SAMPLERCUBE, 3, "tex2D"},
    };
    const auto* const kind =
        std::find_if(std::begin(kKinds), std::end(kKinds),
                     [&](const Kind& one) { return one.function == call.functionToken; });
    if (kind != std::end(kKinds) && arguments.size() < 2) {
        Warn(CheckKind::ArgumentCount, call.offset, call.name,
             ": " + std::to_string(arguments.size()) + " for 2");
        return;
    }
    if (kind == std::end(kKinds) || call.arguments[0]->unitType != TOKEN_IDENTIFIER) {
        return;
    }
    const ScopeEntry* sampler =
        scope.Find(static_cast<const MorlVariable*>(call.arguments[0])->name);
    if (sampler == nullptr) {
        return;
    }
    const std::string wanted(KeywordMap::WordOf(kind->sampler));
    if (sampler->type.base != ValueBase::Sampler) {
        Warn(CheckKind::SamplerKind, call.arguments[0]->offset, call.name,
             "; its first argument is a '" + wanted + "'");
    } else if ((sampler->word == TOKEN_SAMPLER2D || sampler->word == TOKEN_SAMPLERCUBE) &&
               sampler->word != kind->sampler) {
        Warn(CheckKind::SamplerKind, call.arguments[0]->offset, call.name,
             "; '" + std::string(kind->other) + "' does");
    } else if (arguments[1].IsNumeric() && !arguments[1].IsMatrix() &&
               arguments[1].rows != kind->coordinates) {
        Warn(CheckKind::WidthMismatch, call.arguments[1]->offset,
             "'" + call.name + "' takes a 'float" + std::to_string(kind->coordinates) +
                 "' and gets a " + Quoted(KeywordMap::WordOf(arguments[1])));
    }
}

ValueType PassChecker::Sample(const MorlFunctionCall& call, const Arguments& arguments)
{
    const ENUM_TOKEN token = call.functionToken;
    CheckSampled(call, arguments);
    if (input.pass.stage == kVertexStage) {
        Warn(CheckKind::VertexTexture, call.offset, call.name);
    }
    if (token == TOKEN_TEX2DPROJ) {
        Warn(CheckKind::ProjectedSampling, call.offset);
    }
    if (token == TOKEN_TEX1D || token == TOKEN_TEX3D || token == TOKEN_TEX2DARRAY) {
        Warn(CheckKind::SamplerType, call.offset, call.name);
    }
    const bool isNamed = !call.arguments.empty() && call.arguments[0]->unitType == TOKEN_IDENTIFIER;
    const std::string name =
        isNamed ? static_cast<const MorlVariable*>(call.arguments[0])->name : std::string();
    if (!IsShadowMap(name)) {
        return {ValueBase::Float, 4, 1};
    }
    const bool compares = call.arguments.size() > 2;
    Warn(compares ? CheckKind::ShadowMapCompare : CheckKind::ShadowMapColor, call.offset, name);
    return compares ? ValueType() : ValueType{ValueBase::Float, 4, 1};
}

ValueType PassChecker::Intrinsic(const MorlFunctionCall& call, const Arguments& arguments)
{
    if (call.functionToken == TOKEN_COT) {
        Warn(CheckKind::Cotangent, call.offset);
    }
    if (arguments.empty()) {
        return {};
    }
    ValueType widest = arguments[0];
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const ValueType argument = arguments[i];
        if (!argument.IsNumeric()) {
            return {};
        }
        CheckInt(*call.arguments[i], argument, kFloat);
        if (argument.rows > widest.rows) {
            widest = argument;
        }
    }
    const Keyword& function = KeywordMap::RowOf(call.functionToken);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const ValueType argument = arguments[i];
        if (argument.rows != widest.rows &&
            (function.arguments[i] != 'n' || !argument.IsNumber())) {
            Warn(CheckKind::WidthMismatch, call.arguments[i]->offset,
                 "in " + Quoted(call.name) + ", a " + Quoted(KeywordMap::WordOf(argument)) +
                     " meets a " + Quoted(KeywordMap::WordOf(widest)));
        }
    }
    if (function.type.IsKnown()) {
        return function.type;
    }
    // Some targets have 'max' and others for integers, too, so what comes out is not known.
    const bool areInts = std::all_of(arguments.begin(), arguments.end(), [](ValueType argument) {
        return argument.base == ValueBase::Int;
    });
    return areInts ? ValueType() : ValueType{ValueBase::Float, widest.rows, widest.columns};
}

}  // namespace ns_ruke
