// SPDX-License-Identifier: MIT
import '@xyflow/react/dist/style.css';
import '../node_modules/lil-gui/dist/lil-gui.css';
import './app.css';
import { StrictMode } from 'react';
import { createRoot } from 'react-dom/client';
import { App } from './app';
import { CompilerClient } from './compiler/client';
import { fromLink, isLink } from './files/permalink';
import { sampleProject } from './files/samples';
import { keep, kept, storedText, storeText } from './files/storage';
import type { Project } from './model/project';
import {
  edited,
  initialState,
  makeStore,
  type Notice,
  projectOf,
  type Store,
  type Theme,
} from './model/store';
import { StoreContext } from './model/use_store';

const themeKey = 'morl.theme';

function startTheme(): Theme {
  const chosen = storedText(themeKey);
  const prefersDark = window.matchMedia('(prefers-color-scheme: dark)').matches;
  return chosen === 'light' || chosen === 'dark' ? chosen : prefersDark ? 'dark' : 'light';
}

/** What the last visit has left, or the samples. */
function startProject(): { project: Project; notice: Notice | null } {
  try {
    return { project: kept() ?? sampleProject(), notice: null };
  } catch (error) {
    const text = error instanceof Error ? error.message : String(error);
    return { project: sampleProject(), notice: { kind: 'error', text } };
  }
}

/** Opens the link in the address, if there is one. What was there before is one undo away. */
function openLink(store: Store): void {
  if (!isLink(location.hash)) {
    return;
  }
  try {
    const project = fromLink(location.hash);
    store.setState((state) => ({ ...edited(state, () => project), mesh: null }));
  } catch (error) {
    const text = error instanceof Error ? error.message : String(error);
    store.setState({ notice: { kind: 'error', text } });
  }
  window.history.replaceState(null, '', location.pathname + location.search);
}

function keepEverything(store: Store): void {
  let timer = 0; // 0: everything is kept
  const save = (): void => {
    clearTimeout(timer);
    timer = 0;
    if (!keep(projectOf(store.getState()))) {
      const text = 'the browser has no room to keep your edits; save them before you leave';
      store.setState({ notice: { kind: 'error', text } });
    }
  };
  store.subscribe((state, before) => {
    if (state.history.present !== before.history.present) {
      clearTimeout(timer);
      timer = window.setTimeout(save, 300);
      if (isLink(location.hash)) {
        // The address no longer holds this graph; a reload shall find the edits.
        window.history.replaceState(null, '', location.pathname + location.search);
      }
    }
    if (state.theme !== before.theme) {
      storeText(themeKey, state.theme);
    }
  });
  // Another tab may have kept newer edits than a project that was not edited here.
  window.addEventListener('pagehide', () => {
    if (timer !== 0) {
      save();
    }
  });
}

function start(): void {
  const { project, notice } = startProject();
  const store = makeStore({ ...initialState(project, startTheme()), notice });
  openLink(store);
  window.addEventListener('hashchange', () => {
    openLink(store);
  });
  keepEverything(store);
  const client = new CompilerClient((answer) => {
    store.setState({ answer });
  });
  const compile = (): void => {
    client.compile(projectOf(store.getState()), store.getState().shader);
  };
  store.subscribe((state, before) => {
    const { nodes, shaders } = projectOf(state);
    const old = projectOf(before);
    if (nodes !== old.nodes || shaders !== old.shaders || state.shader !== before.shader) {
      compile();
    }
    document.documentElement.dataset.theme = state.theme;
  });
  document.documentElement.dataset.theme = store.getState().theme;
  compile();
  const root = document.getElementById('root');
  if (root) {
    createRoot(root).render(
      <StrictMode>
        <StoreContext value={store}>
          <App />
        </StoreContext>
      </StrictMode>,
    );
  }
}

start();
