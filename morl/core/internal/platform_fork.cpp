// SPDX-License-Identifier: MIT
#include "morl/core/internal/platform_fork.h"

#if (defined(__unix__) || defined(__APPLE__)) && !defined(__EMSCRIPTEN__)

#include <pthread.h>

void ns_ruke::CallAtFork(void (*before)(), void (*inParent)(), void (*inChild)())
{
    // It can fail only for lack of memory; forks are then as safe as without it.
    static_cast<void>(pthread_atfork(before, inParent, inChild));
}

#else

void ns_ruke::CallAtFork(void (* /*before*/)(), void (* /*inParent*/)(), void (* /*inChild*/)()) {}

#endif
