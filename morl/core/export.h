// SPDX-License-Identifier: MIT
#pragma once

/// Marks a class or function as part of the library's binary interface. The library is built with
/// hidden visibility, so what does not carry this mark cannot be reached from outside.
#define MORL_API __attribute__((visibility("default")))
