// SPDX-License-Identifier: MIT
import { useEffect, useRef, useState } from 'react';
import { Choice } from '../choice';
import { findNode, setMacro, setUniform } from '../model/project';
import {
  edited,
  type MeshName,
  projectOf,
  type State,
  type Store,
  type TextureChoice,
} from '../model/store';
import { usePage, usePageStore } from '../model/use_store';
import { mapDriverLog } from './driver_messages';
import { askedMacros, Panel } from './panel';
import { type DriverLogs, type Passes, PreviewRenderer, startMesh, uniformsOf } from './renderer';
import { textureFromFile } from './textures';

const meshNames: readonly MeshName[] = ['sphere', 'plane', 'torus knot', 'quad'];

function passesOf(state: State): Passes | null {
  const texts = state.answer?.texts.glsles;
  return texts?.vertex && texts.fragment
    ? { vertex: texts.vertex, fragment: texts.fragment }
    : null;
}

/** Whether the compiler has found faults, so that the text is made from what remains. */
function hasFaults(passes: Passes): boolean {
  return passes.vertex.faults.length > 0 || passes.fragment.faults.length > 0;
}

/** How good the picture is. */
type Mark = 'fresh' | 'none' | 'faults' | 'driver' | 'lost';

const marks: Readonly<Record<Mark, string>> = {
  fresh: '',
  none: 'The shader needs nodes in both passes. The last picture is shown.',
  faults: 'The sources have faults. The last good picture is shown.',
  driver: "The browser's driver refuses the shader. The last good picture is shown.",
  lost: 'The browser has taken the graphics away. The picture comes back by itself.',
};

/** Gives the renderer the textures that were chosen, as far as they are others than before. */
async function showTextures(
  store: Store,
  renderer: PreviewRenderer,
  before: State['textures'] | null,
): Promise<void> {
  const { textures } = store.getState();
  for (const sampler of before?.keys() ?? []) {
    if (!textures.has(sampler)) {
      renderer.resetTexture(sampler);
    }
  }
  for (const [sampler, texture] of textures) {
    if (texture === before?.get(sampler)) {
      continue;
    }
    const loaded = typeof texture === 'string' ? texture : await textureFromFile(texture);
    if (store.getState().textures.get(sampler) === texture) {
      renderer.setTexture(sampler, loaded);
    }
  }
}

/** Takes a picture of a person's own for a sampler, if the browser can read it. */
async function putOwnTexture(store: Store, sampler: string, file: Blob): Promise<void> {
  try {
    (await textureFromFile(file)).dispose();
    putTexture(store, sampler, file);
  } catch {
    const text = 'the browser cannot read this file as a picture; use PNG, JPEG or WebP';
    store.setState({ notice: { kind: 'error', text } });
  }
}

function putTexture(store: Store, sampler: string, texture: TextureChoice): void {
  store.setState(({ textures }) => ({ textures: new Map([...textures, [sampler, texture]]) }));
}

function chooseFile(onFile: (file: File) => void): void {
  const input = document.createElement('input');
  input.type = 'file';
  input.accept = 'image/*';
  input.onchange = () => {
    const [file] = input.files ?? [];
    if (file) {
      onFile(file);
    }
  };
  input.click();
}

/** Shows an answer of the compiler. Returns how good the picture is. */
function showAnswer(store: Store, renderer: PreviewRenderer): Mark {
  const state = store.getState();
  const passes = passesOf(state);
  if (!passes || hasFaults(passes)) {
    store.setState({ driverMessages: [] });
    return passes ? 'faults' : 'none';
  }
  let logs: DriverLogs | null;
  try {
    logs = renderer.show(passes, state.mesh ?? startMesh(passes));
    renderer.setValues(projectOf(state).values);
  } catch (error) {
    logs = { vertex: '', fragment: '', link: `the picture cannot be drawn: ${String(error)}` };
  }
  const contentOf = (node: string): string => findNode(projectOf(state), node)?.content ?? '';
  const driverMessages = logs
    ? [
        ...mapDriverLog(logs.vertex, passes.vertex, contentOf),
        ...mapDriverLog(logs.fragment, passes.fragment, contentOf),
        ...mapDriverLog(logs.link, null, contentOf),
      ]
    : [];
  store.setState({ driverMessages });
  // For measuring: the picture of this answer is drawn.
  performance.clearMarks('morl-picture');
  performance.mark('morl-picture');
  return logs ? 'driver' : 'fresh';
}

function showPanel(store: Store, panel: Panel): void {
  const state = store.getState();
  const passes = passesOf(state);
  if (passes) {
    const project = projectOf(state);
    const macros = askedMacros(passes.vertex.macros, passes.fragment.macros);
    panel.show({ uniforms: uniformsOf(passes), macros, values: project.values }, project);
  }
}

/** The picture of the chosen shader, and the controls of what it depends on. */
export function PreviewView() {
  const store = usePageStore();
  const canvas = useRef<HTMLCanvasElement>(null);
  const holder = useRef<HTMLDivElement>(null);
  const controls = useRef<HTMLDivElement>(null);
  const [mark, setMark] = useState<Mark>('fresh');
  const mesh = usePage((state) => state.mesh);
  const automatic = usePage((state) => {
    const passes = passesOf(state);
    return passes ? startMesh(passes) : 'sphere';
  });
  const shader = usePage((state) => state.shader);

  useEffect(() => {
    if (!canvas.current || !holder.current || !controls.current) {
      return undefined;
    }
    const picture = holder.current;
    let renderer: PreviewRenderer;
    try {
      renderer = new PreviewRenderer(canvas.current, (isLost) => {
        setMark(isLost ? 'lost' : showAnswer(store, renderer));
      });
    } catch {
      const text = 'this browser has no WebGL 2, so there is no picture; everything else works';
      store.setState({ notice: { kind: 'error', text } });
      return undefined;
    }
    const edit = store.setState;
    const showAllTextures = (before: State['textures'] | null): void => {
      void showTextures(store, renderer, before).then(() => {
        showPanel(store, panel);
      });
    };
    const panel = new Panel(controls.current, {
      setUniform: (name, value) => {
        edit((state) =>
          edited(state, (project) => setUniform(project, name, value), `uniform ${name}`),
        );
      },
      setMacro: (name, value) => {
        edit((state) =>
          edited(state, (project) => setMacro(project, state.shader, name, value), `macro ${name}`),
        );
      },
      setTexture: (sampler, texture) => {
        putTexture(store, sampler, texture);
      },
      textureName: (sampler) => renderer.textureName(sampler),
      chooseFile: (sampler) => {
        chooseFile((file) => void putOwnTexture(store, sampler, file));
      },
    });
    const background = (): void => {
      renderer.setBackground(getComputedStyle(picture).getPropertyValue('--picture').trim());
    };
    const resize = new ResizeObserver(() => {
      renderer.resize(picture.clientWidth, picture.clientHeight);
    });
    resize.observe(picture);
    background();
    renderer.setCamera(store.getState().camera);
    renderer.onTurn(() => {
      store.setState({ camera: renderer.cameraPlace() });
    });
    showAllTextures(null);
    if (store.getState().answer) {
      setMark(showAnswer(store, renderer));
      showPanel(store, panel);
    }
    const stop = store.subscribe((state, before) => {
      if (state.answer !== before.answer) {
        setMark(showAnswer(store, renderer));
        showPanel(store, panel);
      } else if (projectOf(state).values !== projectOf(before).values) {
        renderer.setValues(projectOf(state).values);
        showPanel(store, panel);
      }
      if (state.mesh !== before.mesh) {
        const passes = passesOf(state);
        renderer.setMesh(state.mesh ?? (passes ? startMesh(passes) : 'sphere'));
        renderer.draw();
      }
      if (state.textures !== before.textures) {
        showAllTextures(before.textures);
      }
      if (state.project.id !== before.project.id) {
        renderer.setCamera(state.camera);
      }
      if (state.theme !== before.theme) {
        background();
      }
    });
    const drop = (event: DragEvent): void => {
      event.preventDefault();
      const passes = passesOf(store.getState());
      const sampler = passes && uniformsOf(passes).find((one) => one.type === 'sampler2D');
      const [file] = event.dataTransfer?.files ?? [];
      if (file && sampler) {
        void putOwnTexture(store, sampler.name, file);
      } else {
        const text = 'this shader has no texture to replace';
        store.setState({ notice: { kind: 'info', text } });
      }
    };
    const allow = (event: DragEvent): void => {
      event.preventDefault();
    };
    picture.addEventListener('drop', drop);
    picture.addEventListener('dragover', allow);
    return () => {
      stop();
      resize.disconnect();
      picture.removeEventListener('drop', drop);
      picture.removeEventListener('dragover', allow);
      panel.dispose();
      renderer.dispose();
    };
  }, [store]);

  return (
    <section className="panel preview" aria-label="Preview">
      <div className="bar">
        <Choice
          label="Mesh"
          names={meshNames}
          isPressed={(name) => name === (mesh ?? automatic)}
          onPress={(name) => {
            store.setState({ mesh: name });
          }}
        />
      </div>
      <div className="stage">
        <div className="picture" ref={holder}>
          <canvas
            ref={canvas}
            tabIndex={0}
            role="img"
            aria-label={`Picture of the shader ${shader}; arrow keys turn the camera`}
          />
          {mark !== 'fresh' && (
            <div className="mark" role="alert">
              {marks[mark]}
            </div>
          )}
        </div>
        <div className="controls" ref={controls} aria-label="Controls" role="group" />
      </div>
    </section>
  );
}
