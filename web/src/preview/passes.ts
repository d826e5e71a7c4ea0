// SPDX-License-Identifier: MIT
// The texts that the preview draws.
import type { Declare, Result } from 'morl';
import type { MeshName, State } from '../model/store';

/** Both passes of a shader for GLSL ES. */
export interface Passes {
  readonly vertex: Result;
  readonly fragment: Result;
}

/** The passes of the chosen shader; null: one of them has no nodes, or is refused. */
export function passesOf(state: State): Passes | null {
  const texts = state.answer?.texts.glsles;
  return texts?.vertex && texts.fragment
    ? { vertex: texts.vertex, fragment: texts.fragment }
    : null;
}

/** Whether the compiler has found faults, so that the text is made from what remains. */
export function hasFaults(passes: Passes): boolean {
  return passes.vertex.faults.length > 0 || passes.fragment.faults.length > 0;
}

/** The uniforms of both passes; the first declaration of a name counts. */
export function uniformsOf(passes: Passes): Declare[] {
  const byName = new Map<string, Declare>();
  for (const declare of [...passes.vertex.uniforms, ...passes.fragment.uniforms]) {
    if (!byName.has(declare.name)) {
      byName.set(declare.name, declare);
    }
  }
  return [...byName.values()];
}

/** The mesh to begin with: a quad for shaders that have no matrices, which are post effects. */
export function startMesh(passes: Passes): MeshName {
  const hasMatrix = passes.vertex.uniforms.some((declare) => declare.type.startsWith('float4x'));
  return hasMatrix ? 'sphere' : 'quad';
}

/** The mesh that is shown. */
export function meshOf(state: State): MeshName {
  const passes = passesOf(state);
  return state.mesh ?? (passes ? startMesh(passes) : 'sphere');
}
