// SPDX-License-Identifier: MIT
// Highlights by the TextMate grammar that the editors use (editors/vscode).
import { type StreamParser, StreamLanguage } from '@codemirror/language';
import grammar from '../../../editors/vscode/syntaxes/morl.tmLanguage.json';

interface Rule {
  readonly name?: string;
  readonly match?: string;
  readonly begin?: string;
  readonly end?: string;
  readonly include?: string;
  readonly captures?: Readonly<Record<string, { readonly name: string }>>;
}

/** A rule that is matched at a position. A rule with an end goes on until that matches. */
interface CompiledRule {
  readonly tag: string;
  readonly pattern: RegExp;
  readonly end: RegExp | null;
}

/** CodeMirror's names for the scopes of the grammar; the first one that a scope begins with counts. */
const tags: readonly (readonly [string, string])[] = [
  ['comment', 'comment'],
  ['keyword.control.directive', 'processingInstruction'],
  ['meta.preprocessor', 'processingInstruction'],
  ['entity.name.macro', 'macroName'],
  ['keyword.control', 'controlKeyword'],
  ['keyword.operator', 'operator'],
  ['storage.modifier', 'modifier'],
  ['storage.type', 'typeName'],
  ['constant.language.semantic', 'annotation'],
  ['constant.numeric', 'number'],
  ['support.function', 'variableName.function'],
  ['entity.name.function', 'variableName.definition'],
  ['invalid', 'invalid'],
  ['variable.other.member', 'propertyName'],
  ['variable', 'variableName'],
];

function tagOf(scope: string): string {
  return tags.find(([start]) => scope.startsWith(start))?.[1] ?? '';
}

function flatten(rules: readonly Rule[]): Rule[] {
  const repository: Readonly<Record<string, { patterns: readonly Rule[] }>> = grammar.repository;
  return rules.flatMap((rule) =>
    rule.include ? flatten(repository[rule.include.slice(1)]?.patterns ?? []) : [rule],
  );
}

/** The grammar has the patterns of one line, so they can be tried one by one at each position. */
const rules: readonly CompiledRule[] = flatten(grammar.patterns).map((rule) => ({
  tag: tagOf(rule.name ?? ''),
  pattern: new RegExp(rule.match ?? rule.begin ?? '', 'y'),
  end: rule.end === undefined ? null : new RegExp(rule.end, 'g'),
}));

interface State {
  /** The rule that goes on, such as a comment of several lines. */
  open: CompiledRule | null;
}

/** The grammar as a parser of lines. */
export const morlParser: StreamParser<State> = {
  name: 'morl',
  startState: () => ({ open: null }),
  copyState: (state) => ({ ...state }),
  token(stream, state) {
    if (state.open?.end) {
      const rule = state.open;
      state.open.end.lastIndex = stream.pos;
      const match = state.open.end.exec(stream.string);
      stream.pos = match ? match.index + match[0].length : stream.string.length;
      state.open = match ? null : state.open;
      return rule.tag;
    }
    if (stream.eatSpace()) {
      return null;
    }
    for (const rule of rules) {
      rule.pattern.lastIndex = stream.pos;
      const match = rule.pattern.exec(stream.string);
      if (match && match[0] !== '') {
        stream.pos += match[0].length;
        // A rule that ends with the line is over at once.
        if (rule.end?.source === '$') {
          stream.skipToEnd();
        } else if (rule.end) {
          state.open = rule;
        }
        return rule.tag;
      }
    }
    stream.next();
    return null;
  },
  languageData: { commentTokens: { line: '//', block: { open: '/*', close: '*/' } } },
};

export const morlLanguage = StreamLanguage.define(morlParser);
