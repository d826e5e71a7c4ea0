// SPDX-License-Identifier: MIT
// The built-in textures, painted here so that the page loads nothing.
import {
  CubeTexture,
  DataTexture,
  LinearFilter,
  NoColorSpace,
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

function glow(x: number, up: number): Colour {
  const light = Math.exp(-25 * ((x - 0.7) ** 2 + (1 - up - 0.25) ** 2));
  return [light, 0.8 * light, 0.5 * light, 1];
}

function gradient(x: number, y: number): Colour {
  return [x, y, 1 - x, 1];
}

const paints: Readonly<Record<TextureName, Paint>> = {
  checks,
  bumps,
  landscape,
  glow,
  shadow,
  gradient,
};

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

/** Wrapped and filtered as in the pictures of the tests. */
function prepare(texture: Texture): Texture {
  texture.wrapS = RepeatWrapping;
  texture.wrapT = RepeatWrapping;
  texture.magFilter = LinearFilter;
  texture.minFilter = LinearFilter;
  texture.generateMipmaps = false;
  texture.needsUpdate = true;
  return texture;
}

function prepareCube(cube: CubeTexture): CubeTexture {
  cube.colorSpace = NoColorSpace;
  cube.magFilter = LinearFilter;
  cube.minFilter = LinearFilter;
  cube.generateMipmaps = false;
  cube.needsUpdate = true;
  return cube;
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

/** The direction that a place on each side of a cube map shows, all from -1 to 1, in the order of OpenGL: right, left, up, down, front, back. */
const directions: readonly ((u: number, v: number) => readonly [number, number, number])[] = [
  (u, v) => [1, -v, -u],
  (u, v) => [-1, -v, u],
  (u, v) => [u, 1, v],
  (u, v) => [u, -1, -v],
  (u, v) => [u, -v, 1],
  (u, v) => [-u, -v, -1],
];

export function builtInCube(): CubeTexture {
  const images = directions.map((direction) => {
    const data = pixels((x, y) => surroundings(...direction(2 * x - 1, 2 * y - 1)));
    const image = new DataTexture(data, size, size, RGBAFormat);
    image.needsUpdate = true;
    return image;
  });
  return prepareCube(new CubeTexture(images));
}

/** A picture that a person has chosen, with the numbers that its file has. @throws when the browser cannot read it as one */
export async function textureFromFile(file: Blob): Promise<Texture> {
  const image = await createImageBitmap(file, {
    imageOrientation: 'flipY',
    premultiplyAlpha: 'none',
    colorSpaceConversion: 'none',
  });
  return prepare(new Texture(image));
}

interface CubeForm {
  readonly columns: number;
  readonly rows: number;
  /** The column and row of each side. */
  readonly places: readonly (readonly [number, number])[];
}

/** How the sides of a cube map stand in a picture: in a row, in a column, or as a cross. */
// prettier-ignore
const cubeForms: readonly CubeForm[] = [
  { columns: 6, rows: 1, places: [[0, 0], [1, 0], [2, 0], [3, 0], [4, 0], [5, 0]] },
  { columns: 1, rows: 6, places: [[0, 0], [0, 1], [0, 2], [0, 3], [0, 4], [0, 5]] },
  { columns: 4, rows: 3, places: [[2, 1], [0, 1], [1, 0], [1, 2], [1, 1], [3, 1]] },
  { columns: 3, rows: 4, places: [[2, 1], [0, 1], [1, 0], [1, 2], [1, 1], [1, 3]] },
];
/** The largest side of a cube map that is made from a panorama, in pixels. */
const largestSide = 512;

/** A side of a cube map from a picture that shows all around, twice as wide as high. */
function sideOfPanorama(panorama: ImageData, side: number, length: number): ImageData {
  const { width, height, data } = panorama;
  const made = new ImageData(length, length);
  for (let row = 0; row < length; ++row) {
    for (let column = 0; column < length; ++column) {
      const place = (one: number): number => (2 * (one + 0.5)) / length - 1;
      const [x, y, z] = directions[side]?.(place(column), place(row)) ?? [0, 0, 1];
      const around = 0.5 + Math.atan2(x, -z) / (2 * Math.PI);
      const down = Math.acos(y / Math.hypot(x, y, z)) / Math.PI;
      const from = Math.min(Math.floor(down * height), height - 1) * width;
      const at = 4 * (from + Math.min(Math.floor(around * width), width - 1));
      made.data.set(data.subarray(at, at + 4), 4 * (row * length + column));
    }
  }
  return made;
}

/**
 * A cube map from one picture: its sides in a row, a column or a cross, or a panorama.
 * @throws when the browser cannot read it, or it has another form
 */
export async function cubeFromFile(file: Blob): Promise<CubeTexture> {
  const image = await createImageBitmap(file, {
    premultiplyAlpha: 'none',
    colorSpaceConversion: 'none',
  });
  const { width, height } = image;
  const context = new OffscreenCanvas(width, height).getContext('2d', { willReadFrequently: true });
  if (!context) {
    throw new Error('this browser cannot read pictures here');
  }
  context.drawImage(image, 0, 0);
  const form = cubeForms.find(({ columns, rows }) => width * rows === height * columns);
  if (!form && width !== 2 * height) {
    throw new Error(
      `a cube map is a picture with six sides in a row, a column or a cross, or a panorama that is twice as wide as high; this one is ${width} by ${height}`,
    );
  }
  const length = form ? width / form.columns : Math.min(largestSide, height / 2);
  const whole = form ? null : context.getImageData(0, 0, width, height);
  const parts = directions.map((_, side) => {
    const [column, row] = form?.places[side] ?? [0, 0];
    return whole
      ? sideOfPanorama(whole, side, length)
      : context.getImageData(column * length, row * length, length, length);
  });
  const images = parts.map(({ data }) => {
    const made = new DataTexture(new Uint8Array(data), length, length, RGBAFormat);
    made.needsUpdate = true;
    return made;
  });
  return prepareCube(new CubeTexture(images));
}
