// SPDX-License-Identifier: MIT
import { useCallback, useContext, useEffect, useState } from 'react';
import { CommandContext } from './commands';
import { FilesBar } from './files/files_bar';
import { saveEdits } from './files/save';
import { LayoutView } from './layout_view';
import { redone, undone } from './model/store';
import { usePage, usePageStore } from './model/use_store';
import { Palette, type PaletteItem } from './palette';
import { Banners } from './projects/banners';
import { Toolbar } from './toolbar';

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

/** The parts of the page, and what has the focus in each. */
const parts = [
  { name: 'graph', focused: '.graph .canvas' },
  { name: 'source', focused: '.editor .cm-content' },
  { name: 'messages', focused: '.messages ul' },
  { name: 'picture', focused: '.picture canvas' },
  { name: 'texts', focused: '.output .cm-content' },
] as const;

function focusPart(part: (typeof parts)[number] | undefined): void {
  document.querySelector<HTMLElement>(part?.focused ?? '')?.focus();
}

/** Goes to the next part, or back to the one before. */
function focusNextPart(step: 1 | -1): void {
  const at = parts.findIndex(({ focused }) => document.activeElement?.closest(focused));
  const start = at < 0 && step < 0 ? 0 : at;
  focusPart(parts[(start + step + parts.length) % parts.length]);
}

/** Links over what comes before a part of the page, for those who use the Tab key. */
function SkipLinks() {
  return (
    <nav className="skip" aria-label="Skip">
      <Toolbar label="Skip to">
        {parts.map((part) => (
          <button
            key={part.name}
            onClick={() => {
              focusPart(part);
            }}
          >
            Skip to the {part.name}
          </button>
        ))}
      </Toolbar>
    </nav>
  );
}

/** The page. */
export function App() {
  const store = usePageStore();
  const commands = useContext(CommandContext);
  const [items, setItems] = useState<readonly PaletteItem[] | null>(null);
  useEffect(() => {
    const goes = parts.map((part) => ({
      name: `Go to the ${part.name}`,
      keys: 'F6 for the next',
      run: () => {
        focusPart(part);
      },
    }));
    return commands.add(() => goes);
  }, [commands]);
  const openPalette = useCallback((): void => {
    setItems(commands.all());
  }, [commands]);
  useEffect(() => {
    const onKey = (event: KeyboardEvent): void => {
      if (event.key === 'F6') {
        event.preventDefault();
        focusNextPart(event.shiftKey ? -1 : 1);
      }
      if (!(event.ctrlKey || event.metaKey)) {
        return;
      }
      const key = event.key.toLowerCase();
      if (key === 's') {
        event.preventDefault();
        void saveEdits(store);
      } else if (key === 'k') {
        event.preventDefault();
        openPalette();
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
  }, [store, openPalette]);
  return (
    <>
      <SkipLinks />
      <FilesBar onCommands={openPalette} />
      <Banners />
      <LayoutView />
      <Notice />
      {items && (
        <Palette
          label="What do you want to do?"
          items={items}
          onClose={() => {
            setItems(null);
          }}
        />
      )}
    </>
  );
}
