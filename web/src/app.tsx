// SPDX-License-Identifier: MIT
import { useEffect } from 'react';
import { EditorView } from './editor/editor_view';
import { FilesBar } from './files/files_bar';
import { GraphView } from './graph/graph_view';
import { MessagesView } from './messages_view';
import { redone, undone } from './model/store';
import { usePage, usePageStore } from './model/use_store';
import { Banners } from './projects/banners';
import { OutputView } from './output/output_view';
import { PreviewView } from './preview/preview_view';

function Notice() {
  const store = usePageStore();
  const notice = usePage((state) => state.notice);
  return (
    <div className={notice ? `notice ${notice.kind}` : 'notice'} role="status" aria-live="polite">
      {notice && (
        <>
          <span>{notice.text}</span>
          <button
            aria-label="Close this note"
            onClick={() => {
              store.setState({ notice: null });
            }}
          >
            ×
          </button>
        </>
      )}
    </div>
  );
}

/** Whether a field has its own undo for what is typed into it. */
function isField(target: EventTarget | null): boolean {
  return target instanceof HTMLInputElement && ['text', 'search', 'number'].includes(target.type);
}

/** The page. */
export function App() {
  const store = usePageStore();
  useEffect(() => {
    const onKey = (event: KeyboardEvent): void => {
      if (!(event.ctrlKey || event.metaKey) || isField(event.target)) {
        return;
      }
      const key = event.key.toLowerCase();
      if (key === 'z' || key === 'y') {
        event.preventDefault();
        store.setState(key === 'y' || event.shiftKey ? redone : undone);
      }
    };
    // Before the editor, so that undo goes over everything in one order.
    window.addEventListener('keydown', onKey, true);
    return () => {
      window.removeEventListener('keydown', onKey, true);
    };
  }, [store]);
  return (
    <>
      <FilesBar />
      <Banners />
      <main>
        <GraphView />
        <PreviewView />
        <EditorView />
        <OutputView />
        <MessagesView />
      </main>
      <Notice />
    </>
  );
}
