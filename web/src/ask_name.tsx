// SPDX-License-Identifier: MIT
import { useEffect, useRef, useState } from 'react';

/** Asks for a name. */
export function AskName({
  label,
  name,
  onDone,
  onClose,
}: {
  label: string;
  /** What it is called so far. */
  name: string;
  onDone: (name: string) => void;
  onClose: () => void;
}) {
  const dialog = useRef<HTMLDialogElement>(null);
  const [typed, setTyped] = useState(name);
  useEffect(() => {
    dialog.current?.showModal();
    dialog.current?.querySelector('input')?.select();
  }, []);
  return (
    <dialog ref={dialog} className="ask" aria-label={label} onClose={onClose}>
      <form
        method="dialog"
        onSubmit={() => {
          onDone(typed);
        }}
      >
        <label>
          {label}{' '}
          <input
            value={typed}
            onChange={(event) => {
              setTyped(event.target.value);
            }}
          />
        </label>
        <div className="bar">
          <button>OK</button>
          <button type="button" onClick={() => dialog.current?.close()}>
            Cancel
          </button>
        </div>
      </form>
    </dialog>
  );
}
