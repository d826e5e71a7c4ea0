// SPDX-License-Identifier: MIT
// The state of the page, and what changes it.
import type { Target } from 'morl';
import { createStore } from 'zustand/vanilla';
import type { Answer, Message } from '../compiler/protocol';
import type { TextureName } from '../preview/conventions';
import type { OtherCheck } from './all_messages';
import { type History, record, redo, startHistory, undo } from './history';
import { EditError, findNode, type Project, type StageName } from './project';
import { revealed } from './reveal';

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

/** The texture of a sampler: the name of a built-in one, or a picture of a person's own. */
export type TextureChoice = TextureName | Blob;

export interface State {
  /** Which project is open. */
  readonly project: { readonly id: string; readonly name: string };
  readonly history: History;
  /** The project as its files have it. */
  readonly saved: Project;
  /** Where the files are; null: nobody has chosen a folder for them. */
  readonly folder: FileSystemDirectoryHandle | null;
  /** Whether another tab edits the project, and this one only shows it. */
  readonly isFollowing: boolean;
  /** Why this browser does not keep the edits; empty: it does. */
  readonly unkept: string;
  /** The name of the chosen shader. */
  readonly shader: string;
  /** The id of the node in the editor. */
  readonly selected: string | null;
  /** Where the editor shall go, once. */
  readonly goTo: (Place & { readonly column: number }) | null;
  /** The line under the pointer, in the editor or in the output. */
  readonly hovered: Place | null;
  readonly answer: Answer | null;
  /** What is wrong with the shaders that are not chosen, by name. */
  readonly others: ReadonlyMap<string, OtherCheck>;
  /** What the browser's driver objects to. */
  readonly driverMessages: readonly Message[];
  readonly target: Target;
  readonly stage: StageName;
  readonly mesh: MeshName | null;
  /** Where the camera is; null: where it begins. */
  readonly camera: readonly number[] | null;
  /** The textures that were chosen, by sampler. */
  readonly textures: ReadonlyMap<string, TextureChoice>;
  /** What nodes leave in the variables that they assign last, as the addresses of pictures, by name. */
  readonly pictures: ReadonlyMap<string, string>;
  readonly showsPictures: boolean;
  /** Where the caret is in the editor. */
  readonly caret: Place | null;
  /** What is drawn in place of the picture: the value at the caret, or at a pinned place; null: nothing. */
  readonly value: 'caret' | Place | null;
  readonly theme: Theme;
  readonly notice: Notice | null;
}

export function initialState(project: Project, theme: Theme = 'light'): State {
  const [shader] = project.shaders;
  return {
    project: { id: '', name: '' },
    history: startHistory(project),
    saved: project,
    folder: null,
    isFollowing: false,
    unkept: '',
    shader: shader?.name ?? '',
    selected: findNode(project, shader?.fragment[0] ?? '')?.id ?? null,
    goTo: null,
    hovered: null,
    answer: null,
    others: new Map(),
    driverMessages: [],
    target: 'glsles',
    stage: 'fragment',
    mesh: null,
    camera: null,
    textures: new Map(),
    pictures: new Map(),
    showsPictures: true,
    caret: null,
    value: null,
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

/** Whether there are edits that no file has. */
export function isUnsaved({ history, saved }: Pick<State, 'history' | 'saved'>): boolean {
  const { present } = history;
  return present.nodes !== saved.nodes || present.shaders !== saved.shaders;
}

/** Why a tab that follows another one refuses. */
export const followingNotice: Notice = {
  kind: 'error',
  text: "another tab edits this project; 'Edit here' takes it over",
};

/** Applies an edit of the project. If it is refused, a notice says why and nothing changes. */
export function edited(
  state: State,
  edit: (project: Project) => Project,
  run: string | null = null,
  time?: number,
): State {
  if (state.isFollowing) {
    return { ...state, notice: followingNotice };
  }
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

/** Another step of the history, with what it has changed in view. */
function stepped(state: State, step: (history: History) => History): State {
  if (state.isFollowing) {
    return { ...state, notice: followingNotice };
  }
  const history = step(state.history);
  return settle({ ...state, history, ...revealed(projectOf(state), history.present) });
}

/** Applies an edit, and shows what it has made: of a refused one there is nothing to show. */
export function editedWith(
  state: State,
  edit: (project: Project) => Project,
  made: Partial<Pick<State, 'selected' | 'shader' | 'mesh' | 'notice'>>,
): State {
  const next = edited(state, edit);
  return next.history === state.history ? next : { ...next, ...made };
}

export function undone(state: State): State {
  return stepped(state, undo);
}

export function redone(state: State): State {
  return stepped(state, redo);
}

/** Everything that is wrong: what the compiler and the browser say, errors first. */
export function messagesOf(state: Pick<State, 'answer' | 'driverMessages'>): readonly Message[] {
  const compiler = state.answer?.messages ?? [];
  const lineOf = ({ node, line }: Message): string => `${node}:${line}`;
  const refused = new Set(
    compiler.filter(({ severity, line }) => severity === 'error' && line > 0).map(lineOf),
  );
  // Drivers have their own words for what the compiler has said of a line already.
  const driver = state.driverMessages.filter((message) => !refused.has(lineOf(message)));
  const all = [...compiler, ...driver];
  return [
    ...all.filter((message) => message.severity === 'error'),
    ...all.filter((message) => message.severity === 'warning'),
  ];
}

export type Store = ReturnType<typeof makeStore>;

export function makeStore(state: State) {
  return createStore<State>(() => state);
}
