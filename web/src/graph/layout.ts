// SPDX-License-Identifier: MIT
import { type GraphNode, nodeFileOf, type Project } from '../model/project';
import { isFar } from '../model/remarks';

/** The size of a node on the screen, the same for all. */
export const nodeSize = { width: 200, height: 44 };
const gap = 160;

/** Canvases are laid out for larger nodes than those of this page, so it shows them narrower. */
const scale = { x: 0.9, y: 0.55 };

export interface Point {
  readonly x: number;
  readonly y: number;
}

/** How far down each file's nodes are shown, in units of the canvas, by path. */
export type Offsets = ReadonlyMap<string, number>;

/** Where a node of a file is shown. */
export function toScreen(offsets: Offsets, file: string, place: Point): Point {
  const { x, y } = isFar(place) ? { x: 0, y: 0 } : place;
  return { x: x * scale.x, y: (y + (offsets.get(nodeFileOf(file)) ?? 0)) * scale.y };
}

/** The place on the canvas of a file of what is shown at a point. */
export function toCanvas(offsets: Offsets, file: string, { x, y }: Point): Point {
  return { x: x / scale.x, y: y / scale.y - (offsets.get(nodeFileOf(file)) ?? 0) };
}

/** The canvases of all files begin at the same place, so they are put below each other. */
export function fileOffsets(project: Project): Offsets {
  const offsets = new Map<string, number>();
  let next = 0;
  for (const path of new Set(project.files.map((file) => nodeFileOf(file.path)))) {
    const nodes = project.nodes.filter((node) => nodeFileOf(node.file) === path);
    const ys = nodes.map((node) => (isFar(node) ? 0 : node.y));
    const top = nodes.length > 0 ? Math.min(...ys) : 0;
    offsets.set(path, next - top);
    next += nodes.length > 0 ? Math.max(...ys) - top + gap : 0;
  }
  return offsets;
}

/** An edge from a node to one that builds on it. */
export interface Reference {
  readonly from: GraphNode;
  readonly to: GraphNode;
}

export function referencesOf(project: Project): Reference[] {
  const byName = new Map(project.nodes.map((node) => [node.name, node]));
  return project.nodes.flatMap((to) =>
    to.references.flatMap((name) => {
      const from = byName.get(name);
      return from ? [{ from, to }] : [];
    }),
  );
}
