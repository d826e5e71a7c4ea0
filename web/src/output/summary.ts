// SPDX-License-Identifier: MIT
import { targets } from '../compiler/protocol';
import { projectOf, type State } from '../model/store';

const encoder = new TextEncoder();

/** The line below a text: its size, the time of all texts, how many of them differ, and how many variants the shader has. */
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
  const bytes = encoder.encode(result.code).length;
  const variants = projectOf(state).shaders.find((one) => one.name === state.shader)?.variants ?? 1;
  const number = variants === 1 ? '1 variant' : `1 of ${variants} variants`;
  return `${bytes} bytes, ${texts.length} texts (${distinct} distinct) in ${answer.microseconds} µs, ${number}`;
}
