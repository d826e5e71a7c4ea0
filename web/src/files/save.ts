// SPDX-License-Identifier: MIT
// Bringing the edits of the open project into its files.
import { messageOf } from '../message_of';
import { changeAll } from '../model/history';
import type { Project } from '../model/project';
import { followingNotice, projectOf, type State, type Store } from '../model/store';
import { download } from './download';
import { afterSave, editedTexts, openedTexts, saveProject, writeFolder } from './folder';
import { FileError } from './node_file';
import { type FileTexts, fileTexts } from './node_source';

function countFiles(number: number): string {
  return number === 1 ? '1 edited file' : `${number} edited files`;
}

/** Asks for the permission to write, which a browser forgets when the page is loaded again. */
async function requirePermission(folder: FileSystemDirectoryHandle): Promise<void> {
  const wish = { mode: 'readwrite' } as const;
  const isGranted =
    (await folder.queryPermission(wish)) === 'granted' ||
    (await folder.requestPermission(wish)) === 'granted';
  if (!isGranted) {
    throw new FileError(`the browser may not write to '${folder.name}'; save again, and allow it`);
  }
}

function without<Text>(
  texts: Readonly<Record<string, Text>>,
  failed: ReadonlyMap<string, string>,
): Record<string, Text> {
  return Object.fromEntries(Object.entries(texts).filter(([path]) => !failed.has(path)));
}

/** The state after some files were written: also what undo brings back was made from the files as they are now. */
function savedState(
  state: State,
  project: Project,
  texts: Readonly<Record<string, string>>,
  written: FileTexts,
  isComplete: boolean,
): Partial<State> {
  const later = (step: Project): Project => afterSave(step, project, texts, written);
  const history = changeAll(state.history, later);
  const saved = state.history.present === project ? history.present : later(project);
  return isComplete ? { history, saved } : { history };
}

function downloadAll(edits: FileTexts): string {
  Object.entries(edits).forEach(([path, text]) => {
    if (text !== null) {
      download(path.split('/').at(-1) ?? path, text);
    }
  });
  const removed = Object.keys(edits).filter((path) => edits[path] === null);
  return removed.length > 0 ? `; remove ${removed.join(', ')} yourself` : '';
}

let running: Promise<void> = Promise.resolve();

/** Ends when no files are being written. */
export function whenSaved(): Promise<void> {
  return running;
}

/** Saves the edits of the open project, after what is being saved already. A notice says what came of it. */
export function saveEdits(store: Store): Promise<void> {
  running = running
    .then(() => writeEdits(store))
    .catch((error: unknown) => {
      store.setState({ notice: { kind: 'error', text: messageOf(error) } });
    });
  return running;
}

/**
 * Writes the edited files into the project's folder, or gives them to the browser to download. What could not be written
 * stays unsaved, and a notice says why.
 */
async function writeEdits(store: Store): Promise<void> {
  if (store.getState().isFollowing) {
    store.setState({ notice: followingNotice });
    return;
  }
  const project = projectOf(store.getState());
  const { folder } = store.getState();
  const texts = saveProject(project);
  const written = await fileTexts(project, texts);
  const edits = editedTexts(project, written);
  const number = Object.keys(edits).length;
  if (number === 0) {
    store.setState({ saved: project, notice: { kind: 'info', text: 'no file was edited' } });
    return;
  }
  if (!folder) {
    const rest = downloadAll(edits);
    store.setState((state) => ({
      ...savedState(state, project, texts, written, true),
      notice: { kind: 'info', text: `downloaded ${countFiles(number)}${rest}` },
    }));
    return;
  }
  await requirePermission(folder);
  const failures = await writeFolder(folder, edits, openedTexts(project));
  const reasons = [...failures].map(([path, reason]) => `${path} is not: ${reason}`);
  const count = `saved ${countFiles(number - failures.size)} to '${folder.name}'`;
  store.setState((state) => ({
    ...savedState(
      state,
      project,
      without(texts, failures),
      without(written, failures),
      failures.size === 0,
    ),
    notice: {
      kind: failures.size > 0 ? 'error' : 'info',
      text: [count, ...reasons].join('; '),
    },
  }));
}
