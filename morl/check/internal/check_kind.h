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
    UnmatchedInput,
    VaryingType,
    VaryingPlace,
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
    Modulo,
    Cotangent,
    ProjectedSampling,
    SamplerType,
    UnboundSampler,
    ShadowMapColor,
    ShadowMapCompare,
    SecondColor,
    LoopBound,
    ComputedIndex,
    ReservedName,
    CopiedName,
    BoneIndex,
    VertexTexture,
    ColorInput,
    ColorOutput,
    MixedTexcoords,
    Count,
};

const CheckInfo& InfoOf(CheckKind kind);

}  // namespace ns_ruke
