// SPDX-License-Identifier: MIT
// Reads node files, and writes them back so that only what was edited changes.
import {
  applyEdits,
  findNodeAtLocation,
  getNodeValue,
  modify,
  type Node,
  parseTree,
  type ParseError,
  printParseErrorCode,
} from 'jsonc-parser';
import { type GraphNode, newId, type NodeFile } from '../model/project';

/** A file that cannot be read; the message names the file and the place. */
export class FileError extends Error {}

/** The names that the compiler knows, below the folder that is opened. */
export const nodeFilePaths = [
  'morl/vertex_shader.morl',
  'morl/fragment_shader.morl',
  'morl/post_effect.morl',
  'morl/special_output.morl',
] as const;

const options = { allowTrailingComma: false, disallowComments: false };

function lineAt(text: string, offset: number): number {
  return text.slice(0, offset).split('\n').length;
}

function parse(file: NodeFile): Node {
  const errors: ParseError[] = [];
  const root = parseTree(file.text, errors, options);
  const [error] = errors;
  if (error) {
    const reason = printParseErrorCode(error.error)
      .replace(/([a-z])([A-Z])/g, '$1 $2')
      .toLowerCase();
    throw new FileError(
      `${file.path}:${lineAt(file.text, error.offset)}: not valid JSON: ${reason}`,
    );
  }
  if (root?.type !== 'array') {
    throw new FileError(`${file.path}: a node file is a list of nodes; one without nodes holds []`);
  }
  return root;
}

interface FileNode {
  name: string;
  content: string;
  x: number;
  y: number;
  ref: readonly string[];
}

function readNode(file: NodeFile, element: Node): FileNode {
  const value: unknown = getNodeValue(element);
  const fail = (reason: string): never => {
    throw new FileError(`${file.path}:${lineAt(file.text, element.offset)}: ${reason}`);
  };
  if (typeof value !== 'object' || value === null || Array.isArray(value)) {
    return fail('a node must be an object');
  }
  const { name, content, x = 0, y = 0, ref = [] } = value as Record<string, unknown>;
  if (typeof name !== 'string' || typeof content !== 'string') {
    return fail('a node needs "name" and "content", which are strings');
  }
  if (typeof x !== 'number' || typeof y !== 'number') {
    return fail('"x" and "y" must be numbers');
  }
  if (!Array.isArray(ref) || !ref.every((one) => typeof one === 'string')) {
    return fail('"ref" must be a list of names');
  }
  return { name, content, x, y, ref };
}

/** The nodes of a file, in its order. */
export function readNodes(file: NodeFile): GraphNode[] {
  return (parse(file).children ?? []).map((element, index) => {
    const { ref, ...node } = readNode(file, element);
    return { id: newId(), ...node, references: ref, file: file.path, index };
  });
}

/** A value in the style of hand-written files: a list stays in one line, with blanks. */
function format(value: unknown): string {
  return Array.isArray(value)
    ? `[${value.map((one) => JSON.stringify(one)).join(', ')}]`
    : JSON.stringify(value);
}

function replaceSpan(text: string, start: number, length: number, by: string): string {
  return text.slice(0, start) + by + text.slice(start + length);
}

/** Sets a member of the node at an index; nothing else of the text changes. */
function setMember(text: string, index: number, name: string, value: unknown): string {
  const root = parseTree(text, [], options);
  const old = root && findNodeAtLocation(root, [index, name]);
  return old
    ? replaceSpan(text, old.offset, old.length, format(value))
    : applyEdits(text, modify(text, [index, name], value, {}));
}

/** Adds a node at the end of the list, indented as the file is. */
function append(text: string, node: FileNode): string {
  const root = parseTree(text, [], options);
  const last = root?.children?.at(-1);
  const indent = /\n([ \t]+)\S/.exec(text)?.[1] ?? '  ';
  const end = text.includes('\r\n') ? '\r\n' : '\n';
  const members = Object.entries(node).map(
    ([name, value]) => `${indent}${indent}${JSON.stringify(name)}: ${format(value)}`,
  );
  const written = `${indent}{${end}${members.join(`,${end}`)}${end}${indent}}`;
  return last
    ? replaceSpan(text, last.offset + last.length, 0, `,${end}${written}`)
    : replaceSpan(text, (root?.offset ?? 0) + 1, (root?.length ?? 2) - 2, `${end}${written}${end}`);
}

/** The text of a file with the nodes as they are now. Untouched nodes keep their bytes. */
export function writeNodes(file: NodeFile, nodes: readonly GraphNode[]): string {
  const old = (parse(file).children ?? []).map((element) => readNode(file, element));
  let { text } = file;
  // From the end, so that the indexes of the others stay as they are.
  for (const [index, before] of [...old.entries()].reverse()) {
    const node = nodes.find((one) => one.index === index);
    if (!node) {
      text = applyEdits(text, modify(text, [index], undefined, {}));
      continue;
    }
    const { name, content, x, y, references: ref } = node;
    for (const [member, value] of Object.entries({ name, x, y, ref, content })) {
      if (JSON.stringify(value) !== JSON.stringify(before[member as keyof FileNode])) {
        text = setMember(text, index, member, value);
      }
    }
  }
  const added = nodes.filter((node) => node.index === null);
  return added.reduce(
    (whole, { name, x, y, references, content }) =>
      append(whole, { name, x, y, ref: references, content }),
    text,
  );
}
