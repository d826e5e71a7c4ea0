// SPDX-License-Identifier: MIT
// The built-in textures, painted here so that the page loads nothing.
import {
  CubeTexture,
  DataTexture,
  LinearFilter,
  LinearMipmapLinearFilter,
  RepeatWrapping,
  RGBAFormat,
  Texture,
} from 'three';
import type { TextureName } from './conventions';

type Colour = readonly [number, number, number, number];
/** The colour at a place, both from 0 to 1; y goes up. */
type Paint = (x: number, y: number) => Colour;

const size = 128;

function checks(x: number, y: number): Colour {
  const isDark = (Math.floor(x * 8) + Math.floor(y * 8)) % 2 === 1;
  const hole = (((x * 8) % 1) - 0.5) ** 2 + (((y * 8) % 1) - 0.5) ** 2 < 0.05;
  const alpha = hole ? 0 : 1;
  return isDark ? [0.75, 0.2 + 0.3 * y, 0.15, alpha] : [0.9, 0.85, 0.7 - 0.3 * x, alpha];
}

function bumps(x: number, y: number): Colour {
  const dx = 0.45 * Math.sin(x * 16 * Math.PI);
  const dy = 0.45 * Math.sin(y * 12 * Math.PI);
  return [0.5 + 0.5 * dx, 0.5 + 0.5 * dy, 0.5 + 0.5 * Math.sqrt(1 - dx * dx - dy * dy), 1];
}

function landscape(x: number, up: number): Colour {
  const y = 1 - up;
  const hill = 0.55 + 0.12 * Math.sin(x * 9) + 0.05 * Math.sin(x * 23);
  if (y > hill) return [0.15 + 0.2 * x, 0.45 - 0.2 * y, 0.12, 1];
  const isSun = (x - 0.7) ** 2 + (y - 0.25) ** 2 < 0.008;
  return isSun ? [1, 0.95, 0.8, 1] : [0.35 + 0.3 * y, 0.5 + 0.3 * y, 0.85, 1];
}

function shadow(x: number, y: number): Colour {
  const isNear = Math.abs(x - 0.62) < 0.13 || Math.abs(y - 0.25) < 0.06;
  const depth = isNear ? 0.1 : 1;
  return [depth, depth, depth, 1];
}

function gradient(x: number, y: number): Colour {
  return [x, y, 1 - x, 1];
}

const paints: Readonly<Record<TextureName, Paint>> = { checks, bumps, landscape, shadow, gradient };

function pixels(paint: Paint): Uint8Array<ArrayBuffer> {
  const data = new Uint8Array(size * size * 4);
  for (let row = 0; row < size; ++row) {
    for (let column = 0; column < size; ++column) {
      const colour = paint((column + 0.5) / size, (row + 0.5) / size);
      data.set(
        colour.map((value) => Math.round(Math.min(Math.max(value, 0), 1) * 255)),
        (row * size + column) * 4,
      );
    }
  }
  return data;
}

function prepare<T extends Texture>(texture: T): T {
  texture.wrapS = RepeatWrapping;
  texture.wrapT = RepeatWrapping;
  texture.magFilter = LinearFilter;
  texture.minFilter = LinearMipmapLinearFilter;
  texture.generateMipmaps = true;
  texture.needsUpdate = true;
  return texture;
}

export function builtInTexture(name: TextureName): Texture {
  return prepare(new DataTexture(pixels(paints[name]), size, size, RGBAFormat));
}

/** A sky above, ground below: the colour in a direction. */
function surroundings(x: number, y: number, z: number): Colour {
  const up = y / Math.hypot(x, y, z);
  const glow = Math.max(0, (0.5 * x + 0.7 * y + 0.6 * z) / Math.hypot(x, y, z) / 1.05) ** 40;
  return up > 0
    ? [0.55 - 0.3 * up + glow, 0.7 - 0.25 * up + glow, 0.95 + glow, 1]
    : [0.35 + 0.2 * up, 0.3 + 0.15 * up, 0.25 + 0.1 * up, 1];
}

/** The sides of a cube map, in the order of OpenGL: right, left, up, down, front, back. */
const sides: readonly ((u: number, v: number) => Colour)[] = [
  (u, v) => surroundings(1, -v, -u),
  (u, v) => surroundings(-1, -v, u),
  (u, v) => surroundings(u, 1, v),
  (u, v) => surroundings(u, -1, -v),
  (u, v) => surroundings(u, -v, 1),
  (u, v) => surroundings(-u, -v, -1),
];

export function builtInCube(): CubeTexture {
  const images = sides.map((side) => {
    const data = pixels((x, y) => side(2 * x - 1, 2 * y - 1));
    return new DataTexture(data, size, size, RGBAFormat);
  });
  images.forEach((image) => (image.needsUpdate = true));
  const cube = new CubeTexture(images);
  cube.magFilter = LinearFilter;
  cube.minFilter = LinearMipmapLinearFilter;
  cube.generateMipmaps = true;
  cube.needsUpdate = true;
  return cube;
}

/** A picture that a person has chosen, with the numbers that its file has. @throws when the browser cannot read it as one */
export async function textureFromFile(file: Blob): Promise<Texture> {
  const image = await createImageBitmap(file, {
    imageOrientation: 'flipY',
    premultiplyAlpha: 'none',
    colorSpaceConversion: 'none',
  });
  return prepare(new Texture(image as unknown as HTMLImageElement));
}
