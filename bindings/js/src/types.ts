// SPDX-License-Identifier: MIT

import type { targets } from "./targets.js";

/** A target language. */
export type Target = (typeof targets)[number];

export type Stage = "vertex" | "fragment";

/** A node of the graph. */
export interface MorlNode {
  name: string;
  /** The source. */
  content: string;
  /** The names of the nodes that this one builds on. */
  references: string[];
  /** The place on an editor's canvas; the compiler does not use it. */
  x: number;
  y: number;
}

/** A request: one stage of a shader in one target language. */
export interface Request {
  target: Target;
  stage: Stage;
  /** The names of the nodes that take part: also those that others build on. */
  nodes: readonly string[];
  /** Values for `#if` and `#for`: 32-bit integers. */
  macros?: Readonly<Record<string, number>>;
  /** For the fragment stage: {@link Result.semantics} of the vertex stage. */
  semantics?: Readonly<Record<string, string>>;
  /** Registers of the samplers that are bound to `SAUTO`. */
  samplers?: Readonly<Record<string, number>>;
  /** Whether to look for what is probably a mistake, too. */
  warnings?: boolean;
}

/** What is wrong, and where. */
export interface Fault {
  level: "error" | "info";
  /** The name of the text of nodes, for faults of {@link Compiler.loadNodes}; otherwise empty. */
  file: string;
  /** The name of the node; empty: none, or not known. */
  node: string;
  /** What is wrong. */
  text: string;
  /** The likely cause, such as a word of another language; empty: nothing is known. */
  hint: string;
  /** 1-based, in the node's content or in the text of nodes; 0: no place. */
  line: number;
  /** 1-based, in UTF-16 code units, as editors count; 0: no place. */
  column: number;
}

/** Something that is probably a mistake, although the source has no fault. */
export interface Warning {
  /** The name of the check, such as "undeclared-name". */
  check: string;
  /** The name of the node; empty: the request as a whole. */
  node: string;
  /** What happens, and what to do. */
  text: string;
  /** 1-based, in the node's content; 0: no place. */
  line: number;
  /** 1-based, in UTF-16 code units; 0: no place. */
  column: number;
}

/** What a line of the code was made from. */
export interface SourceLine {
  /** The name of the node; empty: from no node, such as the header. */
  node: string;
  /** 1-based, in the node's content; 0 without a node. */
  line: number;
}

/** A uniform, an input or an output. */
export interface Declare {
  name: string;
  /** As declared, such as "float4" or "auto". */
  type: string;
  /** As the target spells it. */
  writtenType: string;
  /** As written; empty: no array. */
  arraySize: string;
  /** The array size if it is a number, otherwise 0. */
  elements: number;
  /** As declared, such as "TEXAUTO"; empty: not bound. */
  semantic: string;
  /** The sampler's register or the texture coordinate, as written; -1: none. */
  number: number;
  /** The name of the node that declares it. */
  node: string;
  /** 1-based, in the node's content. */
  line: number;
}

/** A macro that conditions and loops of the nodes have asked for. */
export interface MacroUse {
  name: string;
  /** The value used. */
  value: number;
  /** False: the request has not set it; it counted as 0, or its loop did not run. */
  isSet: boolean;
}

/** The result of a request. */
export interface Result {
  /** The shader. Where nodes have faults, it is made from what remains. */
  code: string;
  /** Of the vertex stage: the texture coordinates that the outputs got, for the fragment stage. */
  semantics: Record<string, string>;
  /** Of all nodes that took part, and of the request. */
  faults: Fault[];
  /** Empty unless the request wants them. */
  warnings: Warning[];
  /** The names of the nodes that were merged, in this order. */
  nodes: string[];
  /** The source map: one element for each line of the code. */
  lines: SourceLine[];
  /** In the order in which they are written. */
  uniforms: Declare[];
  inputs: Declare[];
  outputs: Declare[];
  /** In ascending order of the names. */
  macros: MacroUse[];
  /** Set by the request, but never asked for. */
  unusedMacros: string[];
}
