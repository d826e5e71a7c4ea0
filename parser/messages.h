// SPDX-License-Identifier: MIT
#pragma once

namespace ns_ruke::messages {

// Every message of the parser, without its location. Some are followed by the text of the offending
// token. The spellings are part of the interface: tools match on them.
constexpr char kCompilerStart[] = "Morl Compiler: Compiler Start";
constexpr char kCompilerEnd[] = "Morl Compiler: Compiler End";

constexpr char kExpressionError[] = "expression error:";
constexpr char kParameterFailed[] = "parameter parse failed:";
constexpr char kParameterCount[] = "incorret param number :";
constexpr char kInvalidVarType[] = "invalid var type:";
constexpr char kNotValidVar[] = "not valid var:";
constexpr char kInvalidEndOfLine[] = "invalid end of line :";
constexpr char kMissRegisterEnd[] = "miss')':";
constexpr char kNeedRegister[] = "need a register symbol:";
constexpr char kWrongDefinition[] = "wrong var definition:";
constexpr char kNeedAssignOperator[] = "need assign operator :";
constexpr char kNeedIf[] = "need if:";
constexpr char kConditionError[] = "parse expression error:";
constexpr char kNeedAssignExpression[] = "need assign expression:";
constexpr char kNeedControlExpression[] = "need control expression:";
constexpr char kInvalidVarDeclare[] = "invalid var declare:";
constexpr char kNotValidMarcoName[] = "not valid marco name:";
constexpr char kNotValidNumber[] = "not valid number:";
constexpr char kUnexpectedCharacter[] = "unexpected character:";
constexpr char kSourceTooLong[] = "source too long:";
constexpr char kNestingTooDeep[] = "nesting too deep:";

}  // namespace ns_ruke::messages
