// SPDX-License-Identifier: MIT
import { Compiler } from 'morl';
import { expect, test } from 'vitest';
import { changesSince } from '../src/compiler/client';
import { compileShader } from '../src/compiler/compile_shader';
import { type Answer, stages, targets } from '../src/compiler/protocol';
import { sampleProject } from '../src/files/samples';
import { findNode, type Project, setContent } from '../src/model/project';
import { initialState } from '../src/model/store';
import { linesFrom } from '../src/output/lines';
import { summary } from '../src/output/summary';
import { mapDriverLog } from '../src/preview/driver_messages';

async function compile(project: Project, name = 'lit_textured'): Promise<Answer> {
  const shader = project.shaders.find((one) => one.name === name);
  if (!shader) {
    throw new Error(`no shader '${name}'`);
  }
  const optionalMacros = project.shaders.flatMap((one) => Object.keys(one.macros));
  const changes = changesSince(new Map(), project);
  return compileShader(await Compiler.create(), { id: 1, ...changes, ...shader, optionalMacros });
}

test('every sample shader compiles for all targets without messages', async () => {
  const project = sampleProject();
  for (const { name } of project.shaders) {
    const { messages, texts } = await compile(project, name);
    expect(messages, name).toEqual([]);
    for (const target of targets) {
      for (const stage of stages) {
        expect(texts[target][stage]?.code, `${name} ${target} ${stage}`).toContain('main');
      }
    }
  }
});

test('a fault of all targets is one message, at its place', async () => {
  const project = sampleProject();
  const fog = findNode(project, 'fog');
  const content = fog?.content.replace('void main() {', 'void main() {\n    lit = = lit;') ?? '';
  const { messages } = await compile(setContent(project, fog?.id ?? '', content));
  const line = content.split('\n').findIndex((text) => text.includes('= =')) + 1;
  expect(messages[0]).toMatchObject({ severity: 'error', node: 'fog', line, targets });
  expect(messages.filter((message) => message.line === line)).toHaveLength(1);
});

test('only what has changed is sent', () => {
  const project = sampleProject();
  const all = changesSince(new Map(), project);
  expect(all.changed).toHaveLength(project.nodes.length);
  const sent = new Map(
    [...all.changed, { name: 'gone', content: '', references: [] }].map((n) => [n.name, n]),
  );
  const edited = setContent(project, findNode(project, 'fog')?.id ?? '', 'void main() { }');
  const { changed, removed } = changesSince(sent, edited);
  expect(changed.map((node) => node.name)).toEqual(['fog']);
  expect(removed).toEqual(['gone']);
});

test("a driver's messages come back to the author's line", async () => {
  const project = sampleProject();
  const answer = await compile(project);
  const result = answer.texts.glsles.fragment;
  const [written = 0] = result ? linesFrom(result, 'fog', 13) : [];
  expect(written).toBeGreaterThan(0);
  const contentOf = (name: string): string => findNode(project, name)?.content ?? '';
  const log = `ERROR: 0:${written}: 'fogColor' : wrong\nERROR: 0:1: 'version' : wrong\n\0`;
  const [first, second, ...rest] = mapDriverLog(log, result, contentOf);
  const column = (contentOf('fog').split('\n')[12] ?? '').indexOf('fogColor') + 1;
  expect(first).toMatchObject({
    node: 'fog',
    line: 13,
    column,
    severity: 'error',
    targets: ['glsles'],
  });
  expect(second).toMatchObject({ node: '', line: 0 });
  expect(second?.text).toContain('(line 1 of the text)');
  expect(rest).toEqual([]);
  const state = { ...initialState(project, 'light'), answer };
  expect(summary(state)).toMatch(/^\d+ bytes, 8 texts \(8 distinct\) in \d+ µs, 1 of 36 variants$/);
});
