// SPDX-License-Identifier: MIT
// The controls for uniforms, textures and macros.
import type { Declare, MacroUse } from 'morl';
import GUI, { type Controller } from 'lil-gui';
import { type Project, valueIn } from '../model/project';
import { withoutComments } from '../without_comments';
import {
  automaticFor,
  isColour,
  rangeFor,
  sizeOf,
  startValue,
  textureNames,
  type TextureName,
} from './conventions';

/** What the controls change. */
export interface PanelActions {
  setUniform(name: string, value: readonly number[]): void;
  setMacro(name: string, value: number): void;
  setTexture(sampler: string, texture: TextureName): void;
  /** Back to the texture that a sampler begins with. */
  resetTexture(sampler: string): void;
  /** The name of a sampler's texture; null: one of a person's own. */
  textureName(sampler: string): TextureName | null;
  chooseFile(sampler: string): void;
}

/** What the controls show. */
export interface PanelContent {
  readonly uniforms: readonly Declare[];
  readonly macros: readonly MacroUse[];
  readonly values: Readonly<Record<string, readonly number[]>>;
}

/** Whether a macro only switches something on: no loop and no comparison asks for its value. */
export function isSwitch(project: Project, macro: string): boolean {
  const number = new RegExp(
    `#for\\s+${macro}\\b|\\b${macro}\\s*[<>=!+*/-]|[<>=!+*/-]\\s*${macro}\\b`,
  );
  return !project.nodes.some((node) => number.test(withoutComments(node.content)));
}

/** The macros that the passes have asked for. */
export function askedMacros(...passes: readonly (readonly MacroUse[])[]): MacroUse[] {
  return [...new Map(passes.flat().map((macro) => [macro.name, macro])).values()];
}

/** What decides which controls there are; their values do not. */
function panelShape(content: PanelContent): string {
  const uniforms = content.uniforms.map((one) => `${one.name} ${one.type}`);
  return [...uniforms, ...content.macros.map((one) => one.name)].join('\n');
}

/** What the control shows for a picture of a person's own. */
const ownTexture = 'own picture';

/** The name of the only cube map that is built in. */
const builtInSky = 'sky';

const axes = ['x', 'y', 'z', 'w'] as const;

type Refresh = (values: PanelContent['values']) => void;

export class Panel {
  private gui: GUI | null = null;
  private refreshers: Refresh[] = [];
  private macroControllers = new Map<
    string,
    { controller: Controller; state: { value: number | boolean } }
  >();
  private shape = '';

  constructor(
    private readonly container: HTMLElement,
    private readonly actions: PanelActions,
  ) {}

  show(content: PanelContent, project: Project): void {
    const shape = panelShape(content);
    if (shape !== this.shape || !this.gui) {
      this.shape = shape;
      this.build(content, project);
    }
    this.refreshers.forEach((refresh) => {
      refresh(content.values);
    });
    for (const macro of content.macros) {
      const known = this.macroControllers.get(macro.name);
      if (known) {
        known.state.value =
          typeof known.state.value === 'boolean' ? macro.value !== 0 : macro.value;
        known.controller.updateDisplay();
      }
    }
  }

  dispose(): void {
    this.gui?.destroy();
    this.gui = null;
  }

  private build(content: PanelContent, project: Project): void {
    this.gui?.destroy();
    this.refreshers = [];
    this.macroControllers.clear();
    this.gui = new GUI({ container: this.container, title: 'Controls', injectStyles: false });
    if (content.macros.length > 0) {
      const folder = this.gui.addFolder('Macros');
      content.macros.forEach((macro) => {
        this.addMacro(folder, macro, isSwitch(project, macro.name));
      });
    }
    const free = content.uniforms.filter((declare) => automaticFor(declare) === undefined);
    const samplers = free.filter((declare) => declare.type.startsWith('sampler'));
    if (samplers.length > 0) {
      const folder = this.gui.addFolder('Textures');
      samplers.forEach((declare) => {
        this.addSampler(folder, declare);
      });
    }
    const numbers = free.filter((declare) => sizeOf(declare.type) > 0);
    if (numbers.length > 0) {
      const folder = this.gui.addFolder('Uniforms');
      numbers.forEach((declare) => {
        this.addUniform(folder, declare);
      });
    }
  }

  private addMacro(folder: GUI, macro: MacroUse, isToggle: boolean): void {
    const state = { value: isToggle ? macro.value !== 0 : macro.value };
    const controller = isToggle
      ? folder.add(state, 'value')
      : folder.add(state, 'value', 0, Math.max(8, macro.value), 1);
    controller.name(macro.name).onChange((value: number | boolean) => {
      this.actions.setMacro(macro.name, Number(value));
    });
    this.macroControllers.set(macro.name, { controller, state });
  }

  private addSampler(folder: GUI, declare: Declare): void {
    const isCube = declare.type === 'samplerCUBE';
    const builtIn: readonly string[] = isCube ? [builtInSky] : textureNames;
    const state: { value: string } = { value: '' };
    const controller = folder
      .add(state, 'value', [...builtIn, ownTexture, 'file…'])
      .name(declare.name)
      .onChange((value: string) => {
        const name = textureNames.find((one) => one === value);
        if (name) {
          this.actions.setTexture(declare.name, name);
        } else if (value === builtInSky) {
          this.actions.resetTexture(declare.name);
        } else if (value !== ownTexture) {
          this.actions.chooseFile(declare.name);
        }
        show();
      });
    // The choice may be cancelled, so the control shows what is in use.
    const show = (): void => {
      const name = this.actions.textureName(declare.name);
      state.value = name === null ? ownTexture : isCube ? builtInSky : name;
      controller.updateDisplay();
    };
    this.refreshers.push(show);
  }

  private addUniform(folder: GUI, declare: Declare): void {
    const start = startValue(declare);
    const current = [...start];
    const tell = (): void => {
      this.actions.setUniform(declare.name, [...current]);
    };
    const controllers: Controller[] = [];
    const colour = { value: start.slice(0, 3) };
    const hasColour = isColour(declare);
    if (hasColour) {
      controllers.push(
        folder
          .addColor(colour, 'value')
          .name(declare.name)
          .onChange(() => {
            colour.value.forEach((value, i) => (current[i] = value));
            tell();
          }),
      );
    }
    const first = hasColour ? 3 : 0;
    const state: Record<string, number> = {};
    for (let i = first; i < start.length; ++i) {
      const axis = axes[i] ?? 'w';
      const value = start[i] ?? 0;
      state[axis] = value;
      const { min, max, step } = hasColour
        ? { min: 0, max: 1, step: 0.01 }
        : rangeFor(declare, value);
      controllers.push(
        folder
          .add(state, axis, min, max, step)
          .name(start.length === 1 ? declare.name : `${declare.name}.${axis}`)
          .onChange((next: number) => {
            current[i] = next;
            tell();
          }),
      );
    }
    this.refreshers.push((values) => {
      (valueIn(values, declare.name) ?? start).forEach((value, i) => {
        current[i] = value;
        if (hasColour && i < 3) {
          colour.value[i] = value;
        } else {
          state[axes[i] ?? 'w'] = value;
        }
      });
      controllers.forEach((controller) => {
        controller.updateDisplay();
      });
    });
  }
}
