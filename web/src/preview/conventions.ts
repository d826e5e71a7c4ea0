// SPDX-License-Identifier: MIT
// How the preview fills uniforms, by their names. docs/page.md lists the same.
import type { Declare } from 'morl';

/** What the preview computes for each picture. */
export type Automatic =
  | 'world'
  | 'view'
  | 'projection'
  | 'viewProjection'
  | 'worldView'
  | 'worldViewProjection'
  | 'shadow'
  | 'bones'
  | 'eye'
  | 'time'
  | 'resolution';

const automatics: readonly (readonly [RegExp, Automatic])[] = [
  [/^(g_?|u_?|m_?)?(world|model)(matrix)?$/i, 'world'],
  [/^(g_?|u_?|m_?)?view(matrix)?$/i, 'view'],
  [/^(g_?|u_?|m_?)?proj(ection)?(matrix)?$/i, 'projection'],
  [/^(g_?|u_?|m_?)?viewproj(ection)?(matrix)?$/i, 'viewProjection'],
  [/^(g_?|u_?|m_?)?(world|model)view(matrix)?$/i, 'worldView'],
  [/^(g_?|u_?|m_?)?(world|model)viewproj(ection)?(matrix)?$/i, 'worldViewProjection'],
  [/shadow.*matrix/i, 'shadow'],
  [/^(g_?|u_?|m_?)?bones?(matrices)?$/i, 'bones'],
  [/^(g_?|u_?|m_?)?(eye|camera)(pos(ition)?)?$/i, 'eye'],
  [/^(g_?|u_?|m_?)?time$/i, 'time'],
  [/^(g_?|u_?|m_?)?(resolution|screensize|viewportsize)$/i, 'resolution'],
];

/** The types that computed values have; others are matrices. */
const automaticTypes: Partial<Record<Automatic, string>> = {
  eye: 'float3',
  time: 'float',
  resolution: 'float2',
};

/** What the preview computes for a uniform of this name and type, if anything. */
export function automaticFor(declare: Pick<Declare, 'name' | 'type'>): Automatic | undefined {
  const automatic = automatics.find(([pattern]) => pattern.test(declare.name))?.[1];
  const type = automatic && (automaticTypes[automatic] ?? 'float4x4');
  return type === declare.type ? automatic : undefined;
}

/** Values to begin with, by name; those of the sample nodes are as in the pictures of the tests. */
const starts: readonly (readonly [RegExp, readonly number[]])[] = [
  [/^light_?0$/i, [0.5, 0.7, 0.6, 0]],
  [/^light_?1$/i, [-1.6, 0.4, 1.2, 0.3]],
  [/^light_?2$/i, [1.2, -1.3, 1.0, 0.4]],
  [/^light_?\d+$/i, [0, 1.8, 0.6, 0.4]],
  [/^lightcolou?r_?0$/i, [0.9, 0.85, 0.75]],
  [/^lightcolou?r_?1$/i, [0.3, 0.4, 0.9]],
  [/^lightcolou?r_?2$/i, [0.8, 0.3, 0.2]],
  [/^lightcolou?r_?\d+$/i, [0.3, 0.8, 0.3]],
  [/ambient/i, [0.12, 0.13, 0.16]],
  [/^surfacecolou?r$/i, [0.8, 0.5, 0.3, 1]],
  [/^objectcolou?r$/i, [0.1, 0.7, 0.4, 1]],
  [/specular/i, [0.5, 0.5, 0.5]],
  [/shininess|glossiness|gloss/i, [24]],
  [/uvtransform/i, [2, 2, 0, 0]],
  [/bumpiness/i, [1]],
  [/bias/i, [0.02]],
  [/reflectivity/i, [0.35]],
  [/fogcolou?r/i, [0.55, 0.6, 0.7]],
  [/fogrange/i, [2, 6, 0.12]],
  [/blurstep/i, [0.012, 0.006]],
  [/blurcenter/i, [0.2]],
  [/blurweight_?1$/i, [0.12]],
  [/blurweight_?2$/i, [0.09]],
  [/blurweight_?3$/i, [0.07]],
  [/blurweight_?4$/i, [0.05]],
  [/blurweight_?\d+$/i, [0.02]],
  [/bloomthreshold/i, [0.5]],
  [/bloomknee/i, [0.3]],
  [/bloomstrength/i, [0.6]],
  [/exposure/i, [0.8]],
  [/gradelift/i, [0.02, 0.01, 0.03]],
  [/gradegain/i, [1.05, 1, 0.9]],
  [/saturation/i, [1.2]],
  [/contrast/i, [1.1]],
  [/vignetteshape/i, [0.6, 1.1]],
  [/alphareference/i, [0.5]],
  [/direction|lightdir/i, [0.5, 0.7, 0.6]],
  [/position|pos$/i, [0, 0, 0]],
  [/scale|tiling/i, [1]],
];

/** How many numbers a type has; 0: it is no plain value, such as a sampler. */
export function sizeOf(type: string): number {
  const vector = /^(?:float|int)([234])?$/.exec(type);
  return vector ? Number(vector[1] ?? 1) : 0;
}

/** Whether a uniform looks like a colour by its name. */
export function isColour(declare: Pick<Declare, 'name' | 'type'>): boolean {
  return /colou?r|tint|albedo|diffuse/i.test(declare.name) && sizeOf(declare.type) >= 3;
}

/** The value that a uniform begins with. */
export function startValue(declare: Pick<Declare, 'name' | 'type'>): number[] {
  const size = sizeOf(declare.type);
  const known = starts.find(([pattern]) => pattern.test(declare.name))?.[1];
  const fill = known?.length === 1 ? known[0] : isColour(declare) ? 0.8 : 0.5;
  const plain = declare.type.startsWith('int') ? 1 : (fill ?? 0.5);
  const last = isColour(declare) && size === 4 ? 1 : plain;
  return Array.from({ length: size }, (_, i) =>
    known && known.length > 1 ? (known[i] ?? last) : i === 3 ? last : plain,
  );
}

/** The range of a slider. */
export interface Range {
  readonly min: number;
  readonly max: number;
  readonly step: number;
}

export function rangeFor(declare: Pick<Declare, 'type'>, start: number): Range {
  if (declare.type.startsWith('int')) {
    return { min: 0, max: 16, step: 1 };
  }
  const max = Math.abs(start) <= 0.1 ? 1 : Math.abs(start) <= 1 ? 2 : Math.abs(start) * 4;
  return { min: start < 0 ? -max : 0, max, step: max / 200 };
}

/** The built-in textures. */
export const textureNames = ['checks', 'bumps', 'landscape', 'glow', 'shadow', 'gradient'] as const;
export type TextureName = (typeof textureNames)[number];

/** The texture that a sampler begins with. */
export function startTexture(name: string): TextureName {
  if (/normal|bump/i.test(name)) return 'bumps';
  if (/shadow/i.test(name)) return 'shadow';
  if (/bloom|glow/i.test(name)) return 'glow';
  if (/scene|screen|frame/i.test(name)) return 'landscape';
  if (/ramp|gradient|lookup/i.test(name)) return 'gradient';
  return 'checks';
}
