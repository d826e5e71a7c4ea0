// SPDX-License-Identifier: MIT
import type { Project } from './project';

/** The projects before and after the current one. */
export interface History {
  readonly past: readonly Project[];
  readonly present: Project;
  readonly future: readonly Project[];
  /** What the last edit was about, such as one node's text; edits of one run are one step. */
  readonly run: string | null;
  /** When the last edit was, in milliseconds. */
  readonly time: number;
}

const maxSteps = 200;
/** Edits of one run that are further apart than this, in milliseconds, are different steps. */
const pause = 1000;

export function startHistory(present: Project): History {
  return { past: [], present, future: [], run: null, time: 0 };
}

/** @param run edits that have the same text here, in quick succession, are undone together */
export function record(
  history: History,
  next: Project,
  run: string | null = null,
  time: number = Date.now(),
): History {
  if (next === history.present) {
    return history;
  }
  const continues = run !== null && run === history.run && time - history.time < pause;
  const past = continues ? history.past : [...history.past, history.present].slice(-maxSteps);
  return { past, present: next, future: [], run, time };
}

export function undo(history: History): History {
  const previous = history.past.at(-1);
  if (!previous) {
    return history;
  }
  const future = [history.present, ...history.future];
  return { past: history.past.slice(0, -1), present: previous, future, run: null, time: 0 };
}

export function redo(history: History): History {
  const [next, ...future] = history.future;
  if (!next) {
    return history;
  }
  return { past: [...history.past, history.present], present: next, future, run: null, time: 0 };
}

/** Changes every step alike, such as what all of them know about files. */
export function changeAll(history: History, change: (project: Project) => Project): History {
  const { past, present, future } = history;
  return {
    ...history,
    past: past.map(change),
    present: change(present),
    future: future.map(change),
  };
}
