// SPDX-License-Identifier: MIT
// The module "virtual:morl-words": what each word of the language becomes in the targets, from the tables that the
// compiler writes into docs/language.md.
import { readFileSync } from 'node:fs';
import type { Plugin } from 'vite';

const moduleName = 'virtual:morl-words';

/** The rows of the table below a mark, as the texts of their cells. */
export function readTable(document: string, name: string): string[][] {
  const start = document.indexOf(`<!-- table: ${name} -->`);
  const table = document.slice(start, document.indexOf('<!-- end -->', start));
  const rows = table.split('\n').filter((line) => line.startsWith('| `'));
  if (start < 0 || rows.length === 0) {
    throw new Error(`docs/language.md has no table '${name}'`);
  }
  return rows.map((row) =>
    row
      .split('|')
      .slice(1, -1)
      .map((cell) => cell.trim().replaceAll('`', '')),
  );
}

export function wordsPlugin(): Plugin {
  return {
    name: 'morl-words',
    resolveId: (id) => (id === moduleName ? `\0${moduleName}` : undefined),
    load(id) {
      if (id !== `\0${moduleName}`) {
        return undefined;
      }
      const path = new URL('../docs/language.md', import.meta.url);
      const document = readFileSync(path, 'utf8');
      const tables = ['intrinsics', 'types', 'semantics'].map((name) => readTable(document, name));
      const [intrinsics, types, semantics] = tables;
      return `export const words = ${JSON.stringify({ intrinsics, types, semantics })};`;
    },
  };
}
