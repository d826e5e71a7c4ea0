// SPDX-License-Identifier: MIT
import { readFileSync } from 'node:fs';
import { expect, test } from 'vitest';
import { afterSave, openProject, saveProject } from '../src/files/folder';
import { FileError, nodeFilePaths } from '../src/files/node_file';
import { fromLink, isLink, LinkError, toLink } from '../src/files/permalink';
import { sampleProject } from '../src/files/samples';
import {
  addNode,
  findNode,
  moveNodes,
  type Project,
  removeNodes,
  renameNode,
  setContent,
} from '../src/model/project';

const idOf = (project: Project, name: string): string => findNode(project, name)?.id ?? '';
const changedLines = (before: string, after: string): string[] =>
  after.split('\n').filter((line) => !before.split('\n').includes(line));

test('files that are not edited keep their bytes', () => {
  const texts = saveProject(sampleProject());
  for (const path of nodeFilePaths) {
    expect(texts[path]).toBe(readFileSync(`../examples/${path}`, 'utf8'));
  }
});

test('saving changes what was edited and nothing else', () => {
  const path = 'morl/vertex_shader.morl';
  const text =
    '// Ours.\r\n[\r\n\t{ "name" : "a", /* first */ "content":"1", "x": 1.50 },\r\n' +
    '\t{"content": "2", "name": "b", "own": [1,  2]}, // second\r\n\t{"name": "c", "content": "3"}\r\n]\r\n';
  const project = openProject({ [path]: text });
  expect(saveProject(project)[path]).toBe(text);

  const moved = moveNodes(setContent(project, idOf(project, 'b'), 'x\ny'), [
    { id: idOf(project, 'a'), x: 7, y: 0 },
  ]);
  expect(saveProject(moved)[path]).toBe(
    text.replace('"x": 1.50', '"x": 7').replace('"content": "2"', '"content": "x\\ny"'),
  );

  const removed = removeNodes(project, [idOf(project, 'a')]);
  expect(saveProject(removed)[path]).toContain(
    '{"content": "2", "name": "b", "own": [1,  2]}, // second',
  );
  const added = addNode(renameNode(removed, idOf(removed, 'c'), 'd'), { x: 1, y: 2, file: path });
  const saved = saveProject(added.project);
  const again = openProject(saved);
  expect(again.nodes.map((node) => node.name)).toEqual(['b', 'd', 'node']);
  expect(again.nodes.at(-1)).toMatchObject({ x: 1, y: 2 });
  // What was saved is what the next save starts from.
  const after = afterSave(added.project, saved);
  expect(saveProject(after)).toEqual(saved);
  expect(changedLines(text, saved[path] ?? '').some((line) => line.includes('"own"'))).toBe(false);
});

test('damaged files are refused, with the place', () => {
  const open = (text: string) => () => openProject({ 'morl/post_effect.morl': text });
  expect(open('[\n{"name": 1}]')).toThrow(
    'morl/post_effect.morl:2: a node needs "name" and "content"',
  );
  expect(open('{}')).toThrow('a node file is a list of nodes');
  expect(open('[\n\n{"name": "a" "content": ""}]')).toThrow(/post_effect.morl:3: not valid JSON/);
  expect(open('[{"name": "a", "content": "", "ref": [1]}]')).toThrow(
    '"ref" must be a list of names',
  );
  expect(() => openProject({ 'readme.md': '' })).toThrow(FileError);
  const manifest = (text: string) => () =>
    openProject({ 'morl/post_effect.morl': '[]', 'shaders.json': text });
  expect(manifest('{')).toThrow('shaders.json: not valid JSON');
  expect(manifest('{"shaders": [{"name": "a", "macros": {"M": "x"}}]}')).toThrow('the value of M');
  expect(open('[]')().shaders).toHaveLength(1);
});

test('a link holds the whole graph', () => {
  const project = sampleProject();
  const link = toLink(project);
  expect(link.length).toBeLessThanOrEqual(8 * 1024);
  expect(isLink(link)).toBe(true);
  const opened = fromLink(link);
  const plain = (one: Project) =>
    one.nodes.map((node) => [node.name, node.content, node.references, node.x, node.y, node.file]);
  expect(plain(opened)).toEqual(plain(project));
  expect(opened.shaders).toEqual(project.shaders);
  expect(toLink(opened)).toBe(link);
  for (const broken of [
    link.slice(0, -20),
    link.slice(0, 40),
    `${link.slice(0, 100)}!!${link.slice(102)}`,
    '#morl9.abc',
    '#morl1.',
  ]) {
    expect(() => fromLink(broken)).toThrow(LinkError);
  }
});
