// SPDX-License-Identifier: MIT
export { Compiler, type CreateOptions } from "./compiler.js";
export { MorlError, type ErrorKind } from "./error.js";
export { targets } from "./targets.js";
export type {
  BaseType,
  Declare,
  Fault,
  MacroUse,
  MorlNode,
  Program,
  ProgramRequest,
  ProgramUniform,
  Request,
  Result,
  SemanticKind,
  SourceLine,
  Stage,
  Target,
  Varying,
  Warning,
} from "./types.js";
