// SPDX-License-Identifier: MIT
// What can be done, by name: every view adds what it can do, and the palette lists it.
import { createContext, useContext, useEffect, useRef } from 'react';

export interface Command {
  readonly name: string;
  /** The keys that do the same, as a person presses them. */
  readonly keys?: string;
  /** Whether it is one of many, such as the names of shaders, which are listed last. */
  readonly isChoice?: boolean;
  readonly run: () => void;
}

type Source = () => readonly Command[];

export class CommandList {
  private readonly sources = new Set<Source>();

  /** Returns what takes them away again. */
  add(source: Source): () => void {
    this.sources.add(source);
    return () => {
      this.sources.delete(source);
    };
  }

  /** What can be done now. */
  all(): Command[] {
    const all = [...this.sources].flatMap((source) => source());
    return [...all.filter((one) => !one.isChoice), ...all.filter((one) => one.isChoice)];
  }
}

export const CommandContext = createContext(new CommandList());

/** Adds what a view can do, as long as it is shown. */
export function useCommands(source: Source): void {
  const list = useContext(CommandContext);
  const latest = useRef(source);
  useEffect(() => {
    latest.current = source;
  });
  useEffect(() => list.add(() => latest.current()), [list]);
}
