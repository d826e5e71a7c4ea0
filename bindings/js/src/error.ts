// SPDX-License-Identifier: MIT
import type { Fault } from "./types.js";

/**
 * Why a call failed:
 * - `nodes-refused`: a text of nodes has faults, which the error lists; nothing was loaded
 * - `request-refused`: an unknown node or target in a request; the error lists the faults
 * - `limit-reached`: a limit of the request
 * - `not-found`: there is no such node
 * - `out-of-memory`: the compiler is as before, or disposed of if a later call says so
 * - `invalid-argument`, `failed`: the message says more
 * - `disposed`: the compiler was disposed of
 */
export type ErrorKind =
  | "invalid-argument"
  | "out-of-memory"
  | "nodes-refused"
  | "request-refused"
  | "limit-reached"
  | "not-found"
  | "failed"
  | "disposed";

/** What the methods of a compiler throw. Unless it says otherwise, the compiler is unchanged. */
export class MorlError extends Error {
  readonly kind: ErrorKind;
  /** What is wrong with the nodes or the request; otherwise empty. */
  readonly faults: readonly Fault[];

  constructor(kind: ErrorKind, message: string, faults: readonly Fault[] = []) {
    super(message);
    this.name = "MorlError";
    this.kind = kind;
    this.faults = faults;
  }
}

/** By status of the C interface. */
const kinds: readonly ErrorKind[] = [
  "failed",
  "invalid-argument",
  "out-of-memory",
  "failed",
  "nodes-refused",
  "request-refused",
  "not-found",
  "failed",
  "failed",
  "limit-reached",
  "failed",
];

export function kindOfStatus(status: number): ErrorKind {
  return kinds[status] ?? "failed";
}
