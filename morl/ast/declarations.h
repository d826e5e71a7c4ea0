// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/expressions.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ns_ruke {

/// What a declaration is bound to: a semantic or a sampler register.
struct MORL_API MorlRegister : MorlUnit {
    ENUM_TOKEN registerToken = TOKEN_NONE;  ///< TOKEN_IDENTIFIER: a name in parentheses
    std::string name;                       ///< the semantic as written, or "(" name ")"

    MorlRegister() { unitType = TOKEN_REGISTER; }
    MorlRegister(const MorlRegister&) = default;
    MorlRegister& operator=(const MorlRegister&) = default;
    ~MorlRegister() override;
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
    MorlDeclare(const MorlDeclare&) = default;
    MorlDeclare& operator=(const MorlDeclare&) = default;
    ~MorlDeclare() override;
};

/// The declarations of one kind in an `#if` block. The parser shares one condition between all
/// groups of a block; see MorlProgramOwnership for who frees it then.
struct MORL_API MorlMarcoIfDeclare : MorlDeclare {
    MorlExpression* condition = nullptr;     ///< owned
    std::vector<MorlDeclare*> declares;      ///< owned; used when the condition is not zero
    std::vector<MorlDeclare*> elseDeclares;  ///< owned; used when it is zero

    MorlMarcoIfDeclare() { unitType = TOKEN_MARCO_IF_DECLARE; }
    MorlMarcoIfDeclare(const MorlMarcoIfDeclare&) = default;
    MorlMarcoIfDeclare& operator=(const MorlMarcoIfDeclare&) = default;
    ~MorlMarcoIfDeclare() override;
};

/// The declarations of one kind in a `#for` block.
struct MORL_API MorlMarcoForDeclare : MorlDeclare {
    std::string varName;  ///< the macro that bounds the loop, replaced by the loop value
    int start;            ///< the first loop value; left unset by the constructor
    int end = 0;          ///< one past the last loop value; written by the linker
    std::vector<MorlDeclare*> declares;  ///< owned

    MorlMarcoForDeclare() { unitType = TOKEN_MARCO_FOR_DECLARE; }
    MorlMarcoForDeclare(const MorlMarcoForDeclare&) = default;
    MorlMarcoForDeclare& operator=(const MorlMarcoForDeclare&) = default;
    ~MorlMarcoForDeclare() override;
};

}  // namespace ns_ruke
