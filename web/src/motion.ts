// SPDX-License-Identifier: MIT

const reduced = window.matchMedia('(prefers-reduced-motion: reduce)');

/** How long something moves, in milliseconds: not at all for those who do not want that. */
export function moving(duration: number): number {
  return reduced.matches ? 0 : duration;
}

/** Whether a person wants as little motion as possible. */
export function wantsStill(): boolean {
  return reduced.matches;
}
