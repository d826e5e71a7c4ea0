/* SPDX-License-Identifier: MIT */
#pragma once

/**
 * @def MORL_API
 * Marks a class or function as part of the library's binary interface. What does not carry this
 * mark cannot be reached from outside a shared library. MORL_BUILD is defined while the shared
 * library is compiled. MORL_STATIC is defined while the static one is, and by those who link it, so
 * that a program or plug-in that contains it exports nothing of it. (The CMake package and
 * pkg-config do.)
 */
#if defined(MORL_STATIC)
#define MORL_API
#elif defined(_WIN32)
#if defined(MORL_BUILD)
#define MORL_API __declspec(dllexport)
#else
#define MORL_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define MORL_API __attribute__((visibility("default")))
#else
#define MORL_API
#endif
