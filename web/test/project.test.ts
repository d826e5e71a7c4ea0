// SPDX-License-Identifier: MIT
import { expect, test } from 'vitest';
import { sampleProject } from '../src/files/samples';
import { record, redo, startHistory, undo } from '../src/model/history';
import {
  addNode,
  addReference,
  duplicateNode,
  EditError,
  findNode,
  moveNodes,
  type Project,
  removeNodes,
  renameNode,
  setContent,
  toggleInPass,
  upstream,
} from '../src/model/project';
import { edited, initialState, projectOf, redone, undone } from '../src/model/store';
import { idOf } from './support';

test('references are edited, and cycles are refused with a word', () => {
  const project = sampleProject();
  const vertex = idOf(project, 'vertex_static');
  expect(() => addReference(project, vertex, 'texcoord')).toThrow(EditError);
  expect(() => addReference(project, vertex, 'texcoord')).toThrow(
    "'texcoord' builds on 'vertex_static' already",
  );
  expect(() => addReference(project, vertex, 'vertex_static')).toThrow(EditError);
  const connected = addReference(project, idOf(project, 'screen_quad'), 'vertex_static');
  expect(findNode(connected, 'screen_quad')?.references).toEqual(['vertex_static']);
  expect(upstream(project, 'texcoord').map((node) => node.name)).toEqual([
    'transform',
    'vertex_static',
    'vertex_skinned',
  ]);
});

test('a node is renamed, and removed, wherever it is named', () => {
  const project = sampleProject();
  const renamed = renameNode(project, idOf(project, 'transform'), 'to_screen');
  expect(findNode(renamed, 'texcoord')?.references).toEqual(['to_screen']);
  expect(renamed.shaders[0]?.vertex).toEqual(['vertex_static', 'to_screen', 'texcoord']);
  expect(() => renameNode(project, idOf(project, 'transform'), 'fog')).toThrow(EditError);
  const removed = removeNodes(project, [idOf(project, 'transform')]);
  expect(findNode(removed, 'texcoord')?.references).toEqual([]);
  expect(removed.shaders[0]?.vertex).toEqual(['vertex_static', 'texcoord']);
  const { project: copied, id } = duplicateNode(project, idOf(project, 'fog'));
  expect(copied.nodes.at(-1)).toMatchObject({ id, name: 'fog_2', index: null });
  // The other one of that name stays, so references to it stay too.
  const twice = {
    ...copied,
    nodes: copied.nodes.map((n) => (n.id === id ? { ...n, name: 'fog' } : n)),
  };
  expect(findNode(removeNodes(twice, [id]), 'surface_out')?.references).toContain('fog');
});

test('typing is one step of undo, other edits are steps of their own', () => {
  const project = sampleProject();
  const id = idOf(project, 'fog');
  const type = (text: string) => (current: Project) => setContent(current, id, text);
  let history = startHistory(project);
  history = record(history, type('a')(history.present), 'content', 1000);
  history = record(history, type('ab')(history.present), 'content', 1400);
  history = record(history, type('abc')(history.present), 'content', 5000);
  expect(history.past).toHaveLength(2);
  expect(findNode(undo(history).present, 'fog')?.content).toBe('ab');
  expect(undo(undo(history)).present).toBe(project);
  expect(redo(undo(history)).present).toEqual(history.present);

  let state = initialState(project, 'light');
  state = edited(state, (current) => moveNodes(current, [{ id, x: 1.4, y: 2.6 }]));
  state = edited(state, (current) => toggleInPass(current, state.shader, 'vertex', 'fog'));
  expect(projectOf(state).shaders[0]?.vertex).toContain('fog');
  expect(findNode(projectOf(undone(state)), 'fog')).toMatchObject({ x: 1, y: 3 });
  expect(projectOf(undone(undone(state)))).toBe(project);
  expect(projectOf(redone(redone(undone(undone(state)))))).toBe(projectOf(state));

  const refused = edited(state, (current) => addReference(current, id, 'surface_out'));
  expect(refused.history).toBe(state.history);
  expect(refused.notice).toMatchObject({ kind: 'error' });
  const added = addNode(projectOf(state), { x: 0, y: 0, file: 'morl/post_effect.morl' });
  const chosen = { ...edited(state, () => added.project), selected: added.id };
  expect(undone(chosen).selected).toBeNull();
});
