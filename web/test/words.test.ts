// SPDX-License-Identifier: MIT
import { endsInComment } from '../src/editor/completion';
import { StringStream } from '@codemirror/language';
import { Text } from '@codemirror/state';
import { expect, test } from 'vitest';
import { differenceOf, lineBreakOf, rangeOf } from '../src/editor/ranges';
import { morlParser } from '../src/editor/text_mate';
import { findDeclaration, languageWords, visibleDeclarations } from '../src/editor/words';
import { sampleProject } from '../src/files/samples';
import { fileOffsets, toCanvas, toScreen } from '../src/graph/layout';
import { findNode } from '../src/model/project';
import {
  automaticFor,
  isColour,
  rangeFor,
  startTexture,
  startValue,
} from '../src/preview/conventions';
import { isSwitch } from '../src/preview/panel';

/** The words of a line with their tags. */
function tagged(lines: readonly string[]): string[] {
  const state = morlParser.startState?.(4);
  return lines.flatMap((line) => {
    const stream = new StringStream(line, 4, 4);
    const found: string[] = [];
    while (!stream.eol()) {
      stream.start = stream.pos;
      const tag = state && morlParser.token(stream, state);
      if (tag) {
        found.push(`${stream.current()} ${tag}`);
      }
    }
    return found;
  });
}

test('the grammar of the editors highlights the page', () => {
  const found = tagged([
    'uniform float4 a : SAUTO; // end',
    '#for LIGHTS : 0',
    'x.y = max(1.5, /* one',
    'two */ b);',
  ]);
  expect(found).toContain('uniform modifier');
  expect(found).toContain('float4 typeName');
  expect(found).toContain('SAUTO annotation');
  expect(found).toContain('// end comment');
  expect(found).toContain('#for LIGHTS : 0 processingInstruction');
  expect(found).toContain('y propertyName');
  expect(found).toContain('max variableName.function');
  expect(found).toContain('1.5 number');
  expect(found).toContain('two */ comment');
  expect(found).toContain('b variableName');
});

test('messages underline words, and texts differ in their middle', () => {
  const doc = Text.of(['void main() {', '    lit = vec3 ;', '']);
  const message = {
    severity: 'error',
    node: 'n',
    text: '',
    hint: '',
    targets: [],
    check: '',
  } as const;
  const marked = (line: number, column: number): string => {
    const { from, to } = rangeOf(doc, { ...message, line, column });
    return doc.sliceString(from, to);
  };
  expect([marked(2, 11), marked(2, 15), marked(2, 16), marked(2, 0)]).toEqual([
    'vec3',
    '3',
    ';',
    'lit = vec3 ;',
  ]);
  expect([marked(3, 1), marked(9, 9), marked(1, 99)]).toEqual(['', '', '{']);
  for (const [before, after] of [
    ['abcd', 'abXcd'],
    ['aaa', 'aa'],
    ['', 'x'],
    ['same', 'same'],
    ['abc', 'xyz'],
  ] as const) {
    const { from, to, insert } = differenceOf(before, after);
    expect(before.slice(0, from) + insert + before.slice(to)).toBe(after);
  }
  expect(differenceOf('abcd', 'abXcd')).toEqual({ from: 2, to: 2, insert: 'X' });
  expect(['a\r\nb', 'a\nb', 'a\r\nb\n', 'a'].map(lineBreakOf)).toEqual(['\r\n', '\n', '\n', '\n']);
});

test('nothing is completed in comments', () => {
  for (const text of ['// a', 'x; // sat', '/* one\n two', 'a /* b */ c; /*/']) {
    expect(endsInComment(text), text).toBe(true);
  }
  for (const text of ['a', '// a\nb', '/* a */', 'a / b', '/* a */ sat']) {
    expect(endsInComment(text), text).toBe(false);
  }
});

test('what is shown at a point of the canvas is kept there', () => {
  const project = sampleProject();
  const offsets = fileOffsets(project.files, project.nodes);
  for (const node of project.nodes) {
    const back = toCanvas(offsets, node.file, toScreen(offsets, node.file, node));
    expect([Math.round(back.x), Math.round(back.y)]).toEqual([node.x, node.y]);
  }
  const screen = (name: string): number => {
    const node = findNode(project, name);
    return node ? toScreen(offsets, node.file, node).y : 0;
  };
  expect(screen('surface_texture')).toBeGreaterThan(screen('screen_quad') + 40);
});

test('words and declared names are known', () => {
  const lerp = languageWords.find((word) => word.label === 'lerp');
  expect(lerp).toMatchObject({ kind: 'function', detail: '(a, b, c)' });
  expect(lerp?.info).toContain('glsl: mix(a,b,c)');
  expect(languageWords.find((word) => word.label === 'float4x4')?.info).toContain('glsles: mat4');
  const project = sampleProject();
  const transform = findNode(project, 'transform');
  const texcoord = findNode(project, 'texcoord');
  if (!transform || !texcoord) {
    throw new Error('the samples have changed');
  }
  const names = visibleDeclarations(project, texcoord).map((one) => one.name);
  expect(names).toEqual(
    expect.arrayContaining(['uv', 'oUV', 'uvTransform', 'worldPosition', 'position']),
  );
  expect(findDeclaration(project, texcoord, 'localPosition')).toMatchObject({
    node: 'vertex_static',
    line: 5,
  });
  expect(findDeclaration(project, transform, 'albedo')?.node).toBe('surface_texture');
});

test('uniforms are filled by their names', () => {
  for (const [name, type, automatic] of [
    ['worldViewProj', 'float4x4', 'worldViewProjection'],
    ['g_View', 'float4x4', 'view'],
    ['projectionMatrix', 'float4x4', 'projection'],
    ['eyePosition', 'float3', 'eye'],
    ['time', 'float', 'time'],
    ['bones', 'float4x4', 'bones'],
    // Names or types that do not fit.
    ['viewVector', 'float3', undefined],
    ['timeScale', 'float', undefined],
    ['world', 'float3', undefined],
    ['view', 'sampler2D', undefined],
  ] as const) {
    expect(automaticFor({ name, type }), name).toBe(automatic);
  }
  expect(isColour({ name: 'fogColor', type: 'float3' })).toBe(true);
  expect(isColour({ name: 'colorScale', type: 'float' })).toBe(false);
  expect(startValue({ name: 'light_1', type: 'float4' })).toEqual([-1.6, 0.4, 1.2, 0.3]);
  expect(startValue({ name: 'baseColour', type: 'float4' })).toEqual([0.8, 0.8, 0.8, 1]);
  expect(startValue({ name: 'count', type: 'int2' })).toEqual([1, 1]);
  expect(rangeFor({ type: 'float' }, 24)).toMatchObject({ min: 0, max: 96 });
  expect(startTexture('normalMap')).toBe('bumps');
  const project = sampleProject();
  expect(['SPECULAR', 'LIGHTS', 'FOG', 'SUNS'].map((name) => isSwitch(project, name))).toEqual([
    true,
    false,
    false,
    false,
  ]);
});
