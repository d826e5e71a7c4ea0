// SPDX-License-Identifier: MIT
import type { Result } from 'morl';
import type { Message } from '../compiler/protocol';

/** "ERROR: 0:12: 'x' : undeclared identifier", as browsers write it; other drivers write "0(12) : error ...". */
const patterns = [
  /^(ERROR|WARNING):\s*\d+:(\d+):\s*(.*)$/i,
  /^\d+\((\d+)\)\s*:\s*(error|warning)\s*(.*)$/i,
];

interface DriverLine {
  readonly isWarning: boolean;
  /** 1-based, in the text; 0: no place. */
  readonly line: number;
  readonly text: string;
}

function parseLine(written: string): DriverLine | null {
  const [first, second] = patterns.map((pattern) => pattern.exec(written));
  if (first) {
    return {
      isWarning: /warning/i.test(first[1] ?? ''),
      line: Number(first[2]),
      text: first[3] ?? '',
    };
  }
  if (second) {
    return {
      isWarning: /warning/i.test(second[2] ?? ''),
      line: Number(second[1]),
      text: second[3] ?? '',
    };
  }
  const text = written.replaceAll('\0', '').trim();
  return text === '' ? null : { isWarning: false, line: 0, text };
}

/** Where a word stands in a line of a node; 1-based, 0: nowhere. */
function columnOf(content: string, line: number, text: string): number {
  const word = /'([^']+)'/.exec(text)?.[1] ?? '';
  const written = content.split('\n')[line - 1] ?? '';
  const escaped = word.replace(/[^\w]/g, '\\$&');
  return word === '' ? 0 : written.search(new RegExp(`(?<![\\w$])${escaped}(?![\\w$])`)) + 1;
}

/**
 * What a driver says of a text, at the author's lines.
 * @param contentOf gets the source of a node
 */
export function mapDriverLog(
  log: string,
  result: Result | null,
  contentOf: (node: string) => string,
): Message[] {
  return log.split('\n').flatMap((written) => {
    const parsed = parseLine(written);
    if (!parsed) {
      return [];
    }
    const from = result?.lines[parsed.line - 1];
    const node = from?.node ?? '';
    const line = node === '' ? 0 : (from?.line ?? 0);
    const place = node === '' && parsed.line > 0 ? ` (line ${parsed.line} of the text)` : '';
    return [
      {
        severity: parsed.isWarning ? 'warning' : 'error',
        node,
        line,
        column: line > 0 ? columnOf(contentOf(node), line, parsed.text) : 0,
        text: `the browser's driver: ${parsed.text}${place}`,
        hint: '',
        targets: ['glsles'],
        check: '',
      } satisfies Message,
    ];
  });
}
