// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/expressions.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ns_ruke {

/// What a declaration is bound to: a semantic or a sampler register.
struct MORL_API MorlRegister : MorlUnit {
    ENUM_TOKEN registerToken = TOKEN_NONE;  ///< TOKEN_IDENTIFIER: a name in parentheses
    std::string name;                       ///< the semantic as written, or "(" name ")"

    MorlRegister() { unitType = TOKEN_REGISTER; }
};

/// A declaration of an input, output or uniform, or a parameter of a function.
struct MORL_API MorlDeclare : MorlUnit {
    ENUM_TOKEN bufferType =
        TOKEN_NONE;  ///< TOKEN_UNIFORM, TOKEN_IN or TOKEN_OUT; none: a parameter
    ENUM_TOKEN varType = TOKEN_NONE;
    std::string name;
    MorlExpression* arraySize = nullptr;      ///< owned; null: no array
    MorlRegister* registerBinding = nullptr;  ///< owned; null: not bound
    std::uint32_t copyWork = 0;               ///< as in MorlSentence

    MorlDeclare() { unitType = TOKEN_DECLARE; }
    MorlDeclare(ENUM_TOKEN type, std::string& declareName) : varType(type), name(declareName)
    {
        unitType = TOKEN_DECLARE;
    }
    ~MorlDeclare() override;
};

/// The condition that the parser shares between all groups of one program-level `#if` block; the
/// last group to go frees it. So a host may take a group out of its program and delete it by
/// itself, before the program or after it. Null in groups that were not parsed.
using MorlSharedCondition = std::shared_ptr<MorlExpression>;

/// The declarations of one kind in an `#if` block.
struct MORL_API MorlMarcoIfDeclare : MorlDeclare {
    MorlExpression* condition = nullptr;     ///< owned, unless it is the shared one
    std::vector<MorlDeclare*> declares;      ///< owned; used when the condition is not zero
    std::vector<MorlDeclare*> elseDeclares;  ///< owned; used when it is zero
    MorlSharedCondition sharedCondition;

    MorlMarcoIfDeclare() { unitType = TOKEN_MARCO_IF_DECLARE; }
    ~MorlMarcoIfDeclare() override;
};

/// The declarations of one kind in a `#for` block.
struct MORL_API MorlMarcoForDeclare : MorlDeclare {
    std::string varName;  ///< the macro that bounds the loop, replaced by the loop value
    int start;            ///< the first loop value; left unset by the constructor
    int end = 0;          ///< one past the last loop value; written by the linker
    std::vector<MorlDeclare*> declares;  ///< owned

    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    MorlMarcoForDeclare() { unitType = TOKEN_MARCO_FOR_DECLARE; }
    ~MorlMarcoForDeclare() override;
};

}  // namespace ns_ruke
