// SPDX-License-Identifier: MIT
import { EditorState } from '@codemirror/state';
import { EditorView, lineNumbers } from '@codemirror/view';
import type { Result } from 'morl';
import { useEffect, useRef } from 'react';
import { Choice } from '../choice';
import { stages, targets } from '../compiler/protocol';
import { differenceOf } from '../editor/ranges';
import { appearance, linkedLines, onHoveredLine, setLinkedLines } from '../editor/setup';
import type { State } from '../model/store';
import { usePage, usePageStore } from '../model/use_store';
import { copyText } from '../files/clipboard';
import { download } from '../files/download';
import { linesFrom } from './lines';
import { shaderLanguage } from './shader_language';
import { summary } from './summary';

function resultOf(state: State): Result | null {
  return state.answer?.texts[state.target][state.stage] ?? null;
}

function CodeView() {
  const store = usePageStore();
  const parent = useRef<HTMLDivElement>(null);
  useEffect(() => {
    const state = EditorState.create({
      extensions: [
        lineNumbers(),
        shaderLanguage,
        appearance,
        linkedLines,
        EditorState.readOnly.of(true),
        EditorView.contentAttributes.of({ 'aria-label': 'Generated text', tabindex: '0' }),
        onHoveredLine((line) => {
          const from = resultOf(store.getState())?.lines[line - 1];
          store.setState({ hovered: from?.node ? from : null });
        }),
        EditorView.domEventHandlers({
          dblclick(event, view) {
            const position = view.posAtCoords({ x: event.clientX, y: event.clientY });
            const page = store.getState();
            const line = position === null ? 0 : view.state.doc.lineAt(position).number;
            const from = resultOf(page)?.lines[line - 1];
            const node = page.history.present.nodes.findLast((one) => one.name === from?.node);
            if (from && node) {
              store.setState({ selected: node.id, goTo: { ...from, column: 1 } });
            }
          },
        }),
      ],
    });
    const view = new EditorView({ state, parent: parent.current ?? undefined });
    const follow = (page: State): void => {
      const result = resultOf(page);
      const code = result?.code ?? '';
      if (code !== view.state.doc.toString()) {
        view.dispatch({ changes: differenceOf(view.state.doc.toString(), code) });
      }
      const linked =
        result && page.hovered ? linesFrom(result, page.hovered.node, page.hovered.line) : [];
      view.dispatch({ effects: setLinkedLines.of(linked) });
    };
    follow(store.getState());
    const stop = store.subscribe((page, before) => {
      if (resultOf(page) !== resultOf(before) || page.hovered !== before.hovered) {
        follow(page);
      }
    });
    return () => {
      stop();
      view.destroy();
    };
  }, [store]);
  return <div className="code" ref={parent} />;
}

/** The texts of the chosen shader, one at a time. */
export function OutputView() {
  const store = usePageStore();
  const target = usePage((state) => state.target);
  const stage = usePage((state) => state.stage);
  const shader = usePage((state) => state.shader);
  const result = usePage(resultOf);
  const line = usePage(summary);
  const copy = (): void => {
    void copyText(result?.code ?? '').then((isCopied) => {
      store.setState({
        notice: isCopied
          ? { kind: 'info', text: 'copied' }
          : { kind: 'error', text: 'the browser does not let this page copy' },
      });
    });
  };
  return (
    <section className="panel output" aria-label="Generated texts">
      <div className="bar">
        <Choice
          label="Target"
          names={targets}
          isPressed={(name) => name === target}
          onPress={(name) => {
            store.setState({ target: name });
          }}
        />
        <Choice
          label="Stage"
          names={stages}
          isPressed={(name) => name === stage}
          onPress={(name) => {
            store.setState({ stage: name });
          }}
        />
        <span className="space" />
        <button onClick={copy} disabled={!result}>
          Copy
        </button>
        <button
          disabled={!result}
          onClick={() => {
            download(
              `${shader}.${target}.${stage === 'vertex' ? 'vert' : 'frag'}`,
              result?.code ?? '',
            );
          }}
        >
          Download
        </button>
      </div>
      <CodeView />
      <div className="status" role="status">
        {line}
      </div>
    </section>
  );
}
