// SPDX-License-Identifier: MIT
// Of the tabs that show a project, one edits it.

/** What tabs tell each other. */
interface TabMessage {
  readonly kind: 'kept' | 'yield' | 'yielded';
  /** Of the project. */
  readonly id: string;
}

export interface TabEvents {
  /** This tab may edit from now on, because the one that did has gone. */
  onFree(): void;
  /** Another tab edits from now on. */
  onLost(): void;
  /** Another tab has kept its edits. */
  onKept(): void;
  /** Another tab wants to edit: keep everything, then stop. */
  onYield(): Promise<void>;
}

/** How long a tab that edits may take to keep its edits before another one goes on without it. */
const patience = 1500; // milliseconds

function lockName(id: string): string {
  return `morl.project.${id}`;
}

/** The part of a tab in who edits a project. */
export class TabLock {
  private readonly channel = new BroadcastChannel('morl.projects');
  private id = '';
  private onYielded: () => void = () => undefined;
  /** Gives up the lock, or the wait for it. */
  private leave: () => void = () => undefined;

  constructor(private readonly events: TabEvents) {
    this.channel.onmessage = (event: MessageEvent<TabMessage>) => {
      const { kind, id } = event.data;
      if (id !== this.id) {
        return;
      }
      if (kind === 'kept') {
        events.onKept();
      } else if (kind === 'yielded') {
        this.onYielded();
      } else {
        void events.onYield().then(() => {
          this.tell('yielded', id);
        });
      }
    };
  }

  /**
   * Enters another project than the one that this tab has.
   * @returns whether this tab edits it, and how to leave the one before
   */
  async enter(id: string): Promise<{ isMine: boolean; leaveLast: () => void }> {
    const leaveLast = this.leave;
    const isMine = await this.request(id, { ifAvailable: true });
    this.id = id;
    if (!isMine) {
      this.wait(id);
    }
    return { isMine, leaveLast };
  }

  /** Waits for the tab that edits to leave. */
  private wait(id: string): void {
    const wait = new AbortController();
    this.leave = () => {
      wait.abort();
    };
    void this.request(id, { signal: wait.signal }).then((isFree) => {
      if (isFree && this.id === id) {
        this.events.onFree();
      }
    });
  }

  /** Takes the project over from the tab that edits it, once that has kept its edits. */
  async takeOver(): Promise<void> {
    const { id } = this;
    const answer = new Promise<void>((done) => {
      this.onYielded = done;
      setTimeout(done, patience);
    });
    this.tell('yield', id);
    await answer;
    this.leave();
    await this.request(id, { steal: true });
  }

  tell(kind: TabMessage['kind'], id: string): void {
    this.channel.postMessage({ kind, id });
  }

  /** Asks for the lock of a project. Returns whether this tab has it now. */
  private request(id: string, options: LockOptions): Promise<boolean> {
    // Pages without a secure address have no locks.
    if (!('locks' in navigator)) {
      return Promise.resolve(true);
    }
    return new Promise((resolve) => {
      let isHeld = false;
      const hold = (lock: Lock | null): Promise<void> | undefined => {
        isHeld = lock !== null;
        resolve(isHeld);
        return lock
          ? new Promise((done) => {
              this.leave = done;
            })
          : undefined;
      };
      // It fails when the wait is given up, and when another tab takes the lock away.
      navigator.locks.request(lockName(id), options, hold).catch(() => {
        resolve(false);
        if (isHeld && this.id === id) {
          this.events.onLost();
          this.wait(id);
        }
      });
    });
  }
}
