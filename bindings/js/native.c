/* SPDX-License-Identifier: MIT */
/* What the module for JavaScript adds to the C interface. */
#include "morl/c/morl.h"

/* The package reads structures as words of four bytes. */
_Static_assert(sizeof(morl_text) == 8, "two words");
_Static_assert(sizeof(morl_value) == 12, "three words");
_Static_assert(sizeof(morl_semantic) == 16, "four words");
_Static_assert(sizeof(morl_fault) == 36, "nine words");
_Static_assert(sizeof(morl_node) == 36, "nine words");
_Static_assert(sizeof(morl_request) == 56, "fourteen words");
_Static_assert(sizeof(morl_line) == 8, "two words");
_Static_assert(sizeof(morl_declare) == 56, "fourteen words");
_Static_assert(sizeof(morl_macro) == 16, "four words");
_Static_assert(sizeof(morl_warning) == 32, "eight words");
_Static_assert(sizeof(morl_output) == 100, "twenty-five words");

/* Faults reach the host in results. */
static void Ignore(void* host, const morl_log_line* line)
{
    (void)host;
    (void)line;
}

/* Called once, before anything else. */
void morl_js_start(void)
{
    morl_set_log(Ignore, 0);
}
