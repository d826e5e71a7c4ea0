// SPDX-License-Identifier: MIT
// Edits of JSON texts that leave every other byte alone, comments and indentation included.
import { applyEdits, findNodeAtLocation, type JSONPath, modify, parseTree } from 'jsonc-parser';

/** Comments are read over, trailing commas are not. */
export const jsonOptions = { allowTrailingComma: false, disallowComments: false };

/** Some editors write this mark before a text. It becomes a blank, so that places stay as they are. */
export function withoutMark(text: string): string {
  return text.startsWith('\uFEFF') ? ` ${text.slice(1)}` : text;
}

/** A value in the style of hand-written files: a list stays in one line, with blanks. */
function format(value: unknown): string {
  return Array.isArray(value)
    ? `[${value.map((one) => JSON.stringify(one)).join(', ')}]`
    : JSON.stringify(value);
}

function replaceSpan(text: string, start: number, end: number, by: string): string {
  return text.slice(0, start) + by + text.slice(end);
}

function nodeAt(text: string, path: JSONPath) {
  const root = parseTree(withoutMark(text), [], jsonOptions);
  const node = root && findNodeAtLocation(root, path);
  return node && { ...node, end: node.offset + node.length };
}

/** Whether a path leads to a list. */
export function isList(text: string, path: JSONPath): boolean {
  return nodeAt(text, path)?.type === 'array';
}

/** Sets the member that a path leads to. */
export function setValue(text: string, path: JSONPath, value: unknown): string {
  const old = nodeAt(text, path);
  return old
    ? replaceSpan(text, old.offset, old.end, format(value))
    : applyEdits(text, modify(withoutMark(text), path, value, {}));
}

/** Removes an element of a list. */
export function removeElement(text: string, list: JSONPath, index: number): string {
  const element = nodeAt(text, [...list, index]);
  if (!element) {
    return text;
  }
  const next = nodeAt(text, [...list, index + 1]);
  const previous = index > 0 ? nodeAt(text, [...list, index - 1]) : undefined;
  const start = next ? element.offset : (previous?.end ?? element.offset);
  return replaceSpan(text, start, next ? next.offset : element.end, '');
}

/** Adds an object at the end of a list, indented as the text is. */
export function appendElement(text: string, list: JSONPath, element: object): string {
  const whole = nodeAt(text, list);
  const last = nodeAt(text, [...list, (whole?.children?.length ?? 0) - 1]);
  if (!whole) {
    return text;
  }
  const unit = /\n([ \t]+)\S/.exec(text)?.[1] ?? '  ';
  const indent = unit.repeat(list.length + 1);
  const end = text.includes('\r\n') ? '\r\n' : '\n';
  const members = Object.entries(element).map(
    ([name, value]) => `${indent}${unit}${JSON.stringify(name)}: ${format(value)}`,
  );
  const written = `${indent}{${end}${members.join(`,${end}`)}${end}${indent}}`;
  if (last) {
    return replaceSpan(text, last.end, last.end, `,${end}${written}`);
  }
  const inside = text.slice(whole.offset + 1, whole.end - 1).trimEnd();
  const close = `${end}${unit.repeat(list.length)}`;
  return replaceSpan(text, whole.offset + 1, whole.end - 1, `${inside}${end}${written}${close}`);
}
