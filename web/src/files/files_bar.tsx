// SPDX-License-Identifier: MIT
import { useRef, useState } from 'react';
import { useCommands } from '../commands';
import { Help } from '../help';
import { messageOf } from '../message_of';
import type { Project } from '../model/project';
import { isUnsaved, projectOf, redone, type Theme, undone } from '../model/store';
import { usePage, usePageStore } from '../model/use_store';
import { copyText } from './clipboard';
import { ProjectsDialog } from '../projects/projects_dialog';
import { useSession } from '../projects/use_session';
import { ShaderChooser } from '../shader_chooser';
import { Toolbar } from '../toolbar';
import { canOpenFolders, openProject, readChosen, readFolder } from './folder';
import { readSources } from './node_source';
import { toLink } from './permalink';
import { saveEdits } from './save';
import { sampleProject } from './samples';

function isCancelled(error: unknown): boolean {
  return error instanceof DOMException && error.name === 'AbortError';
}

/**
 * Opening, saving, sharing, and what goes over everything.
 * @param onCommands opens the list of all commands
 */
export function FilesBar({ onCommands }: { onCommands: () => void }) {
  const store = usePageStore();
  const chooser = useRef<HTMLInputElement>(null);
  const session = useSession();
  const [isListOpen, setListOpen] = useState(false);
  const [isHelpOpen, setHelpOpen] = useState(false);
  const projectName = usePage((state) => state.project.name);
  const hasUnsaved = usePage(isUnsaved);
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
  const openSamples = (): void => {
    void attempt(() => session.create('Samples', sampleProject()));
  };
  const switchTheme = (): void => {
    const next: Theme = theme === 'dark' ? 'light' : 'dark';
    store.setState({ theme: next });
  };
  const openList = (): void => {
    setListOpen(true);
  };
  const openHelp = (): void => {
    setHelpOpen(true);
  };
  useCommands(() => [
    { name: 'First steps and keys', run: openHelp },
    { name: 'Save', keys: 'Ctrl+S', run: () => void saveEdits(store) },
    {
      name: 'Undo',
      keys: 'Ctrl+Z',
      run: () => {
        store.setState(undone);
      },
    },
    {
      name: 'Redo',
      keys: 'Ctrl+Y',
      run: () => {
        store.setState(redone);
      },
    },
    { name: 'Open files or a folder…', run: open },
    { name: 'All projects…', run: openList },
    { name: 'Open the samples as a new project', run: openSamples },
    { name: 'Copy a link that holds the graph', run: share },
    { name: 'Switch between light and dark', run: switchTheme },
  ]);

  return (
    <header className="top">
      <h1>morl</h1>
      <button aria-haspopup="dialog" title="All projects" onClick={openList}>
        {projectName} ▾
      </button>
      {isListOpen && (
        <ProjectsDialog
          onClose={() => {
            setListOpen(false);
          }}
        />
      )}
      {isHelpOpen && (
        <Help
          onClose={() => {
            setHelpOpen(false);
          }}
        />
      )}
      <ShaderChooser />
      <span className="space" />
      <Toolbar label="Project">
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
        <button onClick={openSamples}>Samples</button>
        <button aria-label="Switch between light and dark" onClick={switchTheme}>
          {theme === 'dark' ? 'Light' : 'Dark'}
        </button>
        <button
          aria-haspopup="dialog"
          title="Everything that can be done (Ctrl+K)"
          onClick={onCommands}
        >
          Commands
        </button>
        <button aria-haspopup="dialog" title="First steps and keys" onClick={openHelp}>
          Help
        </button>
      </Toolbar>
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
