// SPDX-License-Identifier: MIT
// What the page and its worker tell each other.
import { type Result, type Target, targets } from 'morl';
import type { StageName } from '../model/project';

export { targets };
export const stages: readonly StageName[] = ['vertex', 'fragment'];

/** A node as the compiler needs it. */
export interface SourceNode {
  readonly name: string;
  readonly content: string;
  readonly references: readonly string[];
}

/** Nodes that have changed since the last job, and the shader to compile. */
export interface Job {
  readonly id: number;
  readonly changed: readonly SourceNode[];
  readonly removed: readonly string[];
  readonly vertex: readonly string[];
  readonly fragment: readonly string[];
  readonly macros: Readonly<Record<string, number>>;
  readonly targetMacros: Readonly<Record<string, Readonly<Record<string, number>>>>;
  readonly samplers: Readonly<Record<string, number>>;
  /** Macros that other shaders set: this one may leave them out. */
  readonly optionalMacros: readonly string[];
}

/** The text of one pass in one target; null: the request was refused. */
export type Texts = Readonly<Record<Target, Readonly<Record<StageName, Result | null>>>>;

/** A fault or a warning of the graph. */
export interface Message {
  readonly severity: 'error' | 'warning';
  /** Empty: the shader as a whole. */
  readonly node: string;
  /** 1-based; 0: no place. */
  readonly line: number;
  /** 1-based, in UTF-16 code units; 0: no place. */
  readonly column: number;
  readonly text: string;
  /** The likely cause; empty: nothing is known. */
  readonly hint: string;
  /** The targets that it is about. */
  readonly targets: readonly Target[];
  /** The name of the check; empty: a fault. */
  readonly check: string;
}

export interface Answer {
  readonly id: number;
  readonly texts: Texts;
  readonly messages: readonly Message[];
  /** The time of all requests, in microseconds. */
  readonly microseconds: number;
  /** What kept the compiler from working at all; otherwise empty. */
  readonly failure: string;
}

/** What is shown when the compiler does not work at all. */
export function failedAnswer(id: number, failure: string): Answer {
  const texts = Object.fromEntries(
    targets.map((target) => [target, Object.fromEntries(stages.map((stage) => [stage, null]))]),
  ) as unknown as Texts;
  return { id, texts, messages: [], microseconds: 0, failure };
}
