// SPDX-License-Identifier: MIT
/// <reference types="vite/client" />

declare module '*?raw' {
  const text: string;
  export default text;
}

declare module 'virtual:morl-words' {
  /** Rows of docs/language.md: a word or a call, and what it becomes in each target. */
  export const words: Record<'intrinsics' | 'types' | 'semantics', string[][]>;
}
