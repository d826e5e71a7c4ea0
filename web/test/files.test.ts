// SPDX-License-Identifier: MIT
import { readFileSync } from 'node:fs';
import { expect, test } from 'vitest';
import { afterSave, editedTexts, openProject, saveProject } from '../src/files/folder';
import { FileError, nodeFilePaths } from '../src/files/node_file';
import { fileTexts, readSources } from '../src/files/node_source';
import { fromLink, isLink, LinkError, toLink } from '../src/files/permalink';
import { sampleProject } from '../src/files/samples';
import {
  addNode,
  addShader,
  duplicateNode,
  moveNodes,
  type Project,
  removeNodes,
  renameNode,
  setContent,
} from '../src/model/project';
import { idOf } from './support';

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
  const after = afterSave(added.project, added.project, saved);
  expect(saveProject(after)).toEqual(saved);
  expect(changedLines(text, saved[path] ?? '').some((line) => line.includes('"own"'))).toBe(false);
});

test('nodes are removed and added in lists of any layout', () => {
  const path = 'morl/post_effect.morl';
  const node = (name: string): string => `{"name": "${name}", "content": ""}`;
  for (const text of [
    `[${node('a')}, ${node('b')}]`,
    `[\r\n ${node('a')},\r\n ${node('b')} // last\r\n]\r\n`,
    `\uFEFF[\n\t${node('a')},\n\t${node('b')}]`,
  ]) {
    const project = openProject({ [path]: text });
    const without = removeNodes(project, [idOf(project, 'b')]);
    const saved = saveProject(without);
    expect(openProject(saved).nodes.map((one) => one.name)).toEqual(['a']);
    expect(saved[path]).toBe(text.replace(/,\s*\{"name": "b"[^}]*\}/, ''));
    const empty = removeNodes(project, [idOf(project, 'a'), idOf(project, 'b')]);
    const { project: one } = addNode(empty, { x: 0, y: 0, file: path });
    expect(openProject(saveProject(one)).nodes.map(({ name }) => name)).toEqual(['node']);
  }
  const { project } = addNode(openProject({ [path]: '[ // none yet\n]\n' }), {
    x: 0,
    y: 0,
    file: path,
  });
  expect(saveProject(project)[path]).toContain('[ // none yet\n  {');
});

test('a save counts for what was saved, and shaders are saved too', () => {
  const path = 'morl/post_effect.morl';
  const manifest =
    '{\n  "shaders": [\n    {"name": "s", "vertex": ["a"], "macros": {"M": [1, 2]}}\n  ]\n}\n';
  const text = '[{"name": "a", "content": ""}, {"name": "b", "content": ""}]';
  const project = openProject({ [path]: text, 'shaders.json': manifest });
  const saved = addNode(renameNode(project, idOf(project, 'a'), 'c'), { x: 0, y: 0, file: path });
  const texts = saveProject(saved.project);
  expect(texts['shaders.json']).toBe(manifest.replace('["a"]', '["c"]'));
  expect(Object.keys(editedTexts(saved.project, texts))).toEqual([path, 'shaders.json']);
  // While it was saved, a node went and another one came.
  const gone = removeNodes(saved.project, [idOf(saved.project, 'c')]);
  const late = addNode(gone, { x: 0, y: 0, file: path });
  const after = afterSave(late.project, saved.project, texts);
  const names = openProject(saveProject(after)).nodes.map((node) => node.name);
  expect(names).toEqual(['b', 'node', 'node_2']);
  // A step before the save writes its nodes into the files as they are now.
  const back = afterSave(project, saved.project, texts);
  expect(openProject(saveProject(back)).nodes.map((node) => node.name)).toEqual(['a', 'b']);
  const { project: more } = addShader(after, 'extra');
  expect(openProject(saveProject(more)).shaders.map((one) => one.name)).toEqual(['s', 'extra']);
});

test('node sources are edited in their own form', async () => {
  const path = 'morl/post_effect/glow.morlsource';
  const other = 'morl/post_effect/fog.morlsource';
  const file = 'morl/post_effect.morl';
  const texts = {
    [file]: '[{"name": "base", "content": ""}]',
    [path]: '//! at: 1 2\r\n//! "tint": [1, 2.50]\r\nvoid main() {}\r\n',
    [other]: '//! ref: base\n\n',
  };
  const save = async (project: Project) => {
    const written = await fileTexts(project, saveProject(project));
    return editedTexts(project, written);
  };
  const project = openProject(texts, await readSources(texts));
  expect(project.nodes.map((node) => node.name)).toEqual(['base', 'glow', 'fog']);
  expect(await save(project)).toEqual({});
  const glow = idOf(project, 'glow');
  const edited = setContent(project, glow, 'x\ny');
  const source = '//! at: 1 2\n//! "tint": [1,2.5]\nx\ny\n';
  expect(await save(edited)).toEqual({ [path]: source });
  expect(await save(renameNode(project, glow, 'shine'))).toEqual({
    [path]: '//! name: shine\n//! at: 1 2\n//! "tint": [1,2.5]\nvoid main() {}\n',
  });
  // Copies are nodes of the node file; a source has one node.
  expect(Object.keys(await save(duplicateNode(project, glow).project))).toEqual([file]);

  const removed = removeNodes(project, [glow]);
  expect(await save(removed)).toEqual({ [path]: null });
  const written = await fileTexts(removed, saveProject(removed));
  const after = afterSave(edited, removed, saveProject(removed), written);
  expect(await save(after)).toEqual({ [path]: source });
  expect(fromLink(toLink(project)).nodes.at(-1)).toMatchObject({ name: 'fog', file });

  const twice = { ...texts, [other]: '//! name: base\n' };
  const sources = await readSources(twice);
  expect(() => openProject(twice, sources)).toThrow(
    `the node 'base' stands in ${file} and in ${other}; take it out of one of them`,
  );
  await expect(readSources({ [path]: '//! at: 1' })).rejects.toThrow(`${path}:1:9: expected two`);
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
  expect(opened.shaders).toEqual(project.shaders.map((shader) => ({ ...shader, index: null })));
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
