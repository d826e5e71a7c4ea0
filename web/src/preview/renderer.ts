// SPDX-License-Identifier: MIT
// Draws a shader on a mesh, with the GLSL ES texts as they stand.
import {
  type BufferGeometry,
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
  WebGLRenderTarget,
  ZeroFactor,
} from 'three';
import { OrbitControls } from 'three/addons/controls/OrbitControls.js';
import type { Declare } from 'morl';
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
import { withoutComments } from '../without_comments';
import { Clock } from './clock';
import { boneCount, makeMesh } from './meshes';
import { type Passes, uniformsOf } from './passes';
import { builtInCube, builtInTexture } from './textures';
import { hasLoop, isUnfinished, tryOut } from './trial';

/** No mesh reaches farther from its middle. */
const meshRadius = 1.6;

/** What the driver says of texts that it refuses. */
export interface DriverLogs {
  readonly vertex: string;
  readonly fragment: string;
  readonly link: string;
}

/** What came of showing a shader. */
export type Outcome =
  | { readonly kind: 'shown' }
  /** Another shader was to be shown meanwhile. */
  | { readonly kind: 'stale' }
  | { readonly kind: 'refused'; readonly logs: DriverLogs }
  /** A whole picture would take so many milliseconds; Infinity: it did not finish. */
  | { readonly kind: 'slow'; readonly time: number };

/** A shader, and what it was made from. */
interface Made {
  /** Both texts without comments, see `keyOf`. */
  readonly key: string;
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

/** What decides what a shader draws: comments and blanks do not. */
function keyOf({ vertex, fragment }: Passes): string {
  const tokens = (text: string): string => withoutComments(text).replace(/\s+/g, ' ');
  return [vertex.code, fragment.code].map(tokens).join('\0');
}

/** A picture, in rows from the bottom, four bytes a pixel. */
export interface SmallPicture {
  readonly data: Uint8Array<ArrayBuffer>;
  /** How long the page did nothing else for it, in milliseconds. */
  readonly time: number;
}

export interface RendererEvents {
  /** The browser has taken the graphics away, or given them back. */
  onContext(isLost: boolean): void;
  onDrawn(): void;
  /** @param rate in frames a second; 0: the picture stands still */
  onRate(rate: number): void;
}

/** How often the number of frames a second is told, in milliseconds. */
const rateSpan = 500;

export class PreviewRenderer {
  private readonly renderer: WebGLRenderer;
  private readonly scene = new Scene();
  readonly camera = new PerspectiveCamera(40, 1, 0.1, 50);
  private readonly controls: OrbitControls;
  private readonly mesh = new Mesh();
  private readonly builtIn = new Map<TextureName, Texture>();
  private readonly own = new Map<string, Texture>();
  private readonly chosen = new Map<string, TextureName>();
  private readonly cube = builtInCube();
  private accepted: Made | null = null;
  private logs: DriverLogs | null = null;
  private background = '#000000';
  /** Of the picture, in CSS pixels. */
  private size = { width: 0, height: 0 };
  /** Counts the calls of `show`. */
  private turn = 0;
  private meshName: MeshName = 'sphere';
  private isDrawing = false;
  /** Whether the shader depends on the time. */
  isAnimated = false;
  private frames = { since: 0, count: 0 };
  readonly clock = new Clock();
  private values: Readonly<Record<string, readonly number[]>> = {};

  /** Where the camera begins. */
  private static readonly start = [1.3, 0.9, 3] as const;

  constructor(
    canvas: HTMLCanvasElement,
    private readonly events: RendererEvents,
  ) {
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
      events.onContext(true);
    });
    canvas.addEventListener('webglcontextrestored', () => {
      keepTextsAsTheyStand(this.renderer.getContext());
      this.renderer.setClearColor(this.background);
      events.onContext(false);
      this.draw();
    });
  }

  /**
   * Shows a shader, once the driver has linked it beside other work, and pictures of it are known to come in time. Until
   * then, and if it cannot be shown, the last good one stays.
   */
  async show(passes: Passes, meshName: MeshName): Promise<Outcome> {
    this.turn += 1;
    const { turn } = this;
    const key = keyOf(passes);
    if (key === this.accepted?.key) {
      this.setMesh(meshName);
      this.draw();
      return { kind: 'shown' };
    }
    const made = this.make(passes, key);
    const geometry = this.geometryFor(meshName, made.inputs);
    const mesh = new Mesh(geometry, made.material);
    mesh.frustumCulled = false;
    const scene = new Scene().add(mesh);
    const outcome = await this.check(scene, made, turn);
    if (outcome.kind !== 'shown') {
      made.material.dispose();
      if (geometry !== this.mesh.geometry) {
        geometry.dispose();
      }
      return outcome;
    }
    this.accepted?.material.dispose();
    this.accepted = made;
    this.setMesh(meshName);
    this.setValues(this.values);
    for (const { name, type } of made.uniforms) {
      const uniform = made.material.uniforms[name];
      if (uniform && type.startsWith('sampler')) {
        uniform.value = this.samplerValue(name, type);
      }
    }
    this.isAnimated = made.uniforms.some((declare) => automaticFor(declare) === 'time');
    this.drawNow();
    return outcome;
  }

  /** Shows the last good shader, and none that is being tried. */
  keepLast(): void {
    this.turn += 1;
  }

  /**
   * A small picture of other passes on the mesh as it stands. Rejects nothing: what the driver refuses has no picture.
   * @param size its height and width, in pixels
   */
  async pictureOf(passes: Passes, size: number): Promise<SmallPicture | null> {
    const made = this.make(passes, '');
    const mesh = new Mesh(this.geometryFor(this.meshName, made.inputs), made.material);
    mesh.frustumCulled = false;
    const scene = new Scene().add(mesh);
    const camera = this.camera.clone();
    camera.aspect = 1;
    camera.updateProjectionMatrix();
    const target = new WebGLRenderTarget(size, size);
    const data = new Uint8Array(4 * size * size);
    await this.link(scene, made.material);
    const start = performance.now();
    const isTaken = this.logsOf(made.material) === null;
    if (isTaken) {
      this.fillAutomatic(made.material, made.uniforms, camera);
      this.renderer.setRenderTarget(target);
      this.renderer.render(scene, camera);
      this.renderer.setRenderTarget(null);
    }
    const time = performance.now() - start;
    if (isTaken) {
      await this.renderer.readRenderTargetPixelsAsync(target, 0, 0, size, size, data);
    }
    target.dispose();
    made.material.dispose();
    if (mesh.geometry !== this.mesh.geometry) {
      mesh.geometry.dispose();
    }
    return isTaken ? { data, time } : null;
  }

  /** The colour of a pixel of the picture, from 0 to 1; at CSS pixels from its top left. */
  colourAt(x: number, y: number): readonly number[] {
    const gl = this.renderer.getContext();
    const scale = this.renderer.getPixelRatio();
    const data = new Uint8Array(4);
    const row = gl.drawingBufferHeight - 1 - Math.floor(y * scale);
    gl.readPixels(Math.floor(x * scale), row, 1, 1, gl.RGBA, gl.UNSIGNED_BYTE, data);
    return [...data].map((one) => one / 255);
  }

  private make(passes: Passes, key: string): Made {
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
    return { key, material, uniforms, inputs: passes.vertex.inputs };
  }

  /** Whether a shader can be shown. */
  private async check(scene: Scene, { key, material, uniforms }: Made, turn: number) {
    const isStale = (): boolean => turn !== this.turn;
    const stale: Outcome = { kind: 'stale' };
    await this.link(scene, material);
    if (isStale()) {
      return stale;
    }
    const logs = this.logsOf(material);
    if (logs) {
      return { kind: 'refused', logs } satisfies Outcome;
    }
    if (!hasLoop(material.vertexShader + material.fragmentShader)) {
      return { kind: 'shown' } satisfies Outcome;
    }
    if (isUnfinished(key)) {
      return { kind: 'slow', time: Infinity } satisfies Outcome;
    }
    this.fillAutomatic(material, uniforms);
    const time = await tryOut(this.renderer, scene, this.camera, key);
    if (isStale()) {
      return stale;
    }
    return (time > 0 ? { kind: 'slow', time } : { kind: 'shown' }) satisfies Outcome;
  }

  /** What three.js has made of a material; undefined: nothing, or the graphics were taken away. */
  private programOf(material: RawShaderMaterial) {
    const { currentProgram } = this.renderer.properties.get(material) as {
      currentProgram?: { isReady(): boolean; getUniforms(): unknown };
    };
    return currentProgram;
  }

  /** Lets the driver link a material, beside other work where it can (KHR_parallel_shader_compile). */
  private async link(scene: Scene, material: RawShaderMaterial): Promise<void> {
    this.renderer.compile(scene, this.camera);
    while (this.programOf(material)?.isReady() === false) {
      await new Promise((done) => setTimeout(done, 2));
    }
  }

  /** What the driver says of a shader that it has refused; null: it has taken it. */
  private logsOf(material: RawShaderMaterial): DriverLogs | null {
    this.logs = null;
    // three.js looks at what the driver says when the program is used for the first time.
    this.programOf(material)?.getUniforms();
    return this.logs;
  }

  private geometryFor(name: MeshName, inputs: readonly Declare[]): BufferGeometry {
    const shape = [name, ...inputs.map((input) => `${input.name} ${input.semantic}`)].join('\n');
    if (this.mesh.geometry.name === shape) {
      return this.mesh.geometry;
    }
    const geometry = makeMesh(name, inputs);
    geometry.name = shape;
    return geometry;
  }

  setMesh(name: MeshName): void {
    if (!this.accepted) {
      return;
    }
    const { inputs, material } = this.accepted;
    const geometry = this.geometryFor(name, inputs);
    if (geometry !== this.mesh.geometry) {
      this.mesh.geometry.dispose();
      this.mesh.geometry = geometry;
    }
    material.side = name === 'plane' ? DoubleSide : FrontSide;
    this.mesh.material = material;
    this.meshName = name;
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
    const declare = this.accepted?.uniforms.find(({ name }) => name === sampler);
    const uniform = this.accepted?.material.uniforms[sampler];
    if (uniform && declare) {
      uniform.value = this.samplerValue(sampler, declare.type);
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
    this.size = { width, height };
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
        const isMoving = this.isAnimated && this.clock.isRunning;
        this.countFrame(isMoving);
        if (isMoving) {
          this.draw();
        }
      });
    }
  }

  private countFrame(isMoving: boolean): void {
    if (!isMoving) {
      this.frames = { since: 0, count: 0 };
      this.events.onRate(0);
      return;
    }
    const now = performance.now();
    const span = now - this.frames.since;
    if (span < rateSpan) {
      this.frames.count += 1;
      return;
    }
    if (this.frames.count > 0) {
      this.events.onRate(Math.round((1000 * (this.frames.count + 1)) / span));
    }
    this.frames = { since: now, count: 0 };
  }

  dispose(): void {
    this.isAnimated = false;
    this.controls.dispose();
    this.accepted?.material.dispose();
    this.renderer.dispose();
  }

  private drawNow(): void {
    const { accepted } = this;
    if (!accepted) {
      return;
    }
    // As near and as far as the mesh, so that depths differ.
    const distance = this.camera.position.length();
    this.camera.near = Math.max(distance - meshRadius, 0.05);
    this.camera.far = distance + meshRadius;
    this.camera.updateProjectionMatrix();
    this.fillAutomatic(accepted.material, accepted.uniforms);
    const { width, height } = this.size;
    const side = Math.min(width, height);
    this.renderer.setViewport(
      ...(this.meshName === 'quad'
        ? ([(width - side) / 2, (height - side) / 2, side, side] as const)
        : ([0, 0, width, height] as const)),
    );
    this.renderer.render(this.scene, this.camera);
    this.events.onDrawn();
  }

  private fillAutomatic(
    material: RawShaderMaterial,
    uniforms: readonly Declare[],
    camera: PerspectiveCamera = this.camera,
  ): void {
    camera.updateMatrixWorld();
    for (const declare of uniforms) {
      const automatic = automaticFor(declare);
      const uniform = material.uniforms[declare.name];
      if (automatic && uniform) {
        uniform.value = this.automaticValue(automatic, declare, camera);
      }
    }
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

  private samplerValue(name: string, type: string): Texture {
    return type === 'samplerCUBE' ? (this.own.get(name) ?? this.cube) : this.textureOf(name);
  }

  private makeUniform(declare: Declare): IUniform {
    if (declare.type.startsWith('sampler')) {
      return { value: this.samplerValue(declare.name, declare.type) };
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

  private automaticValue(
    automatic: Automatic,
    declare: Declare,
    camera: PerspectiveCamera,
  ): unknown {
    const { projectionMatrix: projection, matrixWorldInverse: view } = camera;
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
        return this.clock.seconds();
      case 'resolution': {
        const size = this.renderer.getDrawingBufferSize(new Vector2());
        return this.meshName === 'quad' ? size.setScalar(Math.min(size.x, size.y)) : size;
      }
    }
  }
}
