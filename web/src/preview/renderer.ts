// SPDX-License-Identifier: MIT
// Draws a shader on a mesh, with the GLSL ES texts as they stand.
import {
  CustomBlending,
  DoubleSide,
  FrontSide,
  type IUniform,
  Matrix3,
  Matrix4,
  Mesh,
  NoColorSpace,
  OneFactor,
  PerspectiveCamera,
  RawShaderMaterial,
  Scene,
  type Texture,
  Vector2,
  Vector3,
  Vector4,
  WebGLRenderer,
  ZeroFactor,
} from 'three';
import { OrbitControls } from 'three/addons/controls/OrbitControls.js';
import type { Declare, Result } from 'morl';
import type { MeshName } from '../model/store';
import {
  type Automatic,
  automaticFor,
  sizeOf,
  startTexture,
  startValue,
  type TextureName,
} from './conventions';
import { valueIn } from '../model/project';
import { boneCount, makeMesh } from './meshes';
import { builtInCube, builtInTexture } from './textures';

/** Both passes of a shader for GLSL ES. */
export interface Passes {
  readonly vertex: Result;
  readonly fragment: Result;
}

/** What the driver says of texts that it refuses. */
export interface DriverLogs {
  readonly vertex: string;
  readonly fragment: string;
  readonly link: string;
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

/** A shader that the driver has taken, and what it was made from. */
interface Accepted {
  readonly material: RawShaderMaterial;
  readonly uniforms: readonly Declare[];
  readonly inputs: readonly Declare[];
}

/**
 * three.js puts its own lines before a text. GLSL ES wants "#version" first, and the lines of the driver's messages
 * shall be those of the text, so these lines are taken away again.
 */
function keepTextsAsTheyStand(gl: WebGLRenderingContext | WebGL2RenderingContext): void {
  const shaderSource = gl.shaderSource.bind(gl);
  gl.shaderSource = (shader, source) => {
    const start = source.indexOf('#version 100');
    shaderSource(shader, start > 0 ? source.slice(start) : source);
  };
}

/** Matrices for row vectors, which the language multiplies from the left. */
function forRows(matrix: Matrix4): Matrix4 {
  return matrix.clone().transpose();
}

function boneMatrices(count: number): Matrix4[] {
  return Array.from({ length: count }, (_, i) => {
    const bend = i % boneCount;
    const turn = new Matrix4().makeRotationY(0.15 * bend);
    return forRows(turn.setPosition(0.1 * bend, -0.08 * bend, 0));
  });
}

/** A value, or as many as an array has. */
function severalOf(declare: Declare, one: unknown): unknown {
  return declare.elements > 0 ? Array.from({ length: declare.elements }, () => one) : one;
}

function valueOf(declare: Declare, value: readonly number[]): unknown {
  const [x = 0, y = 0, z = 0, w = 0] = value;
  const one = [x, new Vector2(x, y), new Vector3(x, y, z), new Vector4(x, y, z, w)][
    sizeOf(declare.type) - 1
  ];
  return severalOf(declare, one);
}

export class PreviewRenderer {
  private readonly renderer: WebGLRenderer;
  private readonly scene = new Scene();
  private readonly camera = new PerspectiveCamera(40, 1, 0.1, 50);
  private readonly controls: OrbitControls;
  private readonly mesh = new Mesh();
  private readonly builtIn = new Map<TextureName, Texture>();
  private readonly own = new Map<string, Texture>();
  private readonly chosen = new Map<string, TextureName>();
  private readonly cube = builtInCube();
  private accepted: Accepted | null = null;
  private logs: DriverLogs | null = null;
  private background = '#000000';
  private shape = '';
  private isDrawing = false;
  private isAnimated = false;
  private values: Readonly<Record<string, readonly number[]>> = {};

  /** Where the camera begins. */
  private static readonly start = [1.3, 0.9, 3] as const;

  /** @param onContext is called when the browser takes the graphics away (true) and gives them back (false) */
  constructor(canvas: HTMLCanvasElement, onContext: (isLost: boolean) => void) {
    this.renderer = new WebGLRenderer({ canvas, antialias: true, preserveDrawingBuffer: true });
    keepTextsAsTheyStand(this.renderer.getContext());
    this.renderer.debug.onShaderError = (gl, program, vertex, fragment) => {
      const logOf = (shader: WebGLShader): string => gl.getShaderInfoLog(shader) ?? '';
      const link = gl.getProgramInfoLog(program) ?? '';
      const logs = { vertex: logOf(vertex), fragment: logOf(fragment) };
      const hasPlace = logs.vertex !== '' || logs.fragment !== '';
      this.logs = {
        ...logs,
        link: hasPlace ? '' : link || 'the driver does not link the two passes',
      };
    };
    this.camera.position.set(...PreviewRenderer.start);
    this.controls = new OrbitControls(this.camera, canvas);
    this.controls.enablePan = false;
    this.controls.minDistance = 1.5;
    this.controls.maxDistance = 12;
    this.controls.listenToKeyEvents(canvas);
    this.controls.addEventListener('change', () => {
      this.draw();
    });
    this.mesh.frustumCulled = false;
    this.scene.add(this.mesh);
    canvas.addEventListener('webglcontextlost', (event) => {
      event.preventDefault();
      onContext(true);
    });
    canvas.addEventListener('webglcontextrestored', () => {
      keepTextsAsTheyStand(this.renderer.getContext());
      this.renderer.setClearColor(this.background);
      onContext(false);
      this.draw();
    });
  }

  /** Tries a shader. Returns what the driver objects to, and keeps the last good shader then. */
  show(passes: Passes, meshName: MeshName): DriverLogs | null {
    const uniforms = uniformsOf(passes);
    const material = new RawShaderMaterial({
      vertexShader: passes.vertex.code,
      fragmentShader: passes.fragment.code,
      uniforms: Object.fromEntries(
        uniforms.map((declare) => [declare.name, this.makeUniform(declare)]),
      ),
      // The picture stays opaque, whatever alpha the shader writes.
      blending: CustomBlending,
      blendSrc: OneFactor,
      blendDst: ZeroFactor,
      blendSrcAlpha: ZeroFactor,
      blendDstAlpha: OneFactor,
    });
    const { accepted } = this;
    this.accepted = { material, uniforms, inputs: passes.vertex.inputs };
    this.logs = null;
    const goBack = (): void => {
      material.dispose();
      this.accepted = accepted;
      this.setMesh(meshName);
      this.drawNow();
    };
    try {
      this.setMesh(meshName);
      this.drawNow();
    } catch (error) {
      goBack();
      throw error;
    }
    const logs = this.takeLogs();
    if (logs) {
      goBack();
      return logs;
    }
    accepted?.material.dispose();
    this.isAnimated = uniforms.some((declare) => automaticFor(declare) === 'time');
    return null;
  }

  setMesh(name: MeshName): void {
    if (!this.accepted) {
      return;
    }
    const { inputs, material } = this.accepted;
    material.side = name === 'plane' ? DoubleSide : FrontSide;
    this.mesh.material = material;
    const shape = [name, ...inputs.map((input) => `${input.name} ${input.semantic}`)].join('\n');
    if (shape !== this.shape) {
      this.shape = shape;
      this.mesh.geometry.dispose();
      this.mesh.geometry = makeMesh(name, inputs);
    }
  }

  setValues(values: Readonly<Record<string, readonly number[]>>): void {
    this.values = values;
    for (const declare of this.accepted?.uniforms ?? []) {
      const uniform = this.accepted?.material.uniforms[declare.name];
      if (uniform && sizeOf(declare.type) > 0) {
        uniform.value = valueOf(declare, valueIn(values, declare.name) ?? startValue(declare));
      }
    }
    this.draw();
  }

  /** The texture of a sampler: a built-in one, or one of a person's own. */
  setTexture(sampler: string, texture: TextureName | Texture): void {
    this.own.get(sampler)?.dispose();
    if (typeof texture === 'string') {
      this.chosen.set(sampler, texture);
      this.own.delete(sampler);
    } else {
      this.own.set(sampler, texture);
    }
    const uniform = this.accepted?.material.uniforms[sampler];
    if (uniform) {
      uniform.value = this.textureOf(sampler);
    }
    this.draw();
  }

  /** Back to the built-in texture that a sampler begins with. */
  resetTexture(sampler: string): void {
    this.setTexture(sampler, startTexture(sampler));
    this.chosen.delete(sampler);
  }

  /** Where the camera is. */
  cameraPlace(): readonly number[] {
    return this.camera.position.toArray();
  }

  /** @param place null: where it begins */
  setCamera(place: readonly number[] | null): void {
    const [x, y, z] = place ?? PreviewRenderer.start;
    if (x !== undefined && y !== undefined && z !== undefined) {
      this.camera.position.set(x, y, z);
      this.controls.update();
    }
  }

  /** @param onTurned is called when a person has turned the camera */
  onTurn(onTurned: () => void): void {
    this.controls.addEventListener('end', onTurned);
    this.renderer.domElement.addEventListener('keyup', onTurned);
  }

  /** The name of a sampler's texture; null: one of a person's own. */
  textureName(sampler: string): TextureName | null {
    return this.own.has(sampler) ? null : (this.chosen.get(sampler) ?? startTexture(sampler));
  }

  /** @param width in CSS pixels, like `height` */
  resize(width: number, height: number): void {
    this.renderer.setPixelRatio(Math.min(window.devicePixelRatio, 2));
    this.renderer.setSize(width, height, false);
    this.camera.aspect = width / Math.max(height, 1);
    this.camera.updateProjectionMatrix();
    this.draw();
  }

  setBackground(colour: string): void {
    this.background = colour;
    this.renderer.setClearColor(colour);
    this.draw();
  }

  /** Draws with the next frame. */
  draw(): void {
    if (!this.isDrawing) {
      this.isDrawing = true;
      requestAnimationFrame(() => {
        this.isDrawing = false;
        this.drawNow();
        if (this.isAnimated) {
          this.draw();
        }
      });
    }
  }

  dispose(): void {
    this.isAnimated = false;
    this.controls.dispose();
    this.accepted?.material.dispose();
    this.renderer.dispose();
  }

  /** What the driver has said since the last call. */
  private takeLogs(): DriverLogs | null {
    const { logs } = this;
    this.logs = null;
    return logs;
  }

  private drawNow(): void {
    if (!this.accepted) {
      return;
    }
    this.camera.updateMatrixWorld();
    for (const declare of this.accepted.uniforms) {
      const automatic = automaticFor(declare);
      const uniform = this.accepted.material.uniforms[declare.name];
      if (automatic && uniform) {
        uniform.value = this.automaticValue(automatic, declare);
      }
    }
    this.renderer.render(this.scene, this.camera);
  }

  private textureOf(sampler: string): Texture {
    const own = this.own.get(sampler);
    if (own) {
      return own;
    }
    const name = this.chosen.get(sampler) ?? startTexture(sampler);
    const texture = this.builtIn.get(name) ?? builtInTexture(name);
    texture.colorSpace = NoColorSpace;
    this.builtIn.set(name, texture);
    return texture;
  }

  private makeUniform(declare: Declare): IUniform {
    if (declare.type === 'samplerCUBE') {
      return { value: this.cube };
    }
    if (declare.type.startsWith('sampler')) {
      return { value: this.textureOf(declare.name) };
    }
    if (sizeOf(declare.type) > 0) {
      return { value: valueOf(declare, valueIn(this.values, declare.name) ?? startValue(declare)) };
    }
    if (declare.type === 'float3x3') {
      return { value: severalOf(declare, new Matrix3()) };
    }
    const isBones = automaticFor(declare) === 'bones';
    return {
      value: isBones
        ? boneMatrices(Math.max(declare.elements, 1))
        : severalOf(declare, new Matrix4()),
    };
  }

  private automaticValue(automatic: Automatic, declare: Declare): unknown {
    const { projectionMatrix: projection, matrixWorldInverse: view } = this.camera;
    const size = this.renderer.getDrawingBufferSize(new Vector2());
    switch (automatic) {
      case 'world':
        return new Matrix4();
      case 'view':
      case 'worldView':
        return forRows(view);
      case 'projection':
        return forRows(projection);
      case 'viewProjection':
      case 'worldViewProjection':
        return forRows(new Matrix4().multiplyMatrices(projection, view));
      case 'shadow':
        return forRows(
          new Matrix4().set(0.9, 0, 0, 0.1, 0, 0.9, 0, 0.2, 0, 0, -0.3, 0.5, 0, 0, 0, 1),
        );
      case 'bones':
        return boneMatrices(Math.max(declare.elements, 1));
      case 'eye':
        return this.camera.position.clone();
      case 'time':
        return performance.now() / 1000;
      case 'resolution':
        return size;
    }
  }
}
