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
  /** The most work in `#for` loops, in visits to what is repeated; 200,000 suit an editor. */
  mostLoopWork?: number;
  /** The longest text, in bytes. */
  mostTextBytes?: number;
}

/** A request for both passes of a shader. */
export interface ProgramRequest extends Omit<Request, "stage" | "nodes" | "semantics"> {
  /** The names of the nodes of the vertex pass. */
  vertex: readonly string[];
  /** The names of the nodes of the fragment pass. */
  fragment: readonly string[];
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
  /** Whether compilers refuse the text because of it. */
  isRefused: boolean;
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
  /** The array size, with the values of macros; 0: no array, or not known. */
  elements: number;
  baseType: BaseType;
  /** Of a vector or matrix; 1: a number; 0: a sampler, or unknown. */
  rows: number;
  /** Of a matrix; 1: a vector or a number; 0: a sampler, or unknown. */
  columns: number;
  /** Of all elements, closely packed; 0: a sampler, or not known. */
  bytes: number;
  /** In hlsl10, where a uniform is in the constant buffer of the pass, in bytes; -1: not there. */
  offset: number;
  /** As declared, such as "TEXAUTO"; empty: not bound. */
  semantic: string;
  semanticKind: SemanticKind;
  /** Such as 1 of "COLOR1"; -1: the target writes none. */
  semanticIndex: number;
  /** The sampler's register or the texture coordinate, as written, or the render target; -1: none. */
  number: number;
  /** Whether the entry function reads or assigns it. */
  isUsed: boolean;
  /** The name of the node that declares it. */
  node: string;
  /** 1-based, in the node's content. */
  line: number;
  /** 1-based, in UTF-16 code units. */
  column: number;
  /** The names of further nodes that declare it. */
  repeatedBy: string[];
}

/** What a declaration consists of; `boneIndex`: integers in hlsl10, floats in other targets. */
export type BaseType =
  | "unknown"
  | "float"
  | "int"
  | "boneIndex"
  | "sampler1D"
  | "sampler1DArray"
  | "sampler2D"
  | "sampler2DArray"
  | "sampler3D"
  | "sampler3DArray"
  | "samplerCUBE";

/** What a declaration is bound to. */
export type SemanticKind =
  | "none"
  | "position"
  | "normal"
  | "tangent"
  | "binormal"
  | "blendIndices"
  | "blendWeight"
  | "texcoord"
  | "screenPosition"
  | "color"
  | "sampler"
  | "other";

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
  /** The size of the constant buffer in hlsl10, a multiple of 16; 0: none, or not known. */
  constantBytes: number;
}

/** A uniform of the vertex pass, the fragment pass, or both. */
export interface ProgramUniform {
  name: string;
  /** An index into the uniforms of the vertex pass; -1: it has none. */
  vertex: number;
  /** An index into the uniforms of the fragment pass; -1: it has none. */
  fragment: number;
}

/** What the vertex pass hands to the fragment pass. */
export interface Varying {
  name: string;
  /** An index into the outputs of the vertex pass; -1: nothing feeds it. */
  output: number;
  /** An index into the inputs of the fragment pass; -1: it is not read. */
  input: number;
}

/** Both passes of a shader as one program. */
export interface Program {
  vertex: Result;
  fragment: Result;
  uniforms: ProgramUniform[];
  varyings: Varying[];
  /** Of what does not fit together in the two passes. */
  warnings: Warning[];
}
