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
/// `for`, a macro block) `kBlockNesting`. 480 admits chains of 400 operators and 200 nested calls
/// or blocks with room to spare, and keeps parsing, linking, writing and destroying within a stack
/// of 512 KiB, also under the sanitizers.
constexpr unsigned kMaxNesting = 480;

/// What one nested block costs of `kMaxNesting`: its parser frames are about twice as large as
/// those of an expression.
constexpr unsigned kBlockNesting = 2;

/// The most `#for` iterations of one link, nested ones included.
constexpr std::size_t kMaxLoopIterations = 1'000'000;

/// The most work of one link, in units of about ten instructions. It ends the expansion of sources
/// whose loops stay below `kMaxLoopIterations` but have large bodies: no further iteration runs,
/// and no further name is substituted. What would take minutes, or any amount of memory, so takes
/// seconds and at most about 2.5 GB (30 million nodes). A real shader uses less than a thousandth
/// of it.
constexpr std::size_t kMaxLinkWork = 500'000'000;

/// What it costs, in units of `kMaxLinkWork`, to visit a statement, declaration or condition, to
/// execute a macro assignment, to copy a node (one more for each byte of its text) and to merge a
/// declaration.
constexpr std::size_t kVisitWork = 4;
constexpr std::size_t kAssignWork = 32;
constexpr std::size_t kCopyWork = 16;
constexpr std::size_t kMergeWork = 256;

/// The deepest nesting of arrays and objects in a node-definition file; what a node needs is 3.
/// Beyond it the JSON reader raises its error. (Its own default would let it overflow a stack of
/// 512 KiB.)
constexpr int kMaxJsonNesting = 200;

/// The most bytes that one written program may gain from repetition inside of repetition: some call
/// forms write an argument more than once (the matrix constructors, texture sampling through a
/// sampler object), and nested in each other they would grow the text exponentially.
constexpr std::size_t kMaxRepeatedText = std::size_t{4} * 1024 * 1024;

}  // namespace ns_ruke
