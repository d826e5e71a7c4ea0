// SPDX-License-Identifier: MIT
// What the browser keeps for the next visit.
import { newId, type Project } from '../model/project';
import { isProject, LinkError } from './permalink';

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

const projectKey = 'morl.project';

/** Keeps a project for the next visit. Returns whether there was room for it. */
export function keep(project: Project): boolean {
  return storeText(projectKey, JSON.stringify(project));
}

function parsed(text: string): unknown {
  try {
    return JSON.parse(text);
  } catch {
    return undefined;
  }
}

/** The project of the last visit, if there is one. @throws LinkError */
export function kept(): Project | undefined {
  const text = storedText(projectKey);
  if (text === null) {
    return undefined;
  }
  const project = parsed(text);
  if (!isProject(project)) {
    storeText(`${projectKey}.damaged`, text);
    throw new LinkError('what the last visit has left cannot be read; it was put aside');
  }
  // The folder has to be opened again.
  const nodes = project.nodes.map((node) => ({ ...node, id: newId() }));
  return { ...project, origin: null, nodes };
}
