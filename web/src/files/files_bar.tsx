// SPDX-License-Identifier: MIT
import { useRef, useState } from 'react';
import { addShader, newId, type Project } from '../model/project';
import { changeAll } from '../model/history';
import { edited, projectOf, redone, type Theme, undone } from '../model/store';
import { usePage, usePageStore } from '../model/use_store';
import { copyText } from './clipboard';
import { download } from './download';
import {
  afterSave,
  canOpenFolders,
  editedTexts,
  openedTexts,
  openProject,
  readChosen,
  readFolder,
  saveProject,
  writeFolder,
} from './folder';
import { fileTexts, readSources } from './node_source';
import { toLink } from './permalink';
import { sampleProject } from './samples';

function messageOf(error: unknown): string {
  return error instanceof Error ? error.message : String(error);
}

function isCancelled(error: unknown): boolean {
  return error instanceof DOMException && error.name === 'AbortError';
}

/** A folder that was opened, and the name that projects know it by. */
interface OpenedFolder {
  readonly id: string;
  readonly root: FileSystemDirectoryHandle;
}

/** Opening, saving, sharing, and what goes over everything. */
export function FilesBar() {
  const store = usePageStore();
  const chooser = useRef<HTMLInputElement>(null);
  const [folder, setFolder] = useState<OpenedFolder | null>(null);
  const shader = usePage((state) => state.shader);
  const shaders = usePage((state) => projectOf(state).shaders);
  const canUndo = usePage((state) => state.history.past.length > 0);
  const canRedo = usePage((state) => state.history.future.length > 0);
  const theme = usePage((state) => state.theme);

  const inform = (kind: 'info' | 'error', text: string): void => {
    store.setState({ notice: { kind, text } });
  };
  /** Runs what may fail; nothing has changed then. */
  const attempt = async (run: () => Promise<void>): Promise<void> => {
    try {
      await run();
    } catch (error) {
      if (!isCancelled(error)) {
        inform('error', messageOf(error));
      }
    }
  };
  const show = (project: Project): void => {
    // An opened project can be undone like an edit.
    store.setState((state) => ({ ...edited(state, () => project), mesh: null }));
  };
  const open = (): void => {
    if (!canOpenFolders()) {
      chooser.current?.click();
      return;
    }
    void attempt(async () => {
      const root = await window.showDirectoryPicker({ mode: 'readwrite' });
      const opened = { id: newId(), root };
      const texts = await readFolder(root);
      show(openProject(texts, opened.id, await readSources(texts)));
      setFolder(opened);
      inform('info', `opened '${root.name}'`);
    });
  };
  const save = (): void => {
    void attempt(async () => {
      const project = projectOf(store.getState());
      const texts = saveProject(project);
      const written = await fileTexts(project, texts);
      const edits = editedTexts(project, written);
      const number = Object.keys(edits).length;
      const what = number === 1 ? '1 edited file' : `${number} edited files`;
      if (number === 0) {
        inform('info', 'no file was edited');
      } else if (folder && project.origin === folder.id) {
        await writeFolder(folder.root, edits, openedTexts(project));
        // Not an edit: also what undo brings back was made from the files as they are now.
        store.setState((state) => ({
          history: changeAll(state.history, (step) => afterSave(step, project, texts, written)),
        }));
        inform('info', `saved ${what} to '${folder.root.name}'`);
      } else {
        Object.entries(edits).forEach(([path, text]) => {
          if (text !== null) {
            download(path.split('/').at(-1) ?? path, text);
          }
        });
        const removed = Object.keys(edits).filter((path) => edits[path] === null);
        const rest = removed.length > 0 ? `; remove ${removed.join(', ')} yourself` : '';
        inform('info', `downloaded ${what}${rest}`);
      }
    });
  };
  const share = (): void => {
    const link = toLink(projectOf(store.getState()));
    history.replaceState(null, '', link);
    void copyText(location.href).then((isCopied) => {
      const where = isCopied ? 'the link is copied' : 'the address of this page is the link now';
      inform('info', `${where} (${link.length} bytes); it holds the whole graph`);
    });
  };
  const newShader = (): void => {
    store.setState((state) => {
      const added = addShader(projectOf(state), 'shader');
      return { ...edited(state, () => added.project), shader: added.name };
    });
  };

  return (
    <header className="top">
      <h1>morl</h1>
      <label>
        Shader{' '}
        <select
          value={shader}
          onChange={(event) => {
            store.setState({ shader: event.target.value, mesh: null });
          }}
        >
          {shaders.map(({ name }) => (
            <option key={name}>{name}</option>
          ))}
        </select>
      </label>
      <button onClick={newShader}>New shader</button>
      <span className="space" />
      <button
        disabled={!canUndo}
        onClick={() => {
          store.setState(undone);
        }}
      >
        Undo
      </button>
      <button
        disabled={!canRedo}
        onClick={() => {
          store.setState(redone);
        }}
      >
        Redo
      </button>
      <button onClick={open}>Open…</button>
      <button onClick={save}>Save</button>
      <button onClick={share}>Link</button>
      <button
        onClick={() => {
          show(sampleProject());
        }}
      >
        Samples
      </button>
      <button
        aria-label="Switch between light and dark"
        onClick={() => {
          const next: Theme = theme === 'dark' ? 'light' : 'dark';
          store.setState({ theme: next });
        }}
      >
        {theme === 'dark' ? 'Light' : 'Dark'}
      </button>
      <input
        ref={chooser}
        type="file"
        multiple
        hidden
        accept=".morl,.morlsource,.json"
        onChange={(event) => {
          const chosen = [...(event.target.files ?? [])];
          event.target.value = '';
          void attempt(async () => {
            const texts = await readChosen(chosen);
            show(openProject(texts, null, await readSources(texts)));
          });
        }}
      />
    </header>
  );
}
