// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace ns_ruke {

/// Bounds that keep any source text and any request harmless. Every recursion and every expansion
/// in the compiler is bounded by one of them, and they are all defined here.

/// The longest source text, in bytes: locations are 32-bit numbers.
constexpr std::size_t kMaxSourceSize = 0x7fffffff;

/// The most units of nesting that the parser accepts. An expression (an operand, an operator's
/// right side, an argument, an index) costs one unit, a call one more, and a block (an `if`, a
/// `for`, a macro block) `kBlockNesting`. 1280 allows any mixture of these 200 operands deep, such
/// as `a+max(b,(c[...`. It also keeps parsing, linking, writing and destroying within a stack of
/// 512 KiB: a unit takes up to 350 bytes of stack (sampling, built by g++ 12), and three times as
/// much under the sanitizers.
constexpr unsigned kMaxNesting = 1280;

/// How many units of `kMaxNesting` one nested block costs. Its parser frames are about twice as
/// large as those of an expression.
constexpr unsigned kBlockNesting = 2;

/// The most `#for` iterations of one link, nested ones included.
constexpr std::size_t kMaxLoopIterations = 1'000'000;

/// The most work that one link may do. It is charged one unit for each visit to a declaration,
/// statement or expression, for each loop iteration, for each loop value tried on a name, for each
/// line that will be written, and for every `kBytesPerWork` bytes of text copied, searched, or
/// written as indentation. What is shared instead of copied is charged like a copy. Once the bound
/// is exceeded, no further iteration runs and no further name is substituted. A request then takes
/// at most about 1.5 s and 400 MB, with its report and warnings. 10,000 unrolled lights use two
/// fifths of the bound, and 256 nodes of 500 lines most of it.
constexpr std::size_t kMaxLinkWork = 3'200'000;
constexpr std::size_t kBytesPerWork = 16;

/// How many lines most declarations have in a shader.
constexpr std::uint32_t kLinesOfDeclare = 4;

/// The deepest nesting of arrays and objects in a node-definition file; nodes need 3 levels. Beyond
/// the bound the JSON reader throws. (Its own default would let it overflow a stack of 512 KiB.)
constexpr int kMaxJsonNesting = 200;

/// The most bytes that nested repetition may add to one written program. Some call forms (the
/// matrix constructors, texture sampling through a sampler object) write an argument more than
/// once; nested in each other, they would make the text grow exponentially.
constexpr std::size_t kMaxRepeatedText = std::size_t{4} * 1024 * 1024;

/// How many declarations of one pass a report lists as repeated by later nodes.
constexpr std::size_t kMaxRepetitions = 10'000;

/// How many warnings a request gives. Nobody reads more, and a hostile source could have millions.
constexpr std::size_t kMaxWarnings = 200;

}  // namespace ns_ruke
