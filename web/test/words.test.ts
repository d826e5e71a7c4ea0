// SPDX-License-Identifier: MIT
import { StringStream } from '@codemirror/language';
import { expect, test } from 'vitest';
import { morlParser } from '../src/editor/text_mate';
import { findDeclaration, languageWords, visibleDeclarations } from '../src/editor/words';
import { sampleProject } from '../src/files/samples';
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
