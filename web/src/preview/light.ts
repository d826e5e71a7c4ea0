// SPDX-License-Identifier: MIT
// The light that can be dragged around the mesh.
import type { Declare } from 'morl';
import { type Camera, Vector3 } from 'three';
import { sizeOf } from './conventions';

/** The uniform that says where the light is; undefined: there is none. */
export function lightUniform(uniforms: readonly Declare[]): Declare | undefined {
  const isLight = ({ name, type, elements }: Declare): boolean =>
    elements === 0 &&
    sizeOf(type) >= 3 &&
    /light|sun/i.test(name) &&
    !/colou?r|range|ambient/i.test(name);
  return uniforms.find(isLight);
}

/** Where a light is seen, as parts of the picture from its top left; it is on a sphere around the mesh. */
export function placeOfLight(value: readonly number[], camera: Camera): { x: number; y: number } {
  const [x = 0, y = 0, z = 0] = value;
  const seen = new Vector3(x, y, z).normalize().multiplyScalar(1.15).project(camera);
  return { x: (seen.x + 1) / 2, y: (1 - seen.y) / 2 };
}

/**
 * The value of a light that was dragged to a place.
 * @param at from the middle of the picture, in halves of its height; y goes up
 */
export function draggedLight(
  value: readonly number[],
  at: { x: number; y: number },
  camera: Camera,
): number[] {
  const [x = 0, y = 0, z = 0, ...rest] = value;
  const length = Math.hypot(x, y, z) || 1;
  const aside = Math.hypot(at.x, at.y);
  const towards = aside < 1 ? Math.sqrt(1 - aside * aside) : 0;
  const direction = new Vector3(at.x, at.y, towards)
    .normalize()
    .transformDirection(camera.matrixWorld)
    .multiplyScalar(length);
  const rounded = direction.toArray().map((one) => Math.round(one * 1000) / 1000);
  return [...rounded, ...rest];
}
