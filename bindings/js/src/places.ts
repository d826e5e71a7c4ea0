// SPDX-License-Identifier: MIT

const encoder = new TextEncoder();
const decoder = new TextDecoder("utf-8", { ignoreBOM: true });

/** Turns a column in bytes into one in UTF-16 code units; both are 1-based, and 0 stays 0. */
export type ColumnReader = (name: string, line: number, column: number) => number;

/**
 * Makes a reader for the columns of some texts.
 * @param contentOf gets a text by its name; it is asked once for each
 */
export function columnReader(contentOf: (name: string) => string): ColumnReader {
  /** The lines of the texts; undefined for those in which a character is a byte. */
  const texts = new Map<string, string[] | undefined>();
  return (name, line, column) => {
    if (column <= 1) {
      return column;
    }
    if (!texts.has(name)) {
      const content = contentOf(name);
      texts.set(name, /[^\x00-\x7f]/.test(content) ? content.split("\n") : undefined);
    }
    const lines = texts.get(name);
    if (!lines) {
      return column;
    }
    const before = encoder.encode(lines[line - 1] ?? "").subarray(0, column - 1);
    return decoder.decode(before).length + 1;
  };
}
