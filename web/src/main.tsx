// SPDX-License-Identifier: MIT
import '@xyflow/react/dist/style.css';
import '../node_modules/lil-gui/dist/lil-gui.css';
import './app.css';
import { StrictMode } from 'react';
import { createRoot } from 'react-dom/client';
import { App } from './app';
import { CompilerClient } from './compiler/client';
import { ErrorBoundary } from './error_boundary';
import { messageOf } from './message_of';
import { fromLink, isLink } from './files/permalink';
import { sampleProject } from './files/samples';
import { storedText, storeText } from './files/storage';
import {
  initialState,
  isUnsaved,
  makeStore,
  projectOf,
  type Store,
  type Theme,
} from './model/store';
import { StoreContext } from './model/use_store';
import { wantsPictures } from './preview/node_pictures';
import { Session } from './projects/session';
import { SessionContext } from './projects/use_session';

const themeKey = 'morl.theme';

function startTheme(): Theme {
  const chosen = storedText(themeKey);
  const prefersDark = window.matchMedia('(prefers-color-scheme: dark)').matches;
  return chosen === 'light' || chosen === 'dark' ? chosen : prefersDark ? 'dark' : 'light';
}

/** Opens the link in the address, if there is one, as a project of its own. */
async function openLink(store: Store, session: Session): Promise<void> {
  const { hash } = location;
  if (!isLink(hash)) {
    return;
  }
  window.history.replaceState(null, '', location.pathname + location.search);
  try {
    await session.create('Link', fromLink(hash));
  } catch (error) {
    store.setState({ notice: { kind: 'error', text: messageOf(error) } });
  }
}

/** Keeps the last edits as the page goes, and asks before edits are left that no browser and no file has. */
function guardEdits(store: Store, session: Session): void {
  window.addEventListener('beforeunload', (event) => {
    const { folder } = store.getState();
    if (session.isPending || (folder && isUnsaved(store.getState()))) {
      event.preventDefault();
    }
    session.keepLeaving();
  });
  document.addEventListener('visibilitychange', () => {
    session.keepLeaving();
  });
}

function startCompiler(store: Store): void {
  const client = new CompilerClient({
    onAnswer: (answer) => {
      store.setState({ answer });
    },
    onRestart: (failure) => {
      const text = `${failure}; it was started again, and has all nodes`;
      store.setState({ notice: { kind: 'error', text } });
    },
    onOther: (shader, messages, project) => {
      store.setState(({ others }) => ({
        others: new Map([...others, [shader, { messages, project }]]),
      }));
    },
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
  });
  compile();
}

function showTheme(store: Store): void {
  const show = (): void => {
    document.documentElement.dataset.theme = store.getState().theme;
  };
  store.subscribe((state, before) => {
    if (state.theme !== before.theme) {
      storeText(themeKey, state.theme);
      show();
    }
  });
  show();
}

async function start(): Promise<void> {
  const store = makeStore({
    ...initialState(sampleProject(), startTheme()),
    showsPictures: wantsPictures(),
  });
  const session = await Session.start(store);
  await openLink(store, session);
  window.addEventListener('hashchange', () => void openLink(store, session));
  store.subscribe((state, before) => {
    if (state.history.present !== before.history.present && isLink(location.hash)) {
      // The address no longer holds this graph; a reload shall find the edits.
      window.history.replaceState(null, '', location.pathname + location.search);
    }
  });
  guardEdits(store, session);
  showTheme(store);
  startCompiler(store);
  const root = document.getElementById('root');
  if (root) {
    createRoot(root).render(
      <StrictMode>
        <ErrorBoundary projectNow={() => projectOf(store.getState())}>
          <SessionContext value={session}>
            <StoreContext value={store}>
              <App />
            </StoreContext>
          </SessionContext>
        </ErrorBoundary>
      </StrictMode>,
    );
  }
}

void start();
