// SPDX-License-Identifier: MIT
import type { Completion, CompletionContext, CompletionResult } from '@codemirror/autocomplete';
import type { GraphNode, Project } from '../model/project';
import { languageWords, visibleDeclarations, type Word } from './words';

function completionOf(word: Word): Completion {
  const { label, kind, detail, info } = word;
  return { label, type: kind, detail, info, apply: kind === 'function' ? `${label}(` : label };
}

function declaredWords(project: Project, node: GraphNode): Word[] {
  return visibleDeclarations(project, node).map((declared) => ({
    label: declared.name,
    kind: 'variable',
    detail: ` ${declared.form} ${declared.type}`,
    info:
      declared.node === node.name
        ? `declared in line ${declared.line}`
        : `declared by '${declared.node}', line ${declared.line}`,
  }));
}

const language = languageWords.map(completionOf);

/** Whether a text ends within a comment. */
export function endsInComment(text: string): boolean {
  const last = [...text.matchAll(/\/\/.*|\/\*[^]*?(?:\*\/|$)/g)].at(-1);
  const isAtEnd = last !== undefined && last.index + last[0].length === text.length;
  return isAtEnd && (last[0].startsWith('//') || !/^\/\*[^]*\*\/$/.test(last[0]));
}

/** Completes the language's words and the names that the node can use. */
export function completeWord(
  current: () => { project: Project; node: GraphNode } | null,
): (context: CompletionContext) => CompletionResult | null {
  return (context) => {
    const word = context.matchBefore(/#?[A-Za-z_$][\w$]*|#/);
    if (!word && !context.explicit) {
      return null;
    }
    const isMember = context.matchBefore(/\.\w*/) !== null;
    const place = current();
    if (isMember || !place || endsInComment(context.state.sliceDoc(0, context.pos))) {
      return null;
    }
    const unique = new Map(
      declaredWords(place.project, place.node).map((one) => [one.label, completionOf(one)]),
    );
    return {
      from: word?.from ?? context.pos,
      options: [...unique.values(), ...language],
      validFor: /^#?[\w$]*$/,
    };
  };
}
