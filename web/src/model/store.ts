// SPDX-License-Identifier: MIT
// The state of the page, and what changes it.
import type { Target } from 'morl';
import { createStore } from 'zustand/vanilla';
import type { Answer, Message } from '../compiler/protocol';
import { type History, record, redo, startHistory, undo } from './history';
import { EditError, findNode, type Project, type StageName } from './project';

/** A line of a node. */
export interface Place {
  readonly node: string;
  /** 1-based. */
  readonly line: number;
}

/** A short text for the person, such as why an edit was refused. */
export interface Notice {
  readonly kind: 'info' | 'error';
  readonly text: string;
}

export type Theme = 'light' | 'dark';
export type MeshName = 'sphere' | 'plane' | 'torus knot' | 'quad';

export interface State {
  readonly history: History;
  /** The name of the chosen shader. */
  readonly shader: string;
  /** The id of the node in the editor. */
  readonly selected: string | null;
  /** Where the editor shall go, once. */
  readonly goTo: (Place & { readonly column: number }) | null;
  /** The line under the pointer, in the editor or in the output. */
  readonly hovered: Place | null;
  readonly answer: Answer | null;
  /** What the browser's driver objects to. */
  readonly driverMessages: readonly Message[];
  readonly target: Target;
  readonly stage: StageName;
  readonly mesh: MeshName | null;
  readonly theme: Theme;
  readonly notice: Notice | null;
}

export function initialState(project: Project, theme: Theme): State {
  const [shader] = project.shaders;
  return {
    history: startHistory(project),
    shader: shader?.name ?? '',
    selected: findNode(project, shader?.fragment[0] ?? '')?.id ?? null,
    goTo: null,
    hovered: null,
    answer: null,
    driverMessages: [],
    target: 'glsles',
    stage: 'fragment',
    mesh: null,
    theme,
    notice: null,
  };
}

/** The chosen things of a state that still exist after its project has changed. */
function settle(state: State): State {
  const { nodes, shaders } = state.history.present;
  const hasShader = shaders.some((shader) => shader.name === state.shader);
  const hasNode = nodes.some((node) => node.id === state.selected);
  return {
    ...state,
    shader: hasShader ? state.shader : (shaders[0]?.name ?? ''),
    selected: hasNode ? state.selected : null,
  };
}

export function projectOf(state: State): Project {
  return state.history.present;
}

/** Applies an edit of the project. If it is refused, a notice says why and nothing changes. */
export function edited(
  state: State,
  edit: (project: Project) => Project,
  run: string | null = null,
  time?: number,
): State {
  try {
    const history = record(state.history, edit(state.history.present), run, time);
    return settle({ ...state, history, notice: null });
  } catch (error) {
    if (error instanceof EditError) {
      return { ...state, notice: { kind: 'error', text: error.message } };
    }
    throw error;
  }
}

export function undone(state: State): State {
  return settle({ ...state, history: undo(state.history) });
}

export function redone(state: State): State {
  return settle({ ...state, history: redo(state.history) });
}

/** Everything that is wrong: what the compiler and the browser say, errors first. */
export function messagesOf(state: Pick<State, 'answer' | 'driverMessages'>): readonly Message[] {
  const all = [...(state.answer?.messages ?? []), ...state.driverMessages];
  return [
    ...all.filter((message) => message.severity === 'error'),
    ...all.filter((message) => message.severity === 'warning'),
  ];
}

export type Store = ReturnType<typeof makeStore>;

export function makeStore(state: State) {
  return createStore<State>(() => state);
}
