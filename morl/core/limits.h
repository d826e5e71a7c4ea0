// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace ns_ruke {

/// Bounds that keep any source text and any request harmless. Every recursion and every expansion
/// of the compiler is held by one of them; no other place defines a limit.

/// The longest source text, in bytes: locations are 32-bit numbers.
constexpr std::size_t kMaxSourceSize = 0x7fffffff;

/// The most units of nesting that the parser lets through. An expression (an operand, an operator's
/// right side, an argument, an index) costs one unit, a call one more, and a block (an `if`, a
/// `for`, a macro block) `kBlockNesting`. 1280 admits any mixture of them 200 operands deep, such
/// as `a+max(b,(c[...`, and keeps parsing, linking, writing and destroying within a stack of 512
/// KiB: a unit takes up to 350 bytes of it (sampling, built by g++ 12). Sanitizers need three times
/// that.
constexpr unsigned kMaxNesting = 1280;

/// What one nested block costs of `kMaxNesting`: its parser frames are about twice as large as
/// those of an expression.
constexpr unsigned kBlockNesting = 2;

/// The most `#for` iterations of one link, nested ones included.
constexpr std::size_t kMaxLoopIterations = 1'000'000;

/// The most work of one link: one unit for each visit of a declaration, statement or expression,
/// for each iteration, and for each name in force that is tried on a name; and one for
/// `kBytesPerWork` bytes of text that are copied or searched. It ends the expansion of sources
/// whose loops stay below `kMaxLoopIterations` but have large bodies: no further iteration runs,
/// and no further name is substituted. This caps what would otherwise run for minutes, or exhaust
/// memory, at seconds and about 1.5 GB. A real shader uses less than a thousandth of it.
constexpr std::size_t kMaxLinkWork = 20'000'000;
constexpr std::size_t kBytesPerWork = 16;

/// The deepest nesting of arrays and objects in a node-definition file; what a node needs is 3.
/// Beyond it the JSON reader raises its error. (Its own default would let it overflow a stack of
/// 512 KiB.)
constexpr int kMaxJsonNesting = 200;

/// The most bytes that one written program may gain from repetition inside of repetition: some call
/// forms write an argument more than once (the matrix constructors, texture sampling through a
/// sampler object), and nested in each other they would grow the text exponentially.
constexpr std::size_t kMaxRepeatedText = std::size_t{4} * 1024 * 1024;

}  // namespace ns_ruke
