// SPDX-License-Identifier: MIT
import { createContext, useContext } from 'react';
import { useStore } from 'zustand';
import type { Project } from './project';
import type { AllMessages } from './all_messages';
import { allMessagesOf } from './selectors';
import { edited, type State, type Store } from './store';

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
  return usePage(allMessagesOf);
}

/** Edits the project as one step of undo. */
export function useEdit(): (edit: (project: Project) => Project, run?: string) => void {
  const store = usePageStore();
  return (edit, run) => {
    store.setState((state) => edited(state, edit, run));
  };
}
