// SPDX-License-Identifier: MIT
// What is odd about a project as a whole.
import type { Message } from '../compiler/protocol';
import type { NodeShape, Shader } from './project';

const farthest = 1e5;

/** Whether a position is so far out that everything else would become too small to be seen. */
export function isFar({ x, y }: { readonly x: number; readonly y: number }): boolean {
  return !(Math.abs(x) <= farthest && Math.abs(y) <= farthest);
}

function remark(node: string, text: string, hint: string): Message {
  return { severity: 'warning', node, line: 0, column: 0, text, hint, targets: [], check: '' };
}

/** The names that occur more than once. */
function repeated(names: readonly string[]): string[] {
  const seen = new Set<string>();
  return [...new Set(names.filter((name) => seen.size === seen.add(name).size))];
}

/** Nodes that build on themselves over others, each ring once. */
function cycles(nodes: readonly NodeShape[]): string[][] {
  const references = new Map(nodes.map((node) => [node.name, node.references]));
  const done = new Set<string>();
  const found: string[][] = [];
  for (const start of references.keys()) {
    // Without recursion: a chain may have any length.
    const path: { name: string; next: number }[] = [];
    const onPath = new Map<string, number>();
    const enter = (name: string): void => {
      onPath.set(name, path.length);
      path.push({ name, next: 0 });
    };
    if (!done.has(start)) {
      enter(start);
    }
    for (let top = path.at(-1); top; top = path.at(-1)) {
      const name = references.get(top.name)?.[top.next];
      top.next += 1;
      if (name === undefined) {
        done.add(top.name);
        onPath.delete(top.name);
        path.pop();
      } else if (onPath.has(name)) {
        found.push(path.slice(onPath.get(name)).map((one) => one.name));
      } else if (references.has(name) && !done.has(name)) {
        enter(name);
      }
    }
  }
  return found;
}

/** Remarks for the list of messages. */
export function remarksOn(nodes: readonly NodeShape[], shaders: readonly Shader[]): Message[] {
  return [
    ...repeated(nodes.map(({ name }) => name)).map((name) =>
      remark(name, `two nodes are called '${name}': the last one counts`, 'rename one of them'),
    ),
    ...repeated(shaders.map(({ name }) => name)).map((name) =>
      remark('', `two shaders are called '${name}'`, 'rename one of them'),
    ),
    ...cycles(nodes).map((ring) =>
      remark(
        ring[0] ?? '',
        `these nodes build on each other in a ring: ${ring.join(', ')}`,
        'take one of the references out',
      ),
    ),
    ...nodes
      .filter(isFar)
      .map(({ name }) =>
        remark(name, `the position of '${name}' is far out, so it is drawn at 0, 0`, 'move it'),
      ),
  ];
}
