// SPDX-License-Identifier: MIT
import { autocompletion, completionKeymap } from '@codemirror/autocomplete';
import { defaultKeymap } from '@codemirror/commands';
import { bracketMatching, indentUnit } from '@codemirror/language';
import {
  type Diagnostic,
  diagnosticCount,
  lintGutter,
  nextDiagnostic,
  previousDiagnostic,
  setDiagnostics,
} from '@codemirror/lint';
import { highlightSelectionMatches, searchKeymap } from '@codemirror/search';
import { Annotation, EditorState, type Text } from '@codemirror/state';
import {
  drawSelection,
  EditorView,
  highlightActiveLine,
  keymap,
  lineNumbers,
} from '@codemirror/view';
import { useEffect, useRef } from 'react';
import type { Message } from '../compiler/protocol';
import { findNode, nodeById, setContent } from '../model/project';
import { allMessagesOf } from '../model/selectors';
import { edited, messagesOf, projectOf, type Store } from '../model/store';
import { usePageStore } from '../model/use_store';
import { completeWord } from './completion';
import { appearance, linkedLines, onHoveredLine, setLinkedLines } from './setup';
import { differenceOf, lineBreakOf, rangeOf, withoutTrailingBlanks } from './ranges';
import { morlLanguage } from './text_mate';
import { findDeclaration, languageWords } from './words';

/** Marks transactions that bring the store's text into the editor. */
const fromStore = Annotation.define<boolean>();

function diagnosticsOf(doc: Text, messages: readonly Message[]): Diagnostic[] {
  return messages.map((message) => ({
    ...rangeOf(doc, message),
    severity: message.severity,
    source: message.check || undefined,
    message: message.hint === '' ? message.text : `${message.text}\nhint: ${message.hint}`,
  }));
}

function selectedNode(store: Store) {
  const state = store.getState();
  return state.selected === null ? undefined : nodeById(projectOf(state), state.selected);
}

/** Goes to where the word at the caret is declared, in this node or in another one. */
function goToDeclaration(store: Store, view: EditorView): boolean {
  const state = store.getState();
  const node = selectedNode(store);
  const range = view.state.wordAt(view.state.selection.main.head);
  const name = range ? view.state.sliceDoc(range.from, range.to) : '';
  const found = node && name ? findDeclaration(projectOf(state), node, name) : undefined;
  if (!found) {
    const isWord = languageWords.some((word) => word.label === name);
    const text = isWord ? `'${name}' is a word of the language` : `no node declares '${name}'`;
    store.setState({ notice: { kind: 'info', text } });
    return true;
  }
  const target = projectOf(state).nodes.findLast((one) => one.name === found.node);
  store.setState({
    selected: target?.id ?? state.selected,
    goTo: { node: found.node, line: found.line, column: 1 },
  });
  return true;
}

/** Goes to the next fault of the node, or to the first one anywhere if it has none. */
function goToFault(store: Store, view: EditorView, step: typeof nextDiagnostic): boolean {
  if (diagnosticCount(view.state) > 0) {
    return step(view);
  }
  const state = store.getState();
  const { own, others, remarks } = allMessagesOf(state);
  const first = [...own, ...others, ...remarks].find((message) => message.line > 0);
  const node = first && findNode(projectOf(state), first.node);
  if (node) {
    const { line, column } = first;
    store.setState({ selected: node.id, goTo: { node: node.name, line, column } });
  } else {
    store.setState({ notice: { kind: 'info', text: 'no node has a fault' } });
  }
  return true;
}

/** Tells where the caret is, when it is in another line. */
function tellCaret(store: Store, { state }: EditorView): void {
  const node = selectedNode(store)?.name;
  const line = state.doc.lineAt(state.selection.main.head).number;
  const { caret } = store.getState();
  if (node !== undefined && (caret?.node !== node || caret.line !== line)) {
    store.setState({ caret: { node, line } });
  }
}

function makeState(store: Store, content: string): EditorState {
  return EditorState.create({
    doc: content,
    extensions: [
      EditorState.lineSeparator.of(lineBreakOf(content)),
      EditorState.readOnly.of(store.getState().isFollowing),
      lineNumbers(),
      lintGutter(),
      drawSelection(),
      highlightActiveLine(),
      highlightSelectionMatches(),
      bracketMatching(),
      indentUnit.of('    '),
      morlLanguage,
      appearance,
      linkedLines,
      autocompletion({
        override: [
          completeWord(() => {
            const node = selectedNode(store);
            return node ? { project: projectOf(store.getState()), node } : null;
          }),
        ],
      }),
      // Tab leaves the editor, as everywhere on the page; Ctrl-] indents.
      keymap.of([
        { key: 'F12', run: (view) => goToDeclaration(store, view) },
        {
          key: 'F8',
          run: (view) => goToFault(store, view, nextDiagnostic),
          shift: (view) => goToFault(store, view, previousDiagnostic),
        },
        ...completionKeymap,
        ...searchKeymap,
        ...defaultKeymap,
      ]),
      EditorView.contentAttributes.of({ 'aria-label': 'Source of the node' }),
      EditorView.domEventHandlers({
        click(event, view) {
          const isWanted = event.ctrlKey || event.metaKey;
          return isWanted && goToDeclaration(store, view);
        },
      }),
      onHoveredLine((line) => {
        const node = selectedNode(store);
        store.setState({ hovered: node && line > 0 ? { node: node.name, line } : null });
      }),
      EditorView.updateListener.of((update) => {
        tellCaret(store, update.view);
        const isOwn = update.transactions.some((one) => one.annotation(fromStore));
        const id = store.getState().selected;
        if (update.docChanged && !isOwn && id !== null) {
          const content = withoutTrailingBlanks(update.state.sliceDoc());
          store.setState((state) =>
            edited(state, (project) => setContent(project, id, content), `content ${id}`),
          );
        }
      }),
    ],
  });
}

/** Whether the editor has this content; blanks at the end that are only in the editor do not count. */
function isShown(view: EditorView, content: string): boolean {
  const text = view.state.sliceDoc();
  return content === text || content === withoutTrailingBlanks(text);
}

/** What the editor shows besides the text. */
interface Shown {
  id: string | null;
  messages: readonly Message[];
  /** The line that is linked to another panel; 0: none. */
  linked: number;
}

function areSameMessages(some: readonly Message[], others: readonly Message[]): boolean {
  return some.length === others.length && some.every((message, i) => message === others[i]);
}

/** Brings what others have changed into the editor. */
function follow(store: Store, view: EditorView, shown: Shown): void {
  const state = store.getState();
  const node = selectedNode(store);
  const content = node?.content ?? '';
  const hasSameBreaks = view.state.lineBreak === lineBreakOf(content) || view.state.doc.lines === 1;
  const isReadOnly = state.isFollowing;
  if (shown.id !== state.selected || !hasSameBreaks || view.state.readOnly !== isReadOnly) {
    shown.id = state.selected;
    shown.messages = [];
    shown.linked = 0;
    view.setState(makeState(store, content));
  } else if (!isShown(view, content)) {
    // In the editor, a line break is one character.
    const next = view.state.toText(content).toString();
    const changes = differenceOf(view.state.doc.toString(), next);
    view.dispatch({ changes, annotations: fromStore.of(true) });
  }
  const { doc } = view.state;
  const messages = messagesOf(state).filter(
    (message) => node && message.node === node.name && message.line > 0,
  );
  // What is underlined moves with the text by itself; each update costs a layout of the page.
  if (!areSameMessages(messages, shown.messages)) {
    shown.messages = messages;
    view.dispatch(setDiagnostics(view.state, diagnosticsOf(doc, messages)));
  }
  const linked = state.hovered?.node === node?.name ? (state.hovered?.line ?? 0) : 0;
  if (linked !== shown.linked) {
    shown.linked = linked;
    view.dispatch({ effects: setLinkedLines.of(linked > 0 ? [linked] : []) });
  }
  if (state.goTo && state.goTo.node === node?.name) {
    const line = doc.line(Math.min(Math.max(state.goTo.line, 1), doc.lines));
    const head = Math.min(line.from + Math.max(state.goTo.column, 1) - 1, line.to);
    view.dispatch({ selection: { anchor: head }, scrollIntoView: true });
    view.focus();
    store.setState({ goTo: null });
  }
}

/** The source of the selected node. */
export function SourceEditor() {
  const store = usePageStore();
  const parent = useRef<HTMLDivElement>(null);
  useEffect(() => {
    const shown: Shown = { id: null, messages: [], linked: 0 };
    const view = new EditorView({
      state: makeState(store, ''),
      parent: parent.current ?? undefined,
    });
    follow(store, view, shown);
    const stop = store.subscribe((state, before) => {
      const isSame =
        state.history === before.history &&
        state.isFollowing === before.isFollowing &&
        state.selected === before.selected &&
        state.answer === before.answer &&
        state.driverMessages === before.driverMessages &&
        state.hovered === before.hovered &&
        state.goTo === before.goTo;
      if (!isSame) {
        follow(store, view, shown);
      }
    });
    return () => {
      stop();
      view.destroy();
    };
  }, [store]);
  return <div className="code" ref={parent} />;
}
