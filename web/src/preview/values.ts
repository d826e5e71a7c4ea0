// SPDX-License-Identifier: MIT
// Texts that draw what a variable holds behind a statement of a node.
import type { Result } from 'morl';
import type { StageName } from '../model/project';
import { withoutComments } from '../without_comments';
import type { Passes } from './passes';

/** A variable, and passes that draw it. */
export interface ShownValue {
  /** As the author has written it. */
  readonly name: string;
  readonly node: string;
  /** Of the node, 1-based. */
  readonly line: number;
  readonly passes: Passes;
}

/** The colour of a value, by its type in GLSL. */
const colours: Readonly<Record<string, (name: string) => string>> = {
  float: (name) => `vec4(vec3(${name}),1.0)`,
  vec2: (name) => `vec4(${name},0.0,1.0)`,
  vec3: (name) => `vec4(${name},1.0)`,
  vec4: (name) => `vec4(${name}.xyz,1.0)`,
};

/** A statement of `main`. */
interface Statement {
  /** Its place in the text, 0-based. */
  readonly index: number;
  /** The block that it stands in; 1: `main` itself. */
  readonly depth: number;
  readonly text: string;
}

/** The lines of `main`, with the blocks that they stand in before and after them. */
function statementsOf(lines: readonly string[]): (Statement & { readonly after: number })[] {
  const start = lines.findIndex((line) => /^void main\(/.test(line));
  let depth = 0;
  return lines.flatMap((line, index) => {
    if (start < 0 || index < start) {
      return [];
    }
    const text = withoutComments(line);
    const before = depth;
    depth += text.split('{').length - text.split('}').length;
    return index === start ? [] : [{ index, depth: before, after: depth, text }];
  });
}

const assignment =
  /^\s*(?:(?:float|int|vec[234])\s+)?([A-Za-z_]\w*)(?:\.[xyzwrgba]+|\[[^\]]*\])?\s*[-+*/]?=(?!=)/;

/** The type of a variable that is declared in `main` itself or outside of it; undefined: another one. */
function typeOf(
  lines: readonly string[],
  statements: readonly Statement[],
  name: string,
): string | undefined {
  const declaration = new RegExp(`\\b(float|int|vec[234])\\s+${name}\\s*[;=]`);
  const inMain = new Map(statements.map((one) => [one.index, one.depth]));
  const found = lines.find(
    (line, index) => (inMain.get(index) ?? 1) === 1 && declaration.test(withoutComments(line)),
  );
  return found && declaration.exec(found)?.[1];
}

interface Found {
  readonly name: string;
  readonly type: string;
  readonly line: number;
  /** The last line of the text that belongs to the statement, or to the block around it; 0-based. */
  readonly end: number;
}

/** The last assignment of a node, or the last one up to a line of it. */
function findAssignment(result: Result, node: string, upTo: number): Found | undefined {
  const lines = result.code.split('\n');
  const statements = statementsOf(lines);
  return statements
    .flatMap((statement, i) => {
      const from = result.lines[statement.index];
      const [, name = ''] = assignment.exec(statement.text) ?? [];
      const type = name === '' ? undefined : typeOf(lines, statements, name);
      if (from?.node !== node || from.line > upTo || type === undefined) {
        return [];
      }
      const end = statements.slice(i).find(({ after }) => after <= 1)?.index ?? statement.index;
      return [{ name, type, line: from.line, end }];
    })
    .at(-1);
}

/** A fragment pass that ends behind a statement, with its value as the colour. */
function endedFragment({ code }: Result, { name, type, end }: Found): string {
  const isInt = type === 'int';
  const colour = colours[isInt ? 'float' : type]?.(isInt ? `float(${name})` : name) ?? '';
  const lines = code.split('\n').slice(0, end + 1);
  return [...lines, `\tgl_FragColor = ${colour};`, '}', ''].join('\n');
}

const handed = 'morlShownValue';

/** A vertex pass that hands a value over, and a fragment pass that shows it. */
function handedOver({ code }: Result, { name, type, end }: Found): Record<StageName, string> {
  const passed = type === 'int' ? 'float' : type;
  const lines = code.split('\n');
  const start = lines.findIndex((line) => /^void main\(/.test(line));
  const vertex = [
    ...lines.slice(0, start),
    `varying ${passed} ${handed};`,
    ...lines.slice(start, end + 1),
    `\t${handed} = ${type === 'int' ? `float(${name})` : name};`,
    ...lines.slice(end + 1),
  ].join('\n');
  const fragment = `#version 100\nprecision highp float;\nvarying ${passed} ${handed};\nvoid main(){\n\tgl_FragColor = ${colours[passed]?.(handed) ?? ''};\n}\n`;
  return { vertex, fragment };
}

/** Outputs have copies in the text, which the author has not named so. */
function authorsName(name: string): string {
  return name.replace(/^ret(?=o)/, '');
}

/**
 * What a node has assigned last, or last up to one of its lines.
 * @returns null if the node is in no pass, or assigns nothing that is a number or vector
 */
export function shownValue(passes: Passes, node: string, upTo = Infinity): ShownValue | null {
  const { vertex, fragment } = passes;
  const inFragment = findAssignment(fragment, node, upTo);
  if (inFragment) {
    const { name, line } = inFragment;
    const code = endedFragment(fragment, inFragment);
    const shown = { vertex, fragment: { ...fragment, code } };
    return { name: authorsName(name), node, line, passes: shown };
  }
  const inVertex = findAssignment(vertex, node, upTo);
  if (!inVertex) {
    return null;
  }
  const codes = handedOver(vertex, inVertex);
  return {
    name: authorsName(inVertex.name),
    node,
    line: inVertex.line,
    passes: {
      vertex: { ...vertex, code: codes.vertex },
      fragment: { ...fragment, code: codes.fragment },
    },
  };
}
