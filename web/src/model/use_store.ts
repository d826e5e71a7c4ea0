// SPDX-License-Identifier: MIT
import { createContext, useContext, useMemo } from 'react';
import { useStore } from 'zustand';
import type { Project } from './project';
import { type AllMessages, allMessages } from './all_messages';
import { edited, projectOf, type State, type Store } from './store';

export const StoreContext = createContext<Store | null>(null);

export function usePageStore(): Store {
  const store = useContext(StoreContext);
  if (!store) {
    throw new Error('there is no store around this component');
  }
  return store;
}

/** A part of the state. */
export function usePage<Part>(select: (state: State) => Part): Part {
  return useStore(usePageStore(), select);
}

/** What is wrong anywhere in the project. */
export function useAllMessages(): AllMessages {
  const project = usePage(projectOf);
  const answer = usePage((state) => state.answer);
  const driverMessages = usePage((state) => state.driverMessages);
  const others = usePage((state) => state.others);
  const shader = usePage((state) => state.shader);
  return useMemo(
    () => allMessages({ answer, driverMessages, others, shader }, project),
    [answer, driverMessages, others, shader, project],
  );
}

/** Edits the project as one step of undo. */
export function useEdit(): (edit: (project: Project) => Project, run?: string) => void {
  const store = usePageStore();
  return (edit, run) => {
    store.setState((state) => edited(state, edit, run));
  };
}
