// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/declarations.h"
#include "morl/ast/sentences.h"

#include <string>
#include <vector>

namespace ns_ruke {

/// A function with its body.
struct MORL_API MorlFunction : MorlUnit {
    ENUM_TOKEN returnType = TOKEN_NONE;
    std::string name;
    std::vector<MorlDeclare*> parameters;  ///< owned
    std::vector<MorlSentence*> sentences;  ///< owned

    MorlFunction() { unitType = TOKEN_FUNCTION; }
    ~MorlFunction() override;
};

/// The functions of an `#if` block.
struct MORL_API MorlMarcoIfFunction : MorlFunction {
    MorlExpression* condition = nullptr;       ///< NOT owned, unlike the other `#if` groups
    std::vector<MorlFunction*> functions;      ///< owned; used when the condition is not zero
    std::vector<MorlFunction*> elseFunctions;  ///< owned; used when it is zero
    MorlSharedCondition sharedCondition;

    MorlMarcoIfFunction() { unitType = TOKEN_MARCO_IF_FUNCTION; }
    ~MorlMarcoIfFunction() override;
};

/// The functions of a `#for` block.
struct MORL_API MorlMarcoForFunction : MorlFunction {
    std::string varName;                   ///< the macro that bounds the loop
    int start;                             ///< the first loop value; left unset by the constructor
    int end = 0;                           ///< one past the last loop value
    std::vector<MorlFunction*> functions;  ///< owned

    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    MorlMarcoForFunction() { unitType = TOKEN_MARCO_FOR_FUNCTION; }
    ~MorlMarcoForFunction() override;
};

}  // namespace ns_ruke
