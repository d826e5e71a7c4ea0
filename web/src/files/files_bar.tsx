// SPDX-License-Identifier: MIT
import { useRef, useState } from 'react';
import { messageOf } from '../message_of';
import { addShader, type Project } from '../model/project';
import { edited, isUnsaved, projectOf, redone, type Theme, undone } from '../model/store';
import { useAllMessages, usePage, usePageStore } from '../model/use_store';
import { copyText } from './clipboard';
import { ProjectsDialog } from '../projects/projects_dialog';
import { useSession } from '../projects/use_session';
import { canOpenFolders, openProject, readChosen, readFolder } from './folder';
import { readSources } from './node_source';
import { toLink } from './permalink';
import { saveEdits } from './save';
import { sampleProject } from './samples';

function isCancelled(error: unknown): boolean {
  return error instanceof DOMException && error.name === 'AbortError';
}

/** Opening, saving, sharing, and what goes over everything. */
export function FilesBar() {
  const store = usePageStore();
  const chooser = useRef<HTMLInputElement>(null);
  const session = useSession();
  const [isListOpen, setListOpen] = useState(false);
  const projectName = usePage((state) => state.project.name);
  const hasUnsaved = usePage(isUnsaved);
  const shader = usePage((state) => state.shader);
  const shaders = usePage((state) => projectOf(state).shaders);
  const canUndo = usePage((state) => state.history.past.length > 0);
  const canRedo = usePage((state) => state.history.future.length > 0);
  const theme = usePage((state) => state.theme);

  const { worst } = useAllMessages();
  /** What the list says of a shader that has faults or warnings. */
  const markOf = (name: string): string => {
    const severity = worst.get(name);
    return severity ? ` – ${severity}s` : '';
  };

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
  /** Opens texts as a new project. */
  const show = async (
    name: string,
    texts: Readonly<Record<string, string>>,
    folder: FileSystemDirectoryHandle | null = null,
  ): Promise<void> => {
    const project: Project = openProject(texts, await readSources(texts));
    await session.create(name, project, folder);
    const rest = project.manifest
      ? ''
      : '; there is no shaders.json, so put nodes into the passes of a new shader';
    inform('info', `opened '${name}'${rest}`);
  };
  const open = (): void => {
    if (!canOpenFolders()) {
      chooser.current?.click();
      return;
    }
    void attempt(async () => {
      const root = await window.showDirectoryPicker({ mode: 'readwrite' });
      await show(root.name || 'Folder', await readFolder(root), root);
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
      <button
        aria-haspopup="dialog"
        title="All projects"
        onClick={() => {
          setListOpen(true);
        }}
      >
        {projectName} ▾
      </button>
      {isListOpen && (
        <ProjectsDialog
          onClose={() => {
            setListOpen(false);
          }}
        />
      )}
      <label>
        Shader{' '}
        <select
          value={shader}
          onChange={(event) => {
            store.setState({ shader: event.target.value, mesh: null });
          }}
        >
          {shaders.map(({ name }, i) => (
            <option key={i} value={name}>
              {name + markOf(name)}
            </option>
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
      <button
        className={hasUnsaved ? 'unsaved' : undefined}
        title={hasUnsaved ? 'There are edits that no file has (Ctrl+S)' : 'Ctrl+S'}
        onClick={() => void saveEdits(store)}
      >
        {hasUnsaved ? 'Save ●' : 'Save'}
      </button>
      <button onClick={share}>Link</button>
      <button
        onClick={() => {
          void attempt(() => session.create('Samples', sampleProject()));
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
            await show('Files', await readChosen(chosen));
          });
        }}
      />
    </header>
  );
}
