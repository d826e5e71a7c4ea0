/* SPDX-License-Identifier: MIT */
#pragma once

/**
 * @def MORL_API
 * Marks a class or function as part of the library's binary interface. What does not carry this
 * mark cannot be reached from outside a shared library. Where libraries are DLLs, MORL_BUILD is
 * defined while the DLL is compiled, and those who link the static library define MORL_STATIC. (The
 * CMake package does.)
 */
#if defined(_WIN32)
#if defined(MORL_STATIC)
#define MORL_API
#elif defined(MORL_BUILD)
#define MORL_API __declspec(dllexport)
#else
#define MORL_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define MORL_API __attribute__((visibility("default")))
#else
#define MORL_API
#endif
