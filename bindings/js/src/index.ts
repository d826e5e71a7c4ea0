// SPDX-License-Identifier: MIT
export { Compiler, type CreateOptions } from "./compiler.js";
export { MorlError, type ErrorKind } from "./error.js";
export { targets } from "./targets.js";
export type {
  Declare,
  Fault,
  MacroUse,
  MorlNode,
  Request,
  Result,
  SourceLine,
  Stage,
  Target,
  Warning,
} from "./types.js";
