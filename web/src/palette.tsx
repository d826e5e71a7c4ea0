// SPDX-License-Identifier: MIT
import { useEffect, useId, useMemo, useRef, useState } from 'react';

/** One line of a palette. */
export interface PaletteItem {
  readonly name: string;
  /** What else can be typed to find it. */
  readonly detail?: string;
  /** The keys that do the same. */
  readonly keys?: string;
  readonly run: () => void;
}

const maxShown = 100;
/** How far a palette stays from the edges of the page, and how large it is at most, in CSS pixels. */
const margin = 8;
const largest = { width: 460, height: 380 };

/** The items that have all typed words, those first whose names begin like them. */
function matching(items: readonly PaletteItem[], typed: string): PaletteItem[] {
  const words = typed.toLowerCase().split(/\s+/).filter(Boolean);
  const rank = ({ name }: PaletteItem): number => {
    const at = name.toLowerCase().indexOf(words[0] ?? '');
    return at < 0 ? 2 : Math.min(at, 1);
  };
  const has = ({ name, detail = '' }: PaletteItem): boolean => {
    const text = `${name} ${detail}`.toLowerCase();
    return words.every((word) => text.includes(word));
  };
  return items
    .filter(has)
    .sort((one, other) => rank(one) - rank(other))
    .slice(0, maxShown);
}

function placeAt(at: { x: number; y: number } | undefined) {
  return at
    ? {
        margin: 0,
        left: Math.max(margin, Math.min(at.x, window.innerWidth - largest.width - margin)),
        top: Math.max(margin, Math.min(at.y, window.innerHeight - largest.height - margin)),
      }
    : undefined;
}

/** A list to choose from by typing, by keys or with the pointer. */
export function Palette({
  label,
  items,
  at,
  onClose,
}: {
  label: string;
  items: readonly PaletteItem[];
  /** Where on the page, in CSS pixels; without it, in the middle. */
  at?: { x: number; y: number };
  onClose: () => void;
}) {
  const dialog = useRef<HTMLDialogElement>(null);
  const id = useId();
  const [typed, setTyped] = useState('');
  const [current, setCurrent] = useState(0);
  const shown = useMemo(() => matching(items, typed), [items, typed]);
  useEffect(() => {
    dialog.current?.showModal();
  }, []);
  useEffect(() => {
    document.getElementById(`${id}${current}`)?.scrollIntoView({ block: 'nearest' });
  }, [id, current]);
  const choose = (item: PaletteItem | undefined): void => {
    if (item) {
      // Closing gives the focus back, and what is run may want it.
      dialog.current?.close();
      onClose();
      item.run();
    }
  };
  const onKeyDown = (event: React.KeyboardEvent): void => {
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    if (step !== undefined) {
      event.preventDefault();
      setCurrent((current + step + shown.length) % Math.max(shown.length, 1));
    } else if (event.key === 'Enter') {
      event.preventDefault();
      choose(shown[current]);
    }
  };
  return (
    <dialog
      ref={dialog}
      className="palette"
      aria-label={label}
      style={placeAt(at)}
      onClose={onClose}
      onClick={(event) => {
        // Outside of everything that it holds.
        if (event.target === dialog.current) {
          dialog.current.close();
        }
      }}
    >
      <input
        type="search"
        role="combobox"
        aria-label={label}
        aria-expanded="true"
        aria-controls={id}
        aria-activedescendant={shown.length > 0 ? `${id}${current}` : undefined}
        placeholder={label}
        value={typed}
        onChange={(event) => {
          setTyped(event.target.value);
          setCurrent(0);
        }}
        onKeyDown={onKeyDown}
      />
      <ul id={id} role="listbox" aria-label={label}>
        {shown.map((item, i) => (
          <li
            key={i}
            id={`${id}${i}`}
            role="option"
            aria-selected={i === current}
            onPointerMove={() => {
              setCurrent(i);
            }}
            onClick={() => {
              choose(item);
            }}
          >
            <span className="name">{item.name}</span>
            {item.detail !== undefined && <span className="detail">{item.detail}</span>}
            {item.keys !== undefined && <kbd>{item.keys}</kbd>}
          </li>
        ))}
      </ul>
      {shown.length === 0 && <p className="muted">Nothing has all of these words.</p>}
    </dialog>
  );
}
