// SPDX-License-Identifier: MIT
// The words of the language, and the names that nodes declare.
import { targets } from 'morl';
import { words } from 'virtual:morl-words';
import { type GraphNode, type Project, upstream } from '../model/project';

/** A word that can be completed. */
export interface Word {
  readonly label: string;
  readonly kind: 'function' | 'type' | 'constant' | 'keyword' | 'variable';
  /** Shown beside the word, such as the arguments. */
  readonly detail: string;
  /** Shown in a box: what the word becomes in each target, or where it is declared. */
  readonly info: string;
}

function becomes(cells: readonly string[]): string {
  return cells.map((cell, i) => `${targets[i] ?? ''}: ${cell}`).join('\n');
}

function fromTable(rows: readonly string[][], kind: Word['kind']): Word[] {
  return rows.map(([call = '', ...cells]) => {
    const [, label = call, detail = ''] = /^(\w+)(.*)$/.exec(call) ?? [];
    return { label, kind, detail, info: becomes(cells) };
  });
}

const keyword = (label: string, info: string): Word => ({
  label,
  kind: 'keyword',
  detail: '',
  info,
});

/** All words of the language. */
export const languageWords: readonly Word[] = [
  ...fromTable(words.intrinsics, 'function'),
  ...fromTable(words.types, 'type'),
  ...fromTable(words.semantics, 'constant'),
  keyword('TEXAUTO', 'The next texture coordinate; the fragment pass finds it by its name.'),
  keyword('SAUTO', 'The register that the request gives to the sampler.'),
  keyword('auto', 'The type that the target needs.'),
  keyword('uniform', 'uniform TYPE NAME; is a value that the engine sets.'),
  keyword('in', 'in TYPE NAME : SEMANTIC; is a vertex attribute, or a value from the vertex pass.'),
  keyword('out', 'out TYPE NAME : SEMANTIC; is a value for the fragment pass, or a colour.'),
  keyword('void', 'void main() { } has the statements of the node.'),
  keyword('if', 'if (CONDITION) { } else { }'),
  keyword('else', 'if (CONDITION) { } else { }'),
  keyword('for', 'for (INIT CONDITION; STEP) { }'),
  keyword('discard', 'Drops the pixel.'),
  keyword('#if', '#if CONDITION ... #else ... #endif: depends on macros.'),
  keyword('#else', '#if CONDITION ... #else ... #endif'),
  keyword('#endif', '#if CONDITION ... #else ... #endif'),
  keyword('#for', '#for MACRO : START ... #endfor: repeated up to the value of the macro.'),
  keyword('#endfor', '#for MACRO : START ... #endfor'),
];

/** A name that a node declares. */
export interface Declaration {
  readonly name: string;
  readonly type: string;
  /** "uniform", "in", "out", or empty: a local variable. */
  readonly form: string;
  readonly node: string;
  /** 1-based. */
  readonly line: number;
}

const declaration =
  /^\s*(?:(uniform|in|out)\s+)?(float[234]?|int[234]?|float[234]x[234]|sampler\w+|auto)\s+([A-Za-z_$][\w$]*)\s*(?=[;=:[])/;

/** The declarations of a node, in their order. */
export function declarationsOf(node: GraphNode): Declaration[] {
  return node.content.split('\n').flatMap((text, i) => {
    const match = declaration.exec(text);
    return match
      ? [
          {
            name: match[3] ?? '',
            type: match[2] ?? '',
            form: match[1] ?? '',
            node: node.name,
            line: i + 1,
          },
        ]
      : [];
  });
}

/** The declarations that a node can use: its own, then those of the nodes that it builds on. */
export function visibleDeclarations(project: Project, node: GraphNode): Declaration[] {
  const nodes = [node, ...upstream(project, node.name)];
  return nodes.flatMap(declarationsOf);
}

/** Where a name is declared, as a node sees it; otherwise anywhere in the graph. */
export function findDeclaration(
  project: Project,
  node: GraphNode,
  name: string,
): Declaration | undefined {
  const isIt = (one: Declaration): boolean => one.name === name;
  return (
    visibleDeclarations(project, node).find(isIt) ??
    project.nodes.flatMap(declarationsOf).find(isIt)
  );
}
