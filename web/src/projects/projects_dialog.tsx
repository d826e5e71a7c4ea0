// SPDX-License-Identifier: MIT
import { useCallback, useEffect, useRef, useState } from 'react';
import { messageOf } from '../message_of';
import { usePage, usePageStore } from '../model/use_store';
import type { ProjectEntry } from './database';
import { useSession } from './use_session';

function when(time: number): string {
  return new Date(time).toLocaleString(undefined, { dateStyle: 'medium', timeStyle: 'short' });
}

/** One project of the list. */
function Row({
  entry,
  onChange,
  onClose,
}: {
  entry: ProjectEntry;
  onChange: () => void;
  onClose: () => void;
}) {
  const store = usePageStore();
  const session = useSession();
  const openId = usePage((state) => state.project.id);
  const [name, setName] = useState(entry.name);
  const run = (action: Promise<unknown>): void => {
    action.then(onChange, (error: unknown) => {
      store.setState({ notice: { kind: 'error', text: messageOf(error) } });
      onClose();
    });
  };
  const commit = (): void => {
    const wanted = name.trim();
    if (wanted === '' || wanted === entry.name) {
      setName(entry.name);
    } else {
      run(session.rename(entry.id, wanted));
    }
  };
  if (entry.deleted !== null) {
    return (
      <li className="deleted">
        <span className="project-name">{entry.name}</span>
        <span className="muted">deleted {when(entry.deleted)}</span>
        <button
          onClick={() => {
            run(session.setDeleted(entry.id, false));
          }}
        >
          Bring back
        </button>
      </li>
    );
  }
  return (
    <li>
      <input
        className="project-name"
        aria-label={`Name of the project ${entry.name}`}
        value={name}
        onChange={(event) => {
          setName(event.target.value);
        }}
        onBlur={commit}
        onKeyDown={(event) => {
          if (event.key === 'Enter') {
            commit();
          }
        }}
      />
      <span className="muted">{when(entry.changed)}</span>
      <button
        disabled={entry.id === openId}
        onClick={() => {
          run(session.open(entry.id));
        }}
      >
        {entry.id === openId ? 'Is open' : 'Open'}
      </button>
      <button
        onClick={() => {
          run(session.duplicate(entry.id));
        }}
      >
        Duplicate
      </button>
      <button
        onClick={() => {
          run(session.setDeleted(entry.id, true));
        }}
      >
        Delete
      </button>
    </li>
  );
}

/** The list of all projects that this browser keeps. */
export function ProjectsDialog({ onClose }: { onClose: () => void }) {
  const session = useSession();
  const dialog = useRef<HTMLDialogElement>(null);
  const [entries, setEntries] = useState<readonly ProjectEntry[]>([]);
  const refresh = useCallback((): void => {
    void session.list().then(setEntries);
  }, [session]);
  useEffect(() => {
    dialog.current?.showModal();
    refresh();
  }, [refresh]);
  return (
    <dialog ref={dialog} className="projects" aria-label="Projects" onClose={onClose}>
      <h2>Projects</h2>
      <p className="muted">
        This browser keeps them, with their history. Deleted ones can be brought back for 30 days.
      </p>
      <ul>
        {entries.map((entry) => (
          <Row
            key={`${entry.id} ${entry.name} ${entry.deleted}`}
            entry={entry}
            onChange={refresh}
            onClose={onClose}
          />
        ))}
      </ul>
      <form method="dialog">
        <button>Close</button>
      </form>
    </dialog>
  );
}
