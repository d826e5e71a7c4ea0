// SPDX-License-Identifier: MIT
// A whole project as a short text, for the address.
import { deflateSync, Inflate, strFromU8, strToU8 } from 'fflate';
import { newId, nodeFileOf, type Project } from '../model/project';
import { nodeFilePaths } from './node_file';

/** A link, or what was kept, that cannot be read; the message is for the author. */
export class LinkError extends Error {}

const mark = '#morl1.';
/** What a link may unfold to, in bytes. */
const maxBytes = 8 * 1024 * 1024;

function toBase64Url(bytes: Uint8Array): string {
  let binary = '';
  bytes.forEach((byte) => (binary += String.fromCharCode(byte)));
  return btoa(binary).replaceAll('+', '-').replaceAll('/', '_').replaceAll('=', '');
}

function fromBase64Url(text: string): Uint8Array {
  const binary = atob(text.replaceAll('-', '+').replaceAll('_', '/'));
  return Uint8Array.from(binary, (character) => character.charCodeAt(0));
}

function inflate(bytes: Uint8Array): Uint8Array {
  const parts: Uint8Array[] = [];
  const state = { size: 0, isComplete: false };
  const stream = new Inflate((part, isLast) => {
    state.size += part.length;
    if (state.size > maxBytes) {
      throw new LinkError('it is too large');
    }
    parts.push(part);
    state.isComplete ||= isLast;
  });
  stream.push(bytes, true);
  if (!state.isComplete) {
    throw new LinkError('it is cut off');
  }
  const whole = new Uint8Array(state.size);
  parts.reduce((at, part) => (whole.set(part, at), at + part.length), 0);
  return whole;
}

type Words = readonly string[];
/** name, x, y, references, content, number of the file */
type PackedNode = readonly [string, number, number, Words, string, number];
type Numbers = Readonly<Record<string, number>>;
/** name, nodes of both passes, macros, samplers, macros of targets, variants */
type PackedShader = readonly [
  string,
  Words,
  Words,
  Numbers,
  Numbers,
  Readonly<Record<string, Numbers>>,
  number,
];
interface Packed {
  readonly f: Words;
  readonly n: readonly PackedNode[];
  readonly s: readonly PackedShader[];
  readonly v: Record<string, readonly number[]>;
}

function pack(project: Project): Packed {
  const paths = [...new Set(project.files.map(({ path }) => nodeFileOf(path)))];
  return {
    f: paths,
    n: project.nodes.map((node) => [
      node.name,
      node.x,
      node.y,
      node.references,
      node.content,
      paths.indexOf(nodeFileOf(node.file)),
    ]),
    s: project.shaders.map((one) => [
      one.name,
      one.vertex,
      one.fragment,
      one.macros,
      one.samplers,
      one.targetMacros,
      one.variants,
    ]),
    v: project.values,
  };
}

const isWords = (value: unknown): value is Words =>
  Array.isArray(value) && value.every((word) => typeof word === 'string');
const isTable = (value: unknown, isValue: (one: unknown) => boolean): boolean =>
  typeof value === 'object' && value !== null && Object.values(value).every(isValue);
const isNumber = (value: unknown): boolean => typeof value === 'number' && Number.isFinite(value);
const isInt = (value: unknown): boolean => typeof value === 'number' && value === (value | 0);
const isNumbers = (value: unknown): boolean => Array.isArray(value) && value.every(isNumber);

function isPacked(value: unknown): value is Packed {
  const { f, n, s, v } = (value ?? {}) as Partial<Record<keyof Packed, unknown>>;
  const isNode = (one: unknown): boolean =>
    Array.isArray(one) &&
    typeof one[0] === 'string' &&
    isNumbers([one[1], one[2], one[5]]) &&
    isWords(one[3]) &&
    typeof one[4] === 'string' &&
    isWords(f) &&
    typeof f[one[5] as number] === 'string';
  const isShader = (one: unknown): boolean =>
    Array.isArray(one) &&
    typeof one[0] === 'string' &&
    isWords(one[1]) &&
    isWords(one[2]) &&
    isTable(one[3], isInt) &&
    isTable(one[4], isInt) &&
    isTable(one[5], (macros) => isTable(macros, isInt)) &&
    Number.isInteger(one[6]);
  return (
    isWords(f) &&
    new Set(f).size === f.length &&
    f.every((path) => (nodeFilePaths as Words).includes(path)) &&
    Array.isArray(n) &&
    n.every(isNode) &&
    Array.isArray(s) &&
    s.length > 0 &&
    s.every(isShader) &&
    isTable(v, isNumbers)
  );
}

function unpack(packed: Packed): Project {
  return {
    // A link has the nodes, not the files' own layout.
    manifest: null,
    files: packed.f.map((path) => ({ path, text: '[]\n' })),
    nodes: packed.n.map(([name, x, y, references, content, file]) => ({
      id: newId(),
      name,
      x,
      y,
      references,
      content,
      file: packed.f[file] ?? '',
      index: null,
    })),
    shaders: packed.s.map(([name, vertex, fragment, macros, samplers, targetMacros, variants]) => ({
      name,
      vertex,
      fragment,
      macros,
      samplers,
      targetMacros,
      variants,
      index: null,
    })),
    values: packed.v,
  };
}

/** Whether a value that was read from somewhere is a project with everything that the page relies on. */
export function isProject(value: unknown): value is Project {
  try {
    return isPacked(JSON.parse(JSON.stringify(pack(value as Project))));
  } catch {
    return false;
  }
}

/** The fragment of an address, with its "#". */
export function toLink(project: Project): string {
  return mark + toBase64Url(deflateSync(strToU8(JSON.stringify(pack(project))), { level: 9 }));
}

/** Whether a fragment is meant to be a link to a project. */
export function isLink(fragment: string): boolean {
  return fragment.startsWith('#morl');
}

/** @throws LinkError, with a message for the author */
export function fromLink(fragment: string): Project {
  try {
    if (!fragment.startsWith(mark)) {
      throw new LinkError('it is of another version');
    }
    const packed: unknown = JSON.parse(
      strFromU8(inflate(fromBase64Url(fragment.slice(mark.length)))),
    );
    if (!isPacked(packed)) {
      throw new LinkError('it does not hold a graph');
    }
    return unpack(packed);
  } catch (error) {
    const reason = error instanceof LinkError ? error.message : 'it is damaged';
    throw new LinkError(`this link cannot be opened: ${reason}; ask for it again`);
  }
}
