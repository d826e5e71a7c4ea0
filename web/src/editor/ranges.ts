// SPDX-License-Identifier: MIT
// Places in a text: what a message is about, and where two texts differ.
import type { Text } from '@codemirror/state';
import type { Message } from '../compiler/protocol';

/** What a message underlines: the word at its place, or the whole line. */
export function rangeOf(doc: Text, message: Message): { from: number; to: number } {
  const line = doc.line(Math.min(Math.max(message.line, 1), doc.lines));
  if (message.column === 0) {
    const indent = /^\s*/.exec(line.text)?.[0].length ?? 0;
    return { from: line.from + indent, to: line.to };
  }
  const at = Math.min(line.from + message.column - 1, line.to);
  const word = /^[\w$]+|^./.exec(line.text.slice(at - line.from))?.[0] ?? '';
  // A fault is often found right after the word that is wrong.
  return word.trim() === ''
    ? { from: Math.max(line.from, at - 1), to: at }
    : { from: at, to: at + word.length };
}

/** The line break of a text; texts with several kinds keep their carriage returns as characters. */
export function lineBreakOf(content: string): string {
  const all = content.split('\n').length - 1;
  return all > 0 && content.split('\r\n').length - 1 === all ? '\r\n' : '\n';
}

/** What turns one text into another: the part between what both begin and end with. */
export function differenceOf(
  before: string,
  after: string,
): { from: number; to: number; insert: string } {
  const shorter = Math.min(before.length, after.length);
  let start = 0;
  while (start < shorter && before[start] === after[start]) start += 1;
  let same = 0;
  while (same < shorter - start && before.at(-1 - same) === after.at(-1 - same)) same += 1;
  return { from: start, to: before.length - same, insert: after.slice(start, after.length - same) };
}

/** A source as a node has it: blanks at its end are a fault there, and nobody sees them. */
export function withoutTrailingBlanks(text: string): string {
  return text.trimEnd();
}
