// SPDX-License-Identifier: MIT
#pragma once

#include <morl/morl.h>
#include <string>

namespace morl_test {

/// Trees as text, so that one line of a test states a whole structure. Operations are in
/// parentheses, null is "-", lists are in braces. A program has a line for every declaration and
/// function, and for every statement of its main function.
std::string TreeText(const ns_ruke::MorlExpression* expression);
std::string TreeText(const ns_ruke::MorlSentence* sentence);
std::string TreeText(const ns_ruke::MorlDeclare* declare);
std::string TreeText(const ns_ruke::MorlFunction* function);
std::string TreeText(const ns_ruke::MorlProgram& program);

}  // namespace morl_test
