// SPDX-License-Identifier: MIT
// The projects that this browser keeps, in IndexedDB.
import { type DBSchema, type IDBPDatabase, openDB } from 'idb';
import { isProject } from '../files/permalink';
import type { Project, StageName } from '../model/project';
import type { MeshName, TextureChoice } from '../model/store';
import type { Target } from 'morl';

/** A project in the list. */
export interface ProjectEntry {
  readonly id: string;
  readonly name: string;
  /** When it was edited last, in milliseconds. */
  readonly changed: number;
  /** When it was deleted, in milliseconds; null: it is not. */
  readonly deleted: number | null;
}

/** All that is kept of a project. Steps share what they have in common, here as in memory. */
export interface KeptState {
  readonly past: readonly Project[];
  readonly present: Project;
  readonly future: readonly Project[];
  readonly saved: Project;
  readonly shader: string;
  readonly selected: string | null;
  readonly target: Target;
  readonly stage: StageName;
  readonly mesh: MeshName | null;
  readonly camera: readonly number[] | null;
  readonly textures: ReadonlyMap<string, TextureChoice>;
  readonly folder: FileSystemDirectoryHandle | null;
}

interface Schema extends DBSchema {
  entries: { key: string; value: ProjectEntry };
  states: { key: string; value: KeptState };
}

/** How long a deleted project can be brought back, in milliseconds. */
const keptAfterDeletion = 30 * 24 * 3600 * 1000;

export class ProjectDatabase {
  private constructor(private readonly database: IDBPDatabase<Schema>) {}

  /** @throws DOMException if the browser keeps nothing for this page */
  static async open(): Promise<ProjectDatabase> {
    const database = await openDB<Schema>('morl', 1, {
      upgrade(created) {
        created.createObjectStore('entries', { keyPath: 'id' });
        created.createObjectStore('states');
      },
    });
    return new ProjectDatabase(database);
  }

  /** All projects, those edited last first. Those that were deleted long ago are gone. */
  async list(): Promise<ProjectEntry[]> {
    const entries = await this.database.getAll('entries');
    const isOld = ({ deleted }: ProjectEntry): boolean =>
      deleted !== null && deleted < Date.now() - keptAfterDeletion;
    await Promise.all(entries.filter(isOld).map(({ id }) => this.erase(id)));
    return entries.filter((entry) => !isOld(entry)).sort((a, b) => b.changed - a.changed);
  }

  entry(id: string): Promise<ProjectEntry | undefined> {
    return this.database.get('entries', id);
  }

  /** What is kept of a project; undefined: nothing that can be read. */
  async load(id: string): Promise<KeptState | undefined> {
    const state = await this.database.get('states', id);
    return state && isProject(state.present) ? state : undefined;
  }

  /** Keeps all of a project, or nothing of it. @throws DOMException if there is no room */
  async store(entry: ProjectEntry, state: KeptState): Promise<void> {
    const transaction = this.database.transaction(['entries', 'states'], 'readwrite');
    await Promise.all([
      transaction.objectStore('entries').put(entry),
      transaction.objectStore('states').put(state, entry.id),
      transaction.done,
    ]);
  }

  /** Keeps the state of a project that is in the list, also when the page goes right after this call. */
  async storeLeaving(id: string, state: KeptState): Promise<void> {
    const transaction = this.database.transaction('states', 'readwrite');
    const stored = transaction.store.put(state, id);
    // Browsers drop transactions of pages that are gone, unless they were told to finish them.
    transaction.commit();
    await Promise.all([stored, transaction.done]);
  }

  async storeEntry(entry: ProjectEntry): Promise<void> {
    await this.database.put('entries', entry);
  }

  private async erase(id: string): Promise<void> {
    const transaction = this.database.transaction(['entries', 'states'], 'readwrite');
    await Promise.all([
      transaction.objectStore('entries').delete(id),
      transaction.objectStore('states').delete(id),
      transaction.done,
    ]);
  }
}
