// SPDX-License-Identifier: MIT
import { graphlib, layout } from '@dagrejs/dagre';
import { type NodeFile, type NodeShape, nodeFileOf } from '../model/project';
import { isFar } from '../model/remarks';

/** The size of a node on the screen, the same for all. */
export const nodeSize = { width: 210, height: 44 };
const gap = 160;

/** Canvases are laid out for larger nodes than those of this page, so it shows them narrower. */
const scale = { x: 0.9, y: 0.55 };

export interface Point {
  readonly x: number;
  readonly y: number;
}

export interface Box extends Point {
  readonly width: number;
  readonly height: number;
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
export function fileOffsets(files: readonly NodeFile[], nodes: readonly NodeShape[]): Offsets {
  const offsets = new Map<string, number>();
  let next = 0;
  for (const path of new Set(files.map((file) => nodeFileOf(file.path)))) {
    const own = nodes.filter((node) => nodeFileOf(node.file) === path);
    const ys = own.map((node) => (isFar(node) ? 0 : node.y));
    const top = ys.reduce((least, y) => Math.min(least, y), ys[0] ?? 0);
    const bottom = ys.reduce((most, y) => Math.max(most, y), top);
    offsets.set(path, next - top);
    next += ys.length > 0 ? bottom - top + gap : 0;
  }
  return offsets;
}

/** An edge from a node to one that builds on it. */
export interface Reference {
  readonly from: NodeShape;
  readonly to: NodeShape;
}

export function referencesOf(nodes: readonly NodeShape[]): Reference[] {
  const byName = new Map(nodes.map((node) => [node.name, node]));
  return nodes.flatMap((to) =>
    to.references.flatMap((name) => {
      const from = byName.get(name);
      return from ? [{ from, to }] : [];
    }),
  );
}

/** What lies around some points of nodes. */
export function boundsOf(points: readonly Point[]): Box {
  const xs = points.map(({ x }) => x);
  const ys = points.map(({ y }) => y);
  const x = xs.reduce((least, one) => Math.min(least, one), xs[0] ?? 0);
  const y = ys.reduce((least, one) => Math.min(least, one), ys[0] ?? 0);
  const right = xs.reduce((most, one) => Math.max(most, one), x);
  const bottom = ys.reduce((most, one) => Math.max(most, one), y);
  return { x, y, width: right - x + nodeSize.width, height: bottom - y + nodeSize.height };
}

const spacing = { nodesep: 22, ranksep: 60, fileGap: 50 };

/** Where the nodes of one file are shown if they stand in columns, each right of what it builds on. */
function columns(nodes: readonly NodeShape[]): Map<string, Point> {
  const graph = new graphlib.Graph();
  graph.setGraph({ rankdir: 'LR', nodesep: spacing.nodesep, ranksep: spacing.ranksep });
  graph.setDefaultEdgeLabel(() => ({}));
  nodes.forEach((node) => graph.setNode(node.id, { ...nodeSize }));
  referencesOf(nodes).forEach(({ from, to }) => graph.setEdge(from.id, to.id));
  layout(graph);
  // The layout has the centres of nodes.
  return new Map(
    nodes.map(({ id }) => {
      const { x, y } = graph.node(id) as Point;
      return [id, { x: x - nodeSize.width / 2, y: y - nodeSize.height / 2 }];
    }),
  );
}

/** Where nodes are shown if they are arranged in columns, the files below each other. */
export function arranged(nodes: readonly NodeShape[]): Map<string, Point> {
  const places = new Map<string, Point>();
  let top = 0;
  for (const file of new Set(nodes.map((node) => nodeFileOf(node.file)))) {
    const own = columns(nodes.filter((node) => nodeFileOf(node.file) === file));
    const { x, y, height } = boundsOf([...own.values()]);
    own.forEach((place, id) => places.set(id, { x: place.x - x, y: place.y - y + top }));
    top += height + spacing.fileGap;
  }
  return places;
}

/** The names of nodes, of 13 CSS pixels, have 11 then. */
export const readableZoom = 0.85;
const largestZoom = 1.2;
const padding = 30;

/** What is in the middle of the view, and how large it is shown. */
export interface Sight {
  readonly center: Point;
  readonly zoom: number;
}

/** A view of as much as can be read, in an area of so many CSS pixels. Where not all fits, it is around a point. */
export function sightOf(
  box: Box,
  area: { readonly width: number; readonly height: number },
  around: Point,
): Sight {
  const whole = { width: box.width + 2 * padding, height: box.height + 2 * padding };
  const fitting = Math.min(area.width / whole.width, area.height / whole.height);
  const zoom = Math.min(Math.max(fitting, readableZoom), largestZoom);
  const middle = (start: number, length: number, wanted: number, shown: number): number => {
    const half = shown / zoom / 2;
    return length <= 2 * half
      ? start + length / 2
      : Math.min(Math.max(wanted, start + half), start + length - half);
  };
  return {
    center: {
      x: middle(box.x - padding, whole.width, around.x, area.width),
      y: middle(box.y - padding, whole.height, around.y, area.height),
    },
    zoom,
  };
}
