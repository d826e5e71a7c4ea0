// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace ns_ruke {

/// Bounds that keep any source text and any request harmless. Every recursion and every expansion
/// of the compiler is held by one of them; no other place defines a limit.

/// The longest source text, in bytes: locations are 32-bit numbers.
constexpr std::size_t kMaxSourceSize = 0x7fffffff;

/// The most units of nesting that the parser lets through. An expression (an operand, an operator's
/// right side, an argument, an index) costs one unit; a block (an `if`, a `for`, a macro block)
/// costs `kBlockNesting`. 480 admits chains of 400 operators and 200 nested blocks with room to
/// spare, and keeps parsing, linking, writing and destroying within a stack of 512 KiB, also in an
/// unoptimised build with the address sanitizer.
constexpr unsigned kMaxNesting = 480;

/// What one nested block costs of `kMaxNesting`: its parser frames are about twice as large as
/// those of an expression.
constexpr unsigned kBlockNesting = 2;

/// The most `#for` iterations of one link, nested ones included.
constexpr std::size_t kMaxLoopIterations = 1'000'000;

/// The most tree that the iterations of one link may copy: every copied node counts one, and one
/// more for each 64 bytes of its name. Reached only by large loop bodies; it ends the loops just as
/// `kMaxLoopIterations` does, before memory runs out (one node takes about 100 bytes).
constexpr std::size_t kMaxLoopCopies = 32'000'000;

/// The most bytes that one written program may gain from repetition inside of repetition: some call
/// forms write an argument more than once (the matrix constructors, texture sampling through a
/// sampler object), and nested in each other they would grow the text exponentially.
constexpr std::size_t kMaxRepeatedText = std::size_t{4} * 1024 * 1024;

}  // namespace ns_ruke
