// SPDX-License-Identifier: MIT
import {
  BufferAttribute,
  BufferGeometry,
  PlaneGeometry,
  SphereGeometry,
  TorusKnotGeometry,
} from 'three';
import type { Declare } from 'morl';
import type { MeshName } from '../model/store';

/** The number of bones that the bent meshes use. */
export const boneCount = 4;

function makeShape(name: MeshName): BufferGeometry {
  switch (name) {
    case 'sphere':
      return new SphereGeometry(1, 64, 32);
    case 'plane':
      return new PlaneGeometry(2, 2, 16, 16);
    case 'torus knot':
      return new TorusKnotGeometry(0.7, 0.24, 160, 24);
    case 'quad':
      return new PlaneGeometry(2, 2);
  }
}

/** Colours and bones by the height of a vertex. */
function addByHeight(geometry: BufferGeometry): void {
  const position = geometry.getAttribute('position');
  const colours: number[] = [];
  const indices: number[] = [];
  const weights: number[] = [];
  for (let i = 0; i < position.count; ++i) {
    const height = Math.min(Math.max((position.getY(i) + 1) / 2, 0), 1);
    colours.push(0.6 + 0.4 * height, 1, 1 - 0.5 * height, 1);
    const bone = Math.min(height * (boneCount - 1), boneCount - 1.001);
    const part = bone - Math.floor(bone);
    indices.push(Math.floor(bone), Math.floor(bone) + 1, 0, 0);
    weights.push(1 - part, part, 0, 0);
  }
  const add = (name: string, values: number[]): void => {
    geometry.setAttribute(name, new BufferAttribute(new Float32Array(values), 4));
  };
  add('colours', colours);
  add('boneIndices', indices);
  add('boneWeights', weights);
}

/** The attribute of a mesh for a semantic; POSITION when there is nothing better. */
function attributeFor(semantic: string): string {
  if (semantic.startsWith('NORMAL')) return 'normal';
  if (semantic.startsWith('TEXCOORD')) return 'uv';
  if (semantic.startsWith('TANGENT') || semantic.startsWith('BINORMAL')) return 'tangent';
  if (semantic.startsWith('COLOR')) return 'colours';
  if (semantic.startsWith('BLENDINDICES')) return 'boneIndices';
  if (semantic.startsWith('BLENDWEIGHT')) return 'boneWeights';
  return 'position';
}

/** The mesh for a shader: each of its inputs gets the attribute that its semantic asks for. */
export function makeMesh(name: MeshName, inputs: readonly Declare[]): BufferGeometry {
  const geometry = makeShape(name);
  geometry.computeTangents();
  addByHeight(geometry);
  const source = { ...geometry.attributes };
  for (const input of inputs) {
    const attribute = source[attributeFor(input.semantic)];
    if (attribute) {
      geometry.setAttribute(input.name, attribute);
    }
  }
  return geometry;
}
