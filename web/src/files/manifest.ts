// SPDX-License-Identifier: MIT
// The shaders of a manifest (shaders.json).
import { type NodeFile, type Shader, valueIn } from '../model/project';
import { appendElement, isList, setValue, withoutMark } from './json_edit';
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
function newEntry({ name, vertex, fragment, macros }: Shader): object {
  return Object.keys(macros).length > 0
    ? { name, vertex, fragment, macros }
    : { name, vertex, fragment };
}

/**
 * The text of a manifest with the shaders as they are now. A list of values stays: it says which variants are built,
 * and not with which one the page begins.
 */
export function writeManifest(file: NodeFile, shaders: readonly Shader[]): string {
  const old = readManifest(file.path, file.text);
  let { text } = file;
  for (const shader of shaders) {
    const before = shader.index === null ? undefined : old[shader.index];
    const { vertex, fragment } = shader;
    if (!before || shader.index === null) {
      text = appendElement(text, ['shaders'], newEntry(shader));
      continue;
    }
    for (const [macro, value] of Object.entries(shader.macros)) {
      const path = ['shaders', shader.index, 'macros', macro];
      if (valueIn(before.macros, macro) !== value && !isList(text, path)) {
        text = setValue(text, path, value);
      }
    }
    for (const [stage, nodes] of Object.entries({ vertex, fragment })) {
      if (JSON.stringify(nodes) !== JSON.stringify(before[stage as 'vertex' | 'fragment'])) {
        text = setValue(text, ['shaders', shader.index, stage], nodes);
      }
    }
  }
  readManifest(file.path, text);
  return text;
}
