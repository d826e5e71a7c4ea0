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
    if (isMember || !place) {
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
