// SPDX-License-Identifier: MIT
// What the graph shows: nodes, lines and the frames of files.
import type { Edge, Node } from '@xyflow/react';
import equal from 'fast-deep-equal';
import { type NodeShape, nodeFileOf, type Shader } from '../model/project';
import type { Counts } from '../model/selectors';
import {
  arranged,
  boundsOf,
  nodeSize,
  type Offsets,
  type Point,
  type Reference,
  referencesOf,
  toScreen,
} from './layout';
import { Obstacles, route } from './routes';

/** What a node of the graph shows. */
export interface NodeData extends Record<string, unknown> {
  readonly name: string;
  readonly errors: number;
  readonly warnings: number;
  /** Its place among the nodes of the text that is shown, 1-based; 0: it is not in it. */
  readonly place: number;
  readonly isInVertex: boolean;
  readonly isInFragment: boolean;
  readonly isFound: boolean;
  /** Whether the chosen shader does without it. */
  readonly isDimmed: boolean;
}

export type ShownNode = Node<NodeData, 'morl'>;
export type ShownFile = Node<{ path: string }, 'file'>;
export type Shown = ShownNode | ShownFile;
export type ShownEdge = Edge<{ path: string }, 'routed'>;

/** Places of nodes while they are dragged, by id; the project gets them when the drag ends. */
export type Drags = Readonly<Record<string, Point>>;

/** What the nodes depend on. */
export interface View {
  readonly shapes: readonly NodeShape[];
  readonly shader: Shader | undefined;
  /** Whether all nodes are shown, where their files have them; otherwise those of the shader, in columns. */
  readonly isWhole: boolean;
  /** The node in the editor, which is always shown. */
  readonly chosen: string | null;
  readonly picked: ReadonlySet<string>;
  readonly counts: ReadonlyMap<string, Counts>;
  readonly order: readonly string[];
  readonly offsets: Offsets;
  readonly drags: Drags;
  readonly search: string;
}

export function shownNodes(view: View): ShownNode[] {
  const { shapes, shader, counts, offsets, drags } = view;
  const search = view.search.toLowerCase();
  const places = new Map(view.order.map((name, i) => [name, i + 1]));
  const vertex = new Set(shader?.vertex);
  const fragment = new Set(shader?.fragment);
  const isFound = (node: NodeShape): boolean =>
    search !== '' && node.name.toLowerCase().includes(search);
  const isOwn = ({ name }: NodeShape): boolean => vertex.has(name) || fragment.has(name);
  const shown = view.isWhole
    ? shapes
    : shapes.filter((node) => isOwn(node) || isFound(node) || node.id === view.chosen);
  const columns = view.isWhole ? null : arranged(shown);
  return shown.map((node) => {
    return {
      id: node.id,
      type: 'morl',
      position: drags[node.id] ?? columns?.get(node.id) ?? toScreen(offsets, node.file, node),
      draggable: view.isWhole,
      selected: view.picked.has(node.id),
      ...nodeSize,
      measured: nodeSize,
      ariaLabel: `node ${node.name}`,
      data: {
        name: node.name,
        errors: counts.get(node.name)?.errors ?? 0,
        warnings: counts.get(node.name)?.warnings ?? 0,
        place: places.get(node.name) ?? 0,
        isInVertex: vertex.has(node.name),
        isInFragment: fragment.has(node.name),
        isFound: isFound(node),
        isDimmed: !isOwn(node) && vertex.size + fragment.size > 0,
      },
    };
  });
}

const frame = { margin: 14, title: 22 };

/** A frame around the nodes of each file. */
export function shownFiles(shapes: readonly NodeShape[], nodes: readonly ShownNode[]): ShownFile[] {
  const fileOf = new Map(shapes.map(({ id, file }) => [id, nodeFileOf(file)]));
  const points = new Map<string, Point[]>();
  for (const { id, position } of nodes) {
    const path = fileOf.get(id) ?? '';
    points.set(path, [...(points.get(path) ?? []), position]);
  }
  return [...points].map(([path, own]) => {
    const { x, y, width, height } = boundsOf(own);
    const size = {
      width: width + 2 * frame.margin,
      height: height + 2 * frame.margin + frame.title,
    };
    return {
      id: `file ${path}`,
      type: 'file',
      position: { x: x - frame.margin, y: y - frame.margin - frame.title },
      ...size,
      measured: size,
      zIndex: -1,
      selectable: false,
      draggable: false,
      data: { path },
    };
  });
}

/** The name of an edge, by the ids of its nodes. */
export function edgeId({ from, to }: Reference): string {
  return `${from.id}>${to.id}`;
}

/** The lines between the nodes that are shown. */
export function shownEdges(
  shapes: readonly NodeShape[],
  nodes: readonly ShownNode[],
  chosen: string | null,
): ShownEdge[] {
  const byId = new Map(nodes.map((node) => [node.id, node]));
  const obstacles = new Obstacles(nodes.map(({ position }) => position));
  return referencesOf(shapes).flatMap((reference) => {
    const from = byId.get(reference.from.id);
    const to = byId.get(reference.to.id);
    if (!from || !to) {
      return [];
    }
    const id = edgeId(reference);
    return {
      id,
      type: 'routed',
      source: from.id,
      target: to.id,
      selected: id === chosen,
      className: from.data.isDimmed || to.data.isDimmed ? '' : 'used',
      ariaLabel: `'${to.data.name}' builds on '${from.data.name}'`,
      data: { path: route(obstacles, from.position, to.position) },
    };
  });
}

/** Takes the elements of the last list that are equal, so that only those that differ are drawn again. */
export function reuse<Element extends { readonly id: string }>(
  last: readonly Element[],
  next: readonly Element[],
): readonly Element[] {
  const byId = new Map(last.map((element) => [element.id, element]));
  const elements = next.map((element) => {
    const old = byId.get(element.id);
    return equal(old, element) && old ? old : element;
  });
  const isSame = elements.length === last.length && elements.every((one, i) => one === last[i]);
  return isSame ? last : elements;
}
