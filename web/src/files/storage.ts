// SPDX-License-Identifier: MIT
// What the browser keeps for the next visit.
import type { Project } from '../model/project';
import { isProject } from './permalink';

/** What the browser keeps under a name; null: nothing, or it lets pages keep nothing. */
export function storedText(key: string): string | null {
  try {
    return localStorage.getItem(key);
  } catch {
    return null;
  }
}

/** Keeps a text. Returns whether there was room for it. */
export function storeText(key: string, text: string): boolean {
  try {
    localStorage.setItem(key, text);
    return true;
  } catch {
    return false;
  }
}

const oldKey = 'morl.project';

/** The project that an older page has kept here; undefined: none that can be read. */
export function takeOldProject(): Project | undefined {
  try {
    const project: unknown = JSON.parse(storedText(oldKey) ?? 'null');
    return isProject(project) ? project : undefined;
  } catch {
    return undefined;
  }
}
