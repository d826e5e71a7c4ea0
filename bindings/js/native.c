/* SPDX-License-Identifier: MIT */
/* What the module for JavaScript adds to the C interface. */
#include "morl/c/morl.h"

/* The package reads structures as words of four bytes; native.ts has the sizes. */
_Static_assert(sizeof(morl_text) == 2 * 4, "morl_text");
_Static_assert(sizeof(morl_value) == 4 * 4, "morl_value");
_Static_assert(sizeof(morl_semantic) == 4 * 4, "morl_semantic");
_Static_assert(sizeof(morl_line) == 2 * 4, "morl_line");
_Static_assert(sizeof(morl_fault) == 13 * 4, "fault");
_Static_assert(sizeof(morl_node) == 9 * 4, "node");
_Static_assert(sizeof(morl_request) == 18 * 4, "request");
_Static_assert(sizeof(morl_declare) == 27 * 4, "declare");
_Static_assert(sizeof(morl_macro) == 5 * 4, "macro");
_Static_assert(sizeof(morl_warning) == 10 * 4, "warning");
_Static_assert(sizeof(morl_output) == 20 * 4, "output");
_Static_assert(sizeof(morl_program_uniform) == 5 * 4, "uniform");
_Static_assert(sizeof(morl_varying) == 5 * 4, "varying");

/* Faults reach the host in results. */
static void Ignore(void* host, const morl_log_line* line)
{
    (void)host;
    (void)line;
}

/* Called once, before anything else. */
void morl_js_start(void)
{
    morl_set_log(Ignore, 0, 0, 0);
}
