// SPDX-License-Identifier: MIT
// What the editor and the output have in common: colours, highlighted lines, hovering.
import { HighlightStyle, syntaxHighlighting } from '@codemirror/language';
import { type Extension, StateEffect, StateField } from '@codemirror/state';
import { Decoration, type DecorationSet, EditorView } from '@codemirror/view';
import { tags } from '@lezer/highlight';

/** Colours are variables of the page, so that they follow its theme. */
const highlightStyle = HighlightStyle.define([
  { tag: tags.comment, color: 'var(--code-comment)' },
  { tag: [tags.controlKeyword, tags.modifier, tags.keyword], color: 'var(--code-keyword)' },
  { tag: [tags.processingInstruction, tags.macroName], color: 'var(--code-macro)' },
  { tag: tags.typeName, color: 'var(--code-type)' },
  { tag: tags.annotation, color: 'var(--code-constant)' },
  { tag: tags.number, color: 'var(--code-number)' },
  { tag: tags.function(tags.variableName), color: 'var(--code-function)' },
  { tag: tags.invalid, color: 'var(--error)', textDecoration: 'underline' },
]);

const pageTheme = EditorView.theme({
  '&': {
    height: '100%',
    fontSize: '13px',
    backgroundColor: 'var(--panel)',
    color: 'var(--text)',
  },
  '.cm-content': { caretColor: 'var(--text)', fontFamily: 'var(--mono)' },
  '.cm-scroller': { fontFamily: 'var(--mono)', lineHeight: '1.5' },
  '.cm-gutters': {
    backgroundColor: 'var(--panel)',
    color: 'var(--muted)',
    borderRight: '1px solid var(--line)',
  },
  '.cm-activeLine, .cm-activeLineGutter': { backgroundColor: 'var(--active)' },
  '.cm-cursor': { borderLeftColor: 'var(--text)' },
  '&.cm-focused .cm-selectionBackground, .cm-selectionBackground': {
    backgroundColor: 'var(--selection) !important',
  },
  '.cm-tooltip': {
    backgroundColor: 'var(--raised)',
    color: 'var(--text)',
    border: '1px solid var(--line)',
  },
  '.cm-tooltip-autocomplete ul li[aria-selected]': {
    backgroundColor: 'var(--accent)',
    color: 'var(--on-accent)',
  },
  '.cm-completionInfo': { whiteSpace: 'pre', fontFamily: 'var(--mono)', maxWidth: '560px' },
  '.cm-panels': {
    backgroundColor: 'var(--panel)',
    color: 'var(--text)',
    borderColor: 'var(--line)',
  },
  '.cm-panel.cm-search': { padding: '6px 28px 6px 8px', fontSize: '13px' },
  '.cm-search .cm-textfield, .cm-search .cm-button': {
    padding: '2px 8px',
    border: '1px solid var(--line)',
    borderRadius: '6px',
    backgroundColor: 'var(--raised)',
    backgroundImage: 'none',
    color: 'var(--text)',
    fontSize: '13px',
  },
  '.cm-search label': { fontSize: '12px' },
  '.cm-panel.cm-search [name=close]': { color: 'var(--text)', padding: '4px 8px' },
  '.cm-searchMatch': { backgroundColor: 'var(--linked)' },
  '.cm-searchMatch-selected': { outline: '2px solid var(--accent)' },
  '.cm-tooltip-lint': { whiteSpace: 'pre-line' },
  '.cm-linked': { backgroundColor: 'var(--linked)' },
});

export const appearance: Extension = [pageTheme, syntaxHighlighting(highlightStyle)];

/** Sets the lines (1-based) that stand out because they belong to what is hovered elsewhere. */
export const setLinkedLines = StateEffect.define<readonly number[]>();

export const linkedLines = StateField.define<DecorationSet>({
  create: () => Decoration.none,
  update(decorations, transaction) {
    let next = decorations.map(transaction.changes);
    for (const effect of transaction.effects) {
      if (effect.is(setLinkedLines)) {
        const { doc } = transaction.state;
        const lines = effect.value.filter((line) => line >= 1 && line <= doc.lines);
        const mark = Decoration.line({ class: 'cm-linked' });
        next = Decoration.set(lines.map((line) => mark.range(doc.line(line).from)));
      }
    }
    return next;
  },
  provide: (field) => EditorView.decorations.from(field),
});

/** Calls back with the line (1-based) under the pointer, and with 0 when there is none. */
export function onHoveredLine(tell: (line: number) => void): Extension {
  let last = 0;
  const tellChange = (line: number): void => {
    if (line !== last) {
      last = line;
      tell(line);
    }
  };
  return EditorView.domEventHandlers({
    mousemove(event, view) {
      const position = view.posAtCoords({ x: event.clientX, y: event.clientY });
      tellChange(position === null ? 0 : view.state.doc.lineAt(position).number);
    },
    mouseleave() {
      tellChange(0);
    },
  });
}
