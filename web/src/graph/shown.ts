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
  readonly search: string;
}

export function shownNodes(view: View): ShownNode[] {
  const { shapes, shader, counts, offsets } = view;
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
      position: columns?.get(node.id) ?? toScreen(offsets, node.file, node),
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

/** The nodes where they are dragged to; all others are the same as before. */
export function withDrags(nodes: readonly ShownNode[], drags: Drags): readonly ShownNode[] {
  return Object.keys(drags).length === 0
    ? nodes
    : nodes.map((node) => {
        const position = drags[node.id];
        return position ? { ...node, position } : node;
      });
}

const frame = { margin: 14, title: 22 };

/** A frame around the nodes of each file. */
export function shownFiles(shapes: readonly NodeShape[], nodes: readonly ShownNode[]): ShownFile[] {
  const fileOf = new Map(shapes.map(({ id, file }) => [id, nodeFileOf(file)]));
  const points = new Map<string, Point[]>();
  for (const { id, position } of nodes) {
    const path = fileOf.get(id) ?? '';
    const own = points.get(path);
    if (own) {
      own.push(position);
    } else {
      points.set(path, [position]);
    }
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

/** The line of a reference, and where it leads from and to. */
export interface Route extends Reference {
  readonly start: Point;
  readonly end: Point;
  /** The data of an SVG path. */
  readonly path: string;
}

function isAt(one: Point, other: Point): boolean {
  return one.x === other.x && one.y === other.y;
}

/**
 * The lines between the nodes that are shown, by their names.
 * @param last lines to keep where both ends are as they were; empty: all lines are found anew
 */
export function routesOf(
  shapes: readonly NodeShape[],
  nodes: readonly ({ readonly id: string } & Point)[],
  last: ReadonlyMap<string, Route>,
): ReadonlyMap<string, Route> {
  const places = new Map(nodes.map((node) => [node.id, node]));
  const obstacles = new Obstacles(places.values());
  const routes = new Map<string, Route>();
  for (const reference of referencesOf(shapes)) {
    const start = places.get(reference.from.id);
    const end = places.get(reference.to.id);
    if (!start || !end) {
      continue;
    }
    const id = edgeId(reference);
    const old = last.get(id);
    const isSame = old && isAt(old.start, start) && isAt(old.end, end);
    const path = isSame ? old.path : route(obstacles, start, end);
    routes.set(id, { ...reference, start, end, path });
  }
  return routes;
}

/** @param names of the nodes in the passes of the shader: the lines between them stand out */
export function shownEdges(
  routes: ReadonlyMap<string, Route>,
  names: ReadonlySet<string>,
  chosen: string | null,
): ShownEdge[] {
  return [...routes].map(([id, { from, to, path }]) => ({
    id,
    type: 'routed',
    source: from.id,
    target: to.id,
    selected: id === chosen,
    className: names.has(from.name) && names.has(to.name) ? 'used' : '',
    ariaLabel: `'${to.name}' builds on '${from.name}'`,
    data: { path },
  }));
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
