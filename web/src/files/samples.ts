// SPDX-License-Identifier: MIT
// The sample nodes, as they are in examples/.
import fragmentShader from '../../../examples/morl/fragment_shader.morl?raw';
import postEffect from '../../../examples/morl/post_effect.morl?raw';
import specialOutput from '../../../examples/morl/special_output.morl?raw';
import vertexShader from '../../../examples/morl/vertex_shader.morl?raw';
import manifest from '../../../examples/shaders.json?raw';
import type { Project } from '../model/project';
import { openProject } from './folder';

export function sampleProject(): Project {
  return openProject({
    'morl/vertex_shader.morl': vertexShader,
    'morl/fragment_shader.morl': fragmentShader,
    'morl/post_effect.morl': postEffect,
    'morl/special_output.morl': specialOutput,
    'shaders.json': manifest,
  });
}
