// SPDX-License-Identifier: MIT
import type { Result } from 'morl';

/** The lines (1-based) of a text that were made from a line of a node. */
export function linesFrom(result: Result, node: string, line: number): number[] {
  return result.lines.flatMap((from, i) =>
    from.node === node && from.line === line ? [i + 1] : [],
  );
}
