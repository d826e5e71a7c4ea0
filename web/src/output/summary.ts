// SPDX-License-Identifier: MIT
import { targets } from '../compiler/protocol';
import type { State } from '../model/store';

const encoder = new TextEncoder();

/** The line below a text: its size, the time of all texts, and how many of them differ. */
export function summary(state: State): string {
  const { answer } = state;
  if (!answer) {
    return 'compiling';
  }
  const result = answer.texts[state.target][state.stage];
  if (!result) {
    return state.stage === 'vertex' ? 'no vertex text' : 'no fragment text';
  }
  const texts = targets.flatMap((target) => Object.values(answer.texts[target])).filter(Boolean);
  const distinct = new Set(texts.map((text) => text?.code)).size;
  const asked = new Set(texts.flatMap((text) => text?.macros.map((macro) => macro.name) ?? []));
  const bytes = encoder.encode(result.code).length;
  const macros = asked.size === 1 ? '1 macro' : `${asked.size} macros`;
  return `${bytes} bytes, ${texts.length} texts (${distinct} distinct) in ${answer.microseconds} µs, ${macros}`;
}
