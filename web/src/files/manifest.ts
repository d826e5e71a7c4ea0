// SPDX-License-Identifier: MIT
// The shaders of a manifest (shaders.json).
import { type NodeFile, type Shader, valueIn } from '../model/project';
import { appendElement, isList, removeElement, setValue, withoutMark } from './json_edit';
import { FileError } from './node_file';

function isRecord(value: unknown): value is Record<string, unknown> {
  return typeof value === 'object' && value !== null && !Array.isArray(value);
}

function names(value: unknown, where: string): string[] {
  if (value === undefined) {
    return [];
  }
  if (!Array.isArray(value) || !value.every((name) => typeof name === 'string')) {
    throw new FileError(`${where} must be a list of names`);
  }
  return value;
}

/** Numbers by name. Of a list, the largest counts: it is the richest variant. */
function numbers(value: unknown, where: string): Record<string, number> {
  const entries = Object.entries(isRecord(value) ? value : {}).map(([name, one]) => {
    const number: unknown = Array.isArray(one) ? Math.max(...(one as number[])) : one;
    if (typeof number !== 'number' || number !== (number | 0)) {
      throw new FileError(`${where}: the value of ${name} is not a 32-bit integer`);
    }
    return [name, number] as const;
  });
  return Object.fromEntries(entries);
}

/** The product of the numbers of values that the macros can have. */
function countVariants(macros: unknown): number {
  return Object.values(isRecord(macros) ? macros : {}).reduce<number>(
    (product, values) => product * (Array.isArray(values) ? values.length : 1),
    1,
  );
}

export function readManifest(path: string, text: string): Shader[] {
  let root: unknown;
  try {
    root = JSON.parse(withoutMark(text));
  } catch (error) {
    throw new FileError(`${path}: not valid JSON: ${(error as Error).message}`);
  }
  if (!isRecord(root) || !Array.isArray(root.shaders)) {
    throw new FileError(`${path}: "shaders" must be a list of shaders`);
  }
  return root.shaders.map((entry: unknown, i) => {
    if (!isRecord(entry) || typeof entry.name !== 'string') {
      throw new FileError(`${path}: shader ${i + 1} has no name`);
    }
    const where = `${path}: shader '${entry.name}'`;
    return {
      name: entry.name,
      vertex: names(entry.vertex, `${where}: "vertex"`),
      fragment: names(entry.fragment, `${where}: "fragment"`),
      macros: numbers(entry.macros, where),
      targetMacros: Object.fromEntries(
        Object.entries(isRecord(entry.targetMacros) ? entry.targetMacros : {}).map(
          ([target, macros]) => [target, numbers(macros, where)],
        ),
      ),
      samplers: numbers(entry.samplers, where),
      variants: countVariants(entry.macros),
      index: i,
    };
  });
}

/** A manifest of a project that has none yet. */
export const emptyManifest = '{\n  "shaders": []\n}\n';

/** The entry of a new shader. */
function newEntry(shader: Shader): object {
  const { name, vertex, fragment, macros, targetMacros, samplers } = shader;
  const tables = Object.entries({ macros, targetMacros, samplers }).filter(
    ([, table]) => Object.keys(table).length > 0,
  );
  return { name, vertex, fragment, ...Object.fromEntries(tables) };
}

/** What an entry lacks. A list of values stays: it says which variants are built, and not with which one the page begins. */
function changeEntry(text: string, index: number, before: Shader, shader: Shader): string {
  const at = ['shaders', index];
  let next = text;
  if (shader.name !== before.name) {
    next = setValue(next, [...at, 'name'], shader.name);
  }
  for (const [macro, value] of Object.entries(shader.macros)) {
    const path = [...at, 'macros', macro];
    if (valueIn(before.macros, macro) !== value && !isList(next, path)) {
      next = setValue(next, path, value);
    }
  }
  for (const stage of ['vertex', 'fragment'] as const) {
    if (JSON.stringify(shader[stage]) !== JSON.stringify(before[stage])) {
      next = setValue(next, [...at, stage], shader[stage]);
    }
  }
  return next;
}

/** The text of a manifest with the shaders as they are now. */
export function writeManifest(file: NodeFile, shaders: readonly Shader[]): string {
  const old = readManifest(file.path, file.text);
  let { text } = file;
  for (const shader of shaders.filter(({ index }) => index === null)) {
    text = appendElement(text, ['shaders'], newEntry(shader));
  }
  // From the end, so that the indexes of the others stay as they are.
  for (const [index, before] of [...old.entries()].reverse()) {
    const shader = shaders.find((one) => one.index === index);
    text = shader
      ? changeEntry(text, index, before, shader)
      : removeElement(text, ['shaders'], index);
  }
  readManifest(file.path, text);
  return text;
}
