// SPDX-License-Identifier: MIT
import { useEffect } from 'react';
import { FilesBar } from './files/files_bar';
import { saveEdits } from './files/save';
import { LayoutView } from './layout_view';
import { redone, undone } from './model/store';
import { usePage, usePageStore } from './model/use_store';
import { Banners } from './projects/banners';

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
      if (!(event.ctrlKey || event.metaKey)) {
        return;
      }
      const key = event.key.toLowerCase();
      if (key === 's') {
        event.preventDefault();
        void saveEdits(store);
      } else if (isField(event.target)) {
        return;
      } else if (key === 'z' || key === 'y') {
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
      <LayoutView />
      <Notice />
    </>
  );
}
