// SPDX-License-Identifier: MIT
// The project that this tab has open: keeping it, switching to another, sharing it with other tabs.
import { sampleProject } from '../files/samples';
import { whenSaved } from '../files/save';
import { storedText, storeText, takeOldProject } from '../files/storage';
import { newId, type Project } from '../model/project';
import { initialState, type State, type Store } from '../model/store';
import { type KeptState, ProjectDatabase, type ProjectEntry } from './database';
import { TabLock } from './tab_lock';

/** So long nothing is edited before edits are kept, in milliseconds; and so long at most after the first of them. */
const delay = 300;
const longestDelay = 1500;
/** So many steps of undo outlive a reload. */
const keptSteps = 50;
const lastKey = 'morl.last';

function keptState(state: State): KeptState {
  const { history, saved, shader, selected, target, stage, mesh, camera, textures, folder } = state;
  return {
    past: history.past.slice(-keptSteps),
    present: history.present,
    future: history.future.slice(0, keptSteps),
    saved,
    shader,
    selected,
    target,
    stage,
    mesh,
    camera,
    textures,
    folder,
  };
}

function isKeptDifferently(state: State, before: State): boolean {
  const now = keptState(state);
  const then = keptState(before);
  return (Object.keys(now) as (keyof KeptState)[]).some(
    (key) => key !== 'past' && key !== 'future' && now[key] !== then[key],
  );
}

/** The part of the state that a kept project decides. */
function restored(kept: KeptState): Partial<State> {
  const { past, present, future, ...rest } = kept;
  return { ...rest, history: { past, present, future, run: null, time: 0 } };
}

export class Session {
  private timer = 0;
  /** When the first edit was made that is not kept yet; null: there is none. */
  private dueSince: number | null = null; // 0: nothing waits to be kept
  private hasUnkeptEdits = false;
  private readonly lock = new TabLock({
    onFree: () => void this.editHere(),
    onLost: () => {
      void this.rescue();
      this.store.setState({ isFollowing: true });
    },
    onKept: () => {
      if (this.store.getState().isFollowing) {
        void this.reload();
      }
    },
    onYield: async () => {
      if (!this.store.getState().isFollowing) {
        await whenSaved();
        await this.keepAll();
        this.store.setState({ isFollowing: true });
      }
    },
  });

  private constructor(
    private readonly store: Store,
    private readonly database: ProjectDatabase | null,
  ) {
    store.subscribe((state, before) => {
      const isOwn = state.project === before.project && !state.isFollowing;
      if (isOwn && isKeptDifferently(state, before)) {
        this.hasUnkeptEdits ||= state.history.present !== before.history.present;
        this.keepSoon();
      }
    });
  }

  /** @param store its project is replaced by the one that this tab, or the last one, had open */
  static async start(store: Store): Promise<Session> {
    let database: ProjectDatabase | null = null;
    try {
      database = await ProjectDatabase.open();
    } catch (error) {
      store.setState({ unkept: String(error) });
    }
    const session = new Session(store, database);
    const last = session.lastId();
    if (!(last !== null && (await session.enter(last))) && !(await session.openNewest())) {
      const old = takeOldProject();
      await session.adopt(old ? 'Last visit' : 'Samples', old ?? sampleProject(), null);
    }
    return session;
  }

  /** Opens the project that was edited last. Returns whether there is one. */
  private async openNewest(): Promise<boolean> {
    for (const { id } of await this.list()) {
      if (await this.enter(id)) {
        return true;
      }
    }
    return false;
  }

  /** Whether there are edits that are not kept yet. */
  get isPending(): boolean {
    const { isFollowing, unkept } = this.store.getState();
    return !isFollowing && (this.hasUnkeptEdits || unkept !== '');
  }

  private keepSoon(): void {
    this.dueSince ??= Date.now();
    const rest = this.dueSince + longestDelay - Date.now();
    clearTimeout(this.timer);
    this.timer = window.setTimeout(() => void this.keepNow(), Math.max(0, Math.min(delay, rest)));
  }

  private forgetTimer(): void {
    clearTimeout(this.timer);
    this.dueSince = null;
  }

  /** Keeps edits that are not kept yet, as the page may be gone right after this call. */
  keepLeaving(): void {
    const state = this.store.getState();
    if (this.isPending) {
      this.database?.storeLeaving(state.project.id, keptState(state)).catch((error: unknown) => {
        this.store.setState({ unkept: String(error) });
      });
    }
  }

  /** Keeps the open project. What cannot be kept is marked until it can. */
  async keepNow(): Promise<void> {
    this.forgetTimer();
    const state = this.store.getState();
    if (state.isFollowing) {
      this.hasUnkeptEdits = false;
    }
    if (!this.database || state.isFollowing) {
      return;
    }
    try {
      const { id } = state.project;
      // Another tab may have given it a new name.
      const name = (await this.database.entry(id))?.name ?? state.project.name;
      const entry = { id, name, changed: Date.now(), deleted: null };
      await this.database.store(entry, keptState(state));
      this.hasUnkeptEdits &&= this.store.getState().history.present !== state.history.present;
      if (state.unkept !== '') {
        this.store.setState({ unkept: '' });
      }
      this.lock.tell('kept', id);
    } catch (error) {
      this.store.setState({ unkept: String(error) });
    }
  }

  /** Keeps also what is edited while it is being kept. */
  private async keepAll(): Promise<void> {
    do {
      await this.keepNow();
    } while (this.hasUnkeptEdits && this.store.getState().unkept === '');
  }

  /** Another tab has not waited for the last edits here: they become a project of their own. */
  private async rescue(): Promise<void> {
    const state = this.store.getState();
    if (!this.hasUnkeptEdits || !this.database) {
      return;
    }
    this.hasUnkeptEdits = false;
    const name = await this.freeName(state.project.name);
    const entry = { id: newId(), name, changed: Date.now(), deleted: null };
    await this.database.store(entry, { ...keptState(state), folder: null });
    const text = `your last edits here are in the project '${name}'`;
    this.store.setState({ notice: { kind: 'info', text } });
  }

  /** Makes sure that another project can be shown. @throws Error if the open one would be lost */
  private async requireKept(): Promise<void> {
    await whenSaved();
    await this.keepAll();
    if (this.store.getState().unkept !== '' && this.database) {
      throw new Error(
        'the open project is not kept in this browser, and would be lost: save it, or delete other projects',
      );
    }
  }

  /** Opens a new project; the one that was open stays in the list. */
  async create(
    name: string,
    project: Project,
    folder: FileSystemDirectoryHandle | null = null,
  ): Promise<void> {
    await this.requireKept();
    await this.adopt(name, project, folder);
  }

  /** Opens a project of the list. @throws Error if it cannot be read */
  async open(id: string): Promise<void> {
    await this.requireKept();
    if (!(await this.enter(id))) {
      throw new Error('what is kept of this project cannot be read');
    }
  }

  /** Shows a project of the list. Returns whether it can be read. */
  private async enter(id: string): Promise<boolean> {
    const entry = await this.database?.entry(id);
    const kept = await this.database?.load(id);
    if (!entry || !kept || entry.deleted !== null) {
      return false;
    }
    const { isMine, leaveLast } = await this.lock.enter(id);
    // Another tab may have kept something between the look and the lock.
    const newest = (await this.database?.load(id)) ?? kept;
    await this.show(entry, { ...restored(newest), isFollowing: !isMine });
    leaveLast();
    return true;
  }

  async list(): Promise<ProjectEntry[]> {
    return (await this.database?.list()) ?? [];
  }

  /** @param id of the open project or of another one */
  async rename(id: string, name: string): Promise<void> {
    const entry = await this.database?.entry(id);
    if (entry) {
      await this.database?.storeEntry({ ...entry, name });
    }
    if (id === this.store.getState().project.id) {
      this.store.setState({ project: { id, name } });
    }
  }

  async duplicate(id: string): Promise<void> {
    await this.keepNow();
    const entry = await this.database?.entry(id);
    const kept = await this.database?.load(id);
    if (entry && kept) {
      const name = await this.freeName(entry.name);
      // Two projects must not write the same folder.
      const copy = { ...kept, folder: null };
      await this.database?.store({ ...entry, id: newId(), name, changed: Date.now() }, copy);
    }
  }

  /** Deletes a project, or brings it back. It is really gone after 30 days. */
  async setDeleted(id: string, isDeleted: boolean): Promise<void> {
    await this.keepNow();
    const entry = await this.database?.entry(id);
    if (!entry) {
      return;
    }
    await this.database?.storeEntry({ ...entry, deleted: isDeleted ? Date.now() : null });
    if (id === this.store.getState().project.id && !(await this.openNewest())) {
      await this.adopt('Samples', sampleProject(), null);
    }
  }

  /** Edits the project in this tab, and no longer in the one that does. */
  async takeOver(): Promise<void> {
    await this.lock.takeOver();
    await this.editHere();
  }

  private async editHere(): Promise<void> {
    await this.reload();
    this.store.setState({ isFollowing: false });
  }

  /** Shows what another tab has kept; what is chosen here stays chosen. */
  private async reload(): Promise<void> {
    const { project } = this.store.getState();
    const kept = await this.database?.load(project.id);
    if (kept && this.store.getState().project.id === project.id) {
      const { past, present, future, saved, textures, folder } = kept;
      const history = { past, present, future, run: null, time: 0 };
      this.store.setState({ history, saved, textures, folder });
    }
  }

  private async adopt(
    wanted: string,
    project: Project,
    folder: FileSystemDirectoryHandle | null,
  ): Promise<void> {
    const entry = { id: newId(), name: await this.freeName(wanted) };
    const { leaveLast } = await this.lock.enter(entry.id);
    await this.show(entry, { ...initialState(project), folder, isFollowing: false });
    leaveLast();
    await this.keepNow();
  }

  /** Shows another project, once the last edit of this one is kept. */
  private async show(project: State['project'], state: Partial<State>): Promise<void> {
    if (this.hasUnkeptEdits) {
      await this.keepAll();
    }
    this.forgetTimer();
    this.hasUnkeptEdits = false;
    const { theme, unkept } = this.store.getState();
    this.store.setState({
      ...state,
      project: { id: project.id, name: project.name },
      theme,
      unkept,
      answer: null,
      others: new Map(),
      driverMessages: [],
      notice: null,
      goTo: null,
    });
    storeText(lastKey, project.id);
    try {
      sessionStorage.setItem(lastKey, project.id);
    } catch {
      // The browser lets pages keep nothing: the next visit begins anew.
    }
  }

  /** What this tab had open before a reload, or else what was open last in any tab. */
  private lastId(): string | null {
    try {
      return sessionStorage.getItem(lastKey) ?? storedText(lastKey);
    } catch {
      return null;
    }
  }

  private async freeName(wanted: string): Promise<string> {
    const names = new Set((await this.list()).map(({ name }) => name));
    let name = wanted;
    for (let i = 2; names.has(name); ++i) {
      name = `${wanted} ${i}`;
    }
    return name;
  }
}
