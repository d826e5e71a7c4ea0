// SPDX-License-Identifier: MIT
// The shaders of a manifest (shaders.json).
import type { Shader } from '../model/project';
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
  const result: Record<string, number> = {};
  for (const [name, one] of Object.entries(isRecord(value) ? value : {})) {
    const number: unknown = Array.isArray(one) ? Math.max(...(one as number[])) : one;
    if (!Number.isInteger(number)) {
      throw new FileError(`${where}: the value of ${name} is not an integer`);
    }
    result[name] = number as number;
  }
  return result;
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
    root = JSON.parse(text);
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
    };
  });
}
