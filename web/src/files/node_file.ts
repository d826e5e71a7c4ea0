// SPDX-License-Identifier: MIT
// Reads node files, and writes them back so that only what was edited changes.
import {
  getNodeValue,
  type Node,
  parseTree,
  type ParseError,
  printParseErrorCode,
} from 'jsonc-parser';
import { type GraphNode, newId, type NodeFile } from '../model/project';
import { appendElement, jsonOptions, removeElement, setValue, withoutMark } from './json_edit';

/** A file that cannot be read; the message names the file and the place. */
export class FileError extends Error {}

/** The names that the compiler knows, below the folder that is opened. */
export const nodeFilePaths = [
  'morl/vertex_shader.morl',
  'morl/fragment_shader.morl',
  'morl/post_effect.morl',
  'morl/special_output.morl',
] as const;

function lineAt(text: string, offset: number): number {
  return text.slice(0, offset).split('\n').length;
}

function parse(file: NodeFile): Node {
  const errors: ParseError[] = [];
  const root = parseTree(withoutMark(file.text), errors, jsonOptions);
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

/** The text of a file with the nodes as they are now. Untouched nodes keep their bytes. */
export function writeNodes(file: NodeFile, nodes: readonly GraphNode[]): string {
  const old = (parse(file).children ?? []).map((element) => readNode(file, element));
  let { text } = file;
  // From the end, so that the indexes of the others stay as they are.
  for (const [index, before] of [...old.entries()].reverse()) {
    const node = nodes.find((one) => one.index === index);
    if (!node) {
      text = removeElement(text, [], index);
      continue;
    }
    const { name, content, x, y, references: ref } = node;
    for (const [member, value] of Object.entries({ name, x, y, ref, content })) {
      if (JSON.stringify(value) !== JSON.stringify(before[member as keyof FileNode])) {
        text = setValue(text, [index, member], value);
      }
    }
  }
  for (const { name, x, y, references, content } of nodes.filter((node) => node.index === null)) {
    text = appendElement(text, [], { name, x, y, ref: references, content });
  }
  // Nothing is saved that could not be opened again.
  parse({ ...file, text });
  return text;
}
