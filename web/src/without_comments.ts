// SPDX-License-Identifier: MIT

/** A text of Morl or GLSL with a blank for each comment. */
export function withoutComments(text: string): string {
  return text.replace(/\/\/.*|\/\*[^]*?\*\//g, ' ');
}
