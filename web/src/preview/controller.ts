// SPDX-License-Identifier: MIT
// Keeps the picture and its controls as the state of the page wants them.
import { messageOf } from '../message_of';
import { findNode, nodeById, setMacro, setUniform, valueIn } from '../model/project';
import { edited, projectOf, type State, type Store } from '../model/store';
import { startValue } from './conventions';
import { mapDriverLog } from './driver_messages';
import { draggedLight, lightUniform, placeOfLight } from './light';
import { chooseFile, dropTexture, putOwnTexture, putTexture, showTextures } from './own_textures';
import { NodePictures } from './node_pictures';
import { askedMacros, Panel } from './panel';
import { hasFaults, meshOf, type Passes, passesOf, uniformsOf } from './passes';
import { type Outcome, PreviewRenderer } from './renderer';
import { type ShownValue, shownValue } from './values';

/** How good the picture is. */
export type Mark =
  | { readonly kind: 'fresh' | 'none' | 'faults' | 'driver' | 'lost' }
  /** A picture would take so many milliseconds; Infinity: it did not finish. */
  | { readonly kind: 'slow'; readonly time: number };

export interface PreviewElements {
  readonly canvas: HTMLCanvasElement;
  /** What holds the canvas. */
  readonly picture: HTMLElement;
  readonly controls: HTMLElement;
}

export interface PreviewEvents {
  onMark(mark: Mark): void;
  /** After each picture: where the light is, as parts of the picture; null: there is none. */
  onLight(place: { x: number; y: number } | null): void;
  /** @param rate in frames a second; 0: the picture stands still */
  onRate(rate: number): void;
  /** Whether the picture depends on the time. */
  onAnimated(isAnimated: boolean): void;
  /** What is drawn in place of the picture; null: nothing, it is the picture. */
  onValue(value: ShownValue | null): void;
}

function driverMessagesOf(state: State, passes: Passes, outcome: Outcome) {
  if (outcome.kind !== 'refused') {
    return [];
  }
  const { vertex, fragment, link } = outcome.logs;
  const contentOf = (node: string): string => findNode(projectOf(state), node)?.content ?? '';
  return [
    ...mapDriverLog(vertex, passes.vertex, contentOf),
    ...mapDriverLog(fragment, passes.fragment, contentOf),
    ...mapDriverLog(link, null, contentOf),
  ];
}

/** The value that is to be shown in place of the picture. */
function valueOf(state: State, passes: Passes): ShownValue | null {
  if (state.value === null) {
    return null;
  }
  if (state.value !== 'caret') {
    return shownValue(passes, state.value.node, state.value.line);
  }
  const name =
    state.selected === null ? '' : (nodeById(projectOf(state), state.selected)?.name ?? '');
  const line = state.caret?.node === name ? state.caret.line : Infinity;
  // Before its first assignment, the caret means the node as a whole.
  return shownValue(passes, name, line) ?? shownValue(passes, name);
}

export class PreviewController {
  private readonly renderer: PreviewRenderer;
  private readonly pictures: NodePictures;
  private readonly panel: Panel;
  private readonly ends: (() => void)[] = [];

  /** @throws Error if the browser has no WebGL 2 */
  constructor(
    private readonly store: Store,
    private readonly elements: PreviewElements,
    private readonly events: PreviewEvents,
  ) {
    this.renderer = new PreviewRenderer(elements.canvas, {
      onContext: (isLost) => {
        if (isLost) {
          events.onMark({ kind: 'lost' });
        } else {
          void this.showAnswer();
        }
      },
      onDrawn: () => {
        this.tellLight();
      },
      onRate: (rate) => {
        events.onRate(rate);
      },
    });
    this.pictures = new NodePictures(store, this.renderer);
    this.panel = this.makePanel();
    this.renderer.setCamera(store.getState().camera);
    this.renderer.onTurn(() => {
      store.setState({ camera: this.renderer.cameraPlace() });
    });
    this.followSize();
    this.followDrops();
    this.setBackground();
    this.showTextures(null);
    if (store.getState().answer) {
      void this.showAnswer();
    }
    this.ends.push(
      store.subscribe((state, before) => {
        this.follow(state, before);
      }),
    );
  }

  dispose(): void {
    this.ends.forEach((end) => {
      end();
    });
    this.pictures.stop();
    this.panel.dispose();
    this.renderer.dispose();
  }

  get clock() {
    return this.renderer.clock;
  }

  /** Draws again, after the clock was changed. */
  draw(): void {
    this.renderer.draw();
  }

  /** The colour under the pointer, from 0 to 1; the place is in CSS pixels of the page. */
  colourAt(clientX: number, clientY: number): readonly number[] {
    const { left, top } = this.elements.canvas.getBoundingClientRect();
    return this.renderer.colourAt(clientX - left, clientY - top);
  }

  /** The picture as a PNG; null: the browser cannot make one. */
  picture(): Promise<Blob | null> {
    return new Promise((done) => {
      this.elements.canvas.toBlob(done, 'image/png');
    });
  }

  /** Puts the light where the pointer is, in CSS pixels of the page. */
  dragLight(clientX: number, clientY: number): void {
    const light = this.light();
    if (!light) {
      return;
    }
    const { left, top, width, height } = this.elements.picture.getBoundingClientRect();
    const at = {
      x: (2 * (clientX - left) - width) / height,
      y: (height - 2 * (clientY - top)) / height,
    };
    const value = draggedLight(light.value, at, this.renderer.camera);
    this.store.setState((state) =>
      edited(state, (project) => setUniform(project, light.name, value), `uniform ${light.name}`),
    );
  }

  private light(): { name: string; value: readonly number[] } | null {
    const state = this.store.getState();
    const passes = passesOf(state);
    const declare = passes && lightUniform(uniformsOf(passes));
    if (!declare) {
      return null;
    }
    const value = valueIn(projectOf(state).values, declare.name) ?? startValue(declare);
    return { name: declare.name, value };
  }

  private tellLight(): void {
    const light = this.light();
    this.events.onLight(light && placeOfLight(light.value, this.renderer.camera));
  }

  private follow(state: State, before: State): void {
    const isOther =
      state.value !== before.value ||
      (state.value === 'caret' &&
        (state.caret !== before.caret || state.selected !== before.selected));
    if (state.answer !== before.answer || isOther) {
      void this.showAnswer();
    } else if (projectOf(state).values !== projectOf(before).values) {
      this.renderer.setValues(projectOf(state).values);
      this.showPanel();
    }
    if (state.mesh !== before.mesh) {
      this.renderer.setMesh(meshOf(state));
      this.renderer.draw();
    }
    const isSeenOtherwise =
      state.mesh !== before.mesh ||
      state.textures !== before.textures ||
      state.camera !== before.camera ||
      state.showsPictures !== before.showsPictures ||
      projectOf(state).values !== projectOf(before).values;
    const passes = passesOf(state);
    if (isSeenOtherwise && state.answer === before.answer && passes && !hasFaults(passes)) {
      this.pictures.want(passes);
    }
    if (state.textures !== before.textures) {
      this.showTextures(before.textures);
    }
    if (state.project.id !== before.project.id) {
      this.renderer.setCamera(state.camera);
    }
    if (state.theme !== before.theme) {
      this.setBackground();
    }
  }

  /** Shows what the compiler has answered last. */
  private async showAnswer(): Promise<void> {
    const state = this.store.getState();
    const passes = passesOf(state);
    this.pictures.stop();
    this.showPanel();
    if (!passes || hasFaults(passes)) {
      this.renderer.keepLast();
      this.store.setState({ driverMessages: [] });
      this.events.onMark({ kind: passes ? 'faults' : 'none' });
      return;
    }
    this.renderer.setValues(projectOf(state).values);
    const value = valueOf(state, passes);
    const outcome = await this.renderer
      .show(value?.passes ?? passes, meshOf(state))
      .catch((error: unknown): Outcome => {
        const link = `the picture cannot be drawn: ${messageOf(error)}`;
        return { kind: 'refused', logs: { vertex: '', fragment: '', link } };
      });
    if (outcome.kind === 'stale') {
      return;
    }
    this.events.onValue(value);
    this.events.onAnimated(this.renderer.isAnimated);
    if (outcome.kind === 'shown') {
      this.pictures.want(passes);
    }
    const driverMessages = value ? [] : driverMessagesOf(state, passes, outcome);
    if (driverMessages.length > 0 || this.store.getState().driverMessages.length > 0) {
      this.store.setState({ driverMessages });
    }
    const kinds = { shown: 'fresh', refused: 'driver' } as const;
    this.events.onMark(outcome.kind === 'slow' ? outcome : { kind: kinds[outcome.kind] });
    // For measuring: the picture of this answer is drawn.
    performance.clearMarks('morl-picture');
    performance.mark('morl-picture');
  }

  private showPanel(): void {
    const state = this.store.getState();
    const passes = passesOf(state);
    if (passes) {
      const project = projectOf(state);
      const macros = askedMacros(passes.vertex.macros, passes.fragment.macros);
      this.panel.show({ uniforms: uniformsOf(passes), macros, values: project.values }, project);
    }
  }

  private makePanel(): Panel {
    const { store } = this;
    return new Panel(this.elements.controls, {
      setUniform: (name, value) => {
        store.setState((state) =>
          edited(state, (project) => setUniform(project, name, value), `uniform ${name}`),
        );
      },
      setMacro: (name, value) => {
        store.setState((state) =>
          edited(state, (project) => setMacro(project, state.shader, name, value), `macro ${name}`),
        );
      },
      setTexture: (sampler, texture) => {
        putTexture(store, sampler, texture);
      },
      resetTexture: (sampler) => {
        dropTexture(store, sampler);
      },
      textureName: (sampler) => this.renderer.textureName(sampler),
      chooseFile: (sampler) => {
        chooseFile((file) => void putOwnTexture(store, sampler, file));
      },
    });
  }

  private showTextures(before: State['textures'] | null): void {
    void showTextures(this.store, this.renderer, before).then(() => {
      this.showPanel();
    });
  }

  private setBackground(): void {
    const style = getComputedStyle(this.elements.picture);
    this.renderer.setBackground(style.getPropertyValue('--picture').trim());
  }

  private followSize(): void {
    const { picture } = this.elements;
    const resize = new ResizeObserver(() => {
      this.renderer.resize(picture.clientWidth, picture.clientHeight);
    });
    resize.observe(picture);
    this.ends.push(() => {
      resize.disconnect();
    });
  }

  /** A picture that is dropped becomes the first texture. */
  private followDrops(): void {
    const { picture } = this.elements;
    const drop = (event: DragEvent): void => {
      event.preventDefault();
      const passes = passesOf(this.store.getState());
      const sampler = passes && uniformsOf(passes).find((one) => one.type === 'sampler2D');
      const [file] = event.dataTransfer?.files ?? [];
      if (file && sampler) {
        void putOwnTexture(this.store, sampler.name, file);
      } else {
        const text = 'this shader has no texture to replace';
        this.store.setState({ notice: { kind: 'info', text } });
      }
    };
    const allow = (event: DragEvent): void => {
      event.preventDefault();
    };
    picture.addEventListener('drop', drop);
    picture.addEventListener('dragover', allow);
    this.ends.push(() => {
      picture.removeEventListener('drop', drop);
      picture.removeEventListener('dragover', allow);
    });
  }
}
