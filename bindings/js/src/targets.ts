// SPDX-License-Identifier: MIT
// Written by "./dev golden".

/** The target languages, in a fixed order. */
export const targets = ["hlsl", "hlsl10", "glsl", "glsles"] as const;
