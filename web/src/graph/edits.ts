// SPDX-License-Identifier: MIT
// Edits that are made in the graph, as functions from a state of the page to the next one.
import {
  addNode,
  addReference,
  duplicateNode,
  moveNodes,
  nodeById,
  nodeFileOf,
  type Project,
  removeNodes,
  removeReference,
} from '../model/project';
import { edited, editedWith, projectOf, type State } from '../model/store';
import { arranged, type Offsets, type Point, toCanvas } from './layout';

function movedTo(
  project: Project,
  offsets: Offsets,
  places: Iterable<readonly [string, Point]>,
): Project {
  const moves = [...places].map(([id, point]) => {
    const file = nodeById(project, id)?.file ?? '';
    return { id, ...toCanvas(offsets, file, point) };
  });
  return moveNodes(project, moves);
}

/** @param run edits with the same text here, in quick succession, are undone together */
export function withPlaces(
  state: State,
  offsets: Offsets,
  places: Iterable<readonly [string, Point]>,
  run: string | null = null,
): State {
  return edited(state, (project) => movedTo(project, offsets, places), run);
}

/** Puts nodes into columns, each right of what it builds on. */
export function withArranged(state: State, offsets: Offsets, ids: readonly string[]): State {
  return edited(state, (project) => {
    const nodes = project.nodes.filter((node) => ids.includes(node.id));
    return movedTo(project, offsets, arranged(nodes));
  });
}

/** Where a new node belongs: to the file of the chosen one. */
function fileForNew(state: State): string {
  const { nodes, files } = projectOf(state);
  const chosen = nodes.find((node) => node.id === state.selected);
  return nodeFileOf(chosen?.file ?? files[0]?.path ?? '');
}

/** A new node, at a point of the screen or below the chosen one, in the editor. */
export function withNewNode(
  state: State,
  offsets: Offsets,
  at: Point | null,
  middle: Point,
): State {
  const file = fileForNew(state);
  const chosen = state.selected === null ? undefined : nodeById(projectOf(state), state.selected);
  const below = chosen ? { x: chosen.x + 40, y: chosen.y + 90 } : toCanvas(offsets, file, middle);
  const { x, y } = at ? toCanvas(offsets, file, at) : below;
  const added = addNode(projectOf(state), { x: Math.round(x), y: Math.round(y), file });
  return editedWith(state, () => added.project, { selected: added.id });
}

export function withDuplicates(state: State, ids: Iterable<string>): State {
  let project = projectOf(state);
  let selected = state.selected;
  for (const id of ids) {
    const copied = duplicateNode(project, id);
    project = copied.project;
    selected = copied.id;
  }
  return editedWith(state, () => project, { selected });
}

export function withoutNodes(state: State, ids: readonly string[]): State {
  return edited(state, (project) => removeNodes(project, ids));
}

/** @param from the id of the node that the other one builds on */
export function withReference(state: State, from: string, to: string): State {
  return edited(state, (project) => addReference(project, to, nodeById(project, from)?.name ?? ''));
}

/** @param edge the ids of both nodes, as the graph calls the line between them */
export function withoutReference(state: State, edge: string): State {
  const [from = '', to = ''] = edge.split('>');
  return edited(state, (project) =>
    removeReference(project, to, nodeById(project, from)?.name ?? ''),
  );
}
