// SPDX-License-Identifier: MIT
#pragma once

/// @file
/// Every text that the library logs or returns. Most are followed by what they are about: a name, a
/// path, the text of the offending token. The spellings are part of the interface: tools match on
/// them.

#include <string_view>

namespace ns_ruke::messages {

// Information, around each parse.
constexpr char kCompilerStart[] = "Morl Compiler: Compiler Start";
constexpr char kCompilerEnd[] = "Morl Compiler: Compiler End";

constexpr bool IsParseMark(std::string_view message)
{
    return message == kCompilerStart || message == kCompilerEnd;
}

// Node files and requests.
constexpr char kFileNotFound[] = "Can't Find File: ";
constexpr char kNodeNotObject[] = "Morl Compiler: node definition is not an object: ";
constexpr char kUnknownTarget[] = "Morl Compiler: unknown target: ";
constexpr char kUnknownNode[] = "Morl Compiler: unknown node: ";

// Texts of nodes. MorlCompiler::LoadNodes returns these; they are not logged.
constexpr char kNotJson[] = "not valid JSON: ";
constexpr char kNestedTooDeeply[] = "nested too deeply";
constexpr char kNotNodeList[] = "not a list of nodes (a JSON array)";
constexpr char kNotOneNode[] = "not a list of one node";
constexpr char kNotNode[] = "not a node (a JSON object)";
constexpr char kNameNotString[] = "a node's \"name\" must be a string";
constexpr char kXNotNumber[] = "a node's \"x\" must be a number";
constexpr char kYNotNumber[] = "a node's \"y\" must be a number";
constexpr char kContentNotString[] = "a node's \"content\" must be a string";
constexpr char kReferencesNotList[] = "a node's \"ref\" must be a list of names";
constexpr char kReferenceNotString[] = "a reference must be a string, the name of a node";

// Headers of node sources. ReadNodeSource returns these; they are not logged.
constexpr char kNoHeaderLine[] =
    "a line of the header reads '//! WORD: VALUE'; a line '//!' before this one ends the header";
constexpr char kUnknownHeaderWord[] = "unknown word in the header: '";  ///< then a word
constexpr char kHeaderWordTwice[] = "the header has this already";
constexpr char kNoHeaderName[] = "expected one name; with a comma or quotes, as a JSON string";
constexpr char kNoHeaderNames[] = "expected names, separated by commas";
constexpr char kNoHeaderPosition[] = "expected two numbers, as in '//! at: 320 40'";
constexpr char kNoHeaderMember[] = "expected a JSON string, ':' and a JSON value on this line";
constexpr char kLateHeaderLine[] =
    "the header has ended above, so this line does nothing: move it to the first lines of the file";
constexpr char kHeaderMemberOwn[] =
    "the header has words of its own for this: 'name', 'ref' and 'at'; the content follows it";

// The parser. Each follows its location: "Morl Compiler(line:L,ch:C): ".
constexpr char kLocationLine[] = "Morl Compiler(line:";
constexpr char kLocationColumn[] = ",ch:";
constexpr char kLocationEnd[] = "): ";
constexpr char kMiss[] = "miss '";  ///< then a character or word, and kMissEnd
constexpr char kMissEnd[] = "':";
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

// The linker.
constexpr char kReferenceCycle[] = "MorlLinker: reference cycle: ";
constexpr char kDeclare[] = "MorlLinker: declare ";  ///< then the name, and kConflicts
constexpr char kConflicts[] = " conflicts!";
constexpr char kTooManyIterations[] = "MorlLinker: too many iterations: ";
constexpr char kTooMuchExpansion[] = "MorlLinker: too much expansion: ";
constexpr char kOverLoopWork[] = "MorlLinker: the host's limit of work is reached: ";

// The back ends.
constexpr char kNotEnoughArguments[] = "Morl Compiler: not enough arguments: ";
constexpr char kExpressionTooLong[] = "Morl Compiler: expression too long: ";
constexpr char kOverTextBytes[] = "Morl Compiler: the host's limit of text is reached: ";

}  // namespace ns_ruke::messages
