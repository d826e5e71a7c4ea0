// SPDX-License-Identifier: MIT

/** The time that a picture shows; it can stand still. */
export class Clock {
  /** What had gone by before it was started last, in milliseconds. */
  private before = 0;
  private startedAt: number | null = performance.now();

  get isRunning(): boolean {
    return this.startedAt !== null;
  }

  seconds(): number {
    const since = this.startedAt === null ? 0 : performance.now() - this.startedAt;
    return (this.before + since) / 1000;
  }

  run(isRunning: boolean): void {
    this.before = this.seconds() * 1000;
    this.startedAt = isRunning ? performance.now() : null;
  }

  reset(): void {
    this.before = 0;
    this.startedAt = this.isRunning ? performance.now() : null;
  }
}
