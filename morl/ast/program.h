// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/functions.h"

#include <cstdint>
#include <vector>

namespace ns_ruke {

/// A program's exceptions to the rule that a parent deletes its children.
struct MORL_API MorlProgramOwnership {
    /// Whether the program deletes the elements of `functions`. False for a linked program, whose
    /// functions still belong to the programs of the nodes that they came from.
    bool functions = true;

    /// Whether the program deletes its declarations and the statements of its `main`. If not, they
    /// belong to other programs or are in `copies`.
    bool elements = true;

    /// Owned: the declarations and statements that a program shares with no other, if `elements` is
    /// false.
    std::vector<MorlUnit*> copies;
};

/// What a parser reads over without a message.
enum class MorlLostKind : std::uint8_t {
    Statement,    ///< an expression that is no assignment
    Semicolon,    ///< a ";" by itself
    Directive,    ///< an "#else", "#endif" or "#endfor" without its block
    Word,         ///< another word that begins no statement
    While,        ///< the word and its condition; the body stays
    Block,        ///< a macro block, up to a statement that yields nothing
    OpenBlock,    ///< a macro block that is not closed before the "}" of its function or statement
    Main,         ///< a `main` before the last one
    MainInBlock,  ///< a `main` in a macro block
    OpenComment,  ///< a comment without an end
};

/// Where a parser has read over something.
struct MorlLostCode {
    MorlLostKind kind;
    std::uint32_t offset;  ///< where it begins, in bytes
    std::uint32_t cause;   ///< Block, OpenBlock, Main: what ends or replaces it
};

/// A whole source text, or several of them linked into one.
struct MORL_API MorlProgram : MorlUnit {
    std::vector<MorlSentence*> comments;   ///< owned; comments outside of functions
    std::vector<MorlDeclare*> inputs;      ///< owned; plain declarations and macro groups
    std::vector<MorlDeclare*> outputs;     ///< owned; likewise
    std::vector<MorlDeclare*> uniforms;    ///< owned; likewise
    std::vector<MorlFunction*> functions;  ///< owned (see `ownership`); all functions but `main`
    MorlFunction* mainFunction = nullptr;  ///< owned
    int stage;                             ///< 0 vertex, 1 fragment; left unset by the constructor
    MorlProgramOwnership ownership;
    std::vector<MorlLostCode> lostCode;  ///< in the order of the source
    bool hasMacros = true;               ///< false: the source has no macro block or assignment

    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    MorlProgram() { unitType = TOKEN_PROGRAM; }
    ~MorlProgram() override;
};

}  // namespace ns_ruke
