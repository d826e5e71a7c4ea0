// SPDX-License-Identifier: MIT
// Where undo and redo have changed something.
import type { GraphNode, Project } from './project';

/** What shows a change. */
export interface Revealed {
  /** The id of the node. */
  readonly selected?: string;
  readonly goTo?: { readonly node: string; readonly line: number; readonly column: number };
  /** The name of the shader. */
  readonly shader?: string;
}

/** Where two texts begin to differ. */
function firstDifference(before: string, after: string): { line: number; column: number } {
  let at = 0;
  while (at < after.length && before[at] === after[at]) {
    at += 1;
  }
  const lines = after.slice(0, at).split('\n');
  return { line: lines.length, column: (lines.at(-1) ?? '').length + 1 };
}

function revealNode(old: GraphNode | undefined, now: GraphNode): Revealed {
  return old && old.content !== now.content
    ? {
        selected: now.id,
        goTo: { node: now.name, ...firstDifference(old.content, now.content) },
      }
    : { selected: now.id };
}

/** What to show of a project that was another one before: the first node or shader that differs. */
export function revealed(before: Project, after: Project): Revealed {
  if (before.nodes !== after.nodes) {
    const old = new Map(before.nodes.map((node) => [node.id, node]));
    const now = after.nodes.find((node) => old.get(node.id) !== node);
    return now ? revealNode(old.get(now.id), now) : {};
  }
  const shader = after.shaders.find((one) => !before.shaders.includes(one));
  return shader ? { shader: shader.name } : {};
}
