// SPDX-License-Identifier: MIT
#pragma once

#include "morl/check/checks.h"

#include <cstdint>

namespace ns_ruke {

/// The rows of MorlChecks(), in their order.
enum class CheckKind : std::uint8_t {
    UndeclaredName,
    UnknownReference,
    Redeclared,
    RepeatedName,
    ArgumentCount,
    UnsetMacro,
    UnusedMacro,
    UnusedSampler,
    MacroAsValue,
    BrokenBlock,
    OpenBlock,
    StrayDirective,
    NoEffect,
    While,
    BlockInLoop,
    BlockInDeclareLoop,
    SecondMain,
    MainInBlock,
    UnusedFunction,
    MacroStep,
    LostArraySize,
    UnreadChange,
    UnassignedRead,
    PartialOutput,
    OverwrittenOutput,
    HiddenUniform,
    UnmatchedInput,
    VaryingType,
    VaryingPlace,
    VaryingSemantic,
    MissingSemantic,
    UnassignedTexcoord,
    SharedRegister,
    SamplerRegister,
    SharedSemantic,
    MatrixVarying,
    NoPosition,
    NoColor,
    NoFirstColor,
    UnwrittenOutput,
    MulOperand,
    MulMember,
    MatrixProduct,
    MatrixIndex,
    MatrixConstructor,
    MatrixCast,
    MatrixHelper,
    MatrixHelperOperand,
    MatrixHelperUse,
    MatrixShape,
    IntForFloat,
    WidthMismatch,
    ScalarConstructor,
    ConstructorArguments,
    VectorCompare,
    IntVector,
    DoubleMinus,
    Modulo,
    Cotangent,
    ProjectedSampling,
    SamplerType,
    UnboundSampler,
    ShadowMapColor,
    ShadowMapCompare,
    SecondColor,
    LoopBound,
    LoopForm,
    ComputedIndex,
    ReservedName,
    CopiedName,
    BoneIndex,
    VertexTexture,
    ColorInput,
    ColorOutput,
    MixedTexcoords,
    ManySamplers,
    ManyUniforms,
    ManyAttributes,
    ManyVaryings,
    Count,
};

const CheckInfo& InfoOf(CheckKind kind);

/// What a warning says: what happens, what to do, and the hint.
/// @param name what it is about
/// @param hint may be empty
std::string WarningText(const CheckInfo& info, std::string_view name, std::string_view hint);

}  // namespace ns_ruke
