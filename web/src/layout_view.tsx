// SPDX-License-Identifier: MIT
// Where the panels are: beside each other with separators between them, or below each other on a narrow page.
import { type MouseEvent, type ReactNode, useEffect, useState, useSyncExternalStore } from 'react';
import { Group, type Layout, Panel, Separator, usePanelRef } from 'react-resizable-panels';
import { EditorView } from './editor/editor_view';
import { storedText, storeText } from './files/storage';
import { GraphView } from './graph/graph_view';
import { MessagesView } from './messages_view';
import { allMessagesOf } from './model/selectors';
import type { State } from './model/store';
import { usePage } from './model/use_store';
import { OutputView } from './output/output_view';
import { PreviewView } from './preview/preview_view';

const narrow = window.matchMedia('(max-width: 900px)');

function useIsNarrow(): boolean {
  return useSyncExternalStore(
    (onChange) => {
      narrow.addEventListener('change', onChange);
      return () => {
        narrow.removeEventListener('change', onChange);
      };
    },
    () => narrow.matches,
  );
}

/** The sizes that a group had last, in percent by panel. */
function keptLayout(id: string): Layout | undefined {
  try {
    const layout: unknown = JSON.parse(storedText(`morl.layout.${id}`) ?? 'null');
    const isLayout =
      typeof layout === 'object' &&
      layout !== null &&
      Object.values(layout).every((size) => typeof size === 'number');
    return isLayout ? (layout as Layout) : undefined;
  } catch {
    return undefined;
  }
}

function SizedGroup({
  id,
  orientation,
  isFixed,
  children,
}: {
  id: string;
  orientation: 'horizontal' | 'vertical';
  /** Whether separators do nothing: they would also take presses on what covers them. */
  isFixed: boolean;
  children: ReactNode;
}) {
  const [layout] = useState(() => keptLayout(id));
  return (
    <Group
      id={id}
      orientation={orientation}
      disabled={isFixed}
      defaultLayout={layout}
      onLayoutChanged={(next, { isUserInteraction }) => {
        if (isUserInteraction) {
          storeText(`morl.layout.${id}`, JSON.stringify(next));
        }
      }}
    >
      {children}
    </Group>
  );
}

/** The height of the messages without their list, and with it, in CSS pixels. */
const closedHeight = 38;
const openHeight = 150;
/** So long there are no messages before the list closes, in milliseconds: nothing jumps while somebody types. */
const closingDelay = 1500;

function hasMessages(state: State): boolean {
  const { own, others, remarks } = allMessagesOf(state);
  return own.length + others.length + remarks.length > 0;
}

/** The panels with separators. The list of messages is open while there are some. */
function WideLayout({ isFixed }: { isFixed: boolean }) {
  const messages = usePanelRef();
  const isOpen = usePage(hasMessages);
  useEffect(() => {
    const resize = (): void => {
      messages.current?.resize(isOpen ? openHeight : closedHeight);
    };
    const timer = setTimeout(resize, isOpen ? 0 : closingDelay);
    return () => {
      clearTimeout(timer);
    };
  }, [messages, isOpen]);
  return (
    <SizedGroup id="columns" orientation="horizontal" isFixed={isFixed}>
      <Panel id="left" defaultSize="45%" minSize={240}>
        <SizedGroup id="left-rows" orientation="vertical" isFixed={isFixed}>
          <Panel id="graph" defaultSize="31%" minSize={90}>
            <GraphView />
          </Panel>
          <Separator className="separator" aria-label="Height of the graph" />
          <Panel id="source" minSize={90}>
            <EditorView />
          </Panel>
          <Separator className="separator" aria-label="Height of the messages" />
          <Panel
            id="messages"
            panelRef={messages}
            defaultSize={closedHeight}
            minSize={closedHeight}
            groupResizeBehavior="preserve-pixel-size"
          >
            <MessagesView />
          </Panel>
        </SizedGroup>
      </Panel>
      <Separator className="separator" aria-label="Width of graph and source" />
      <Panel id="right" minSize={240}>
        <SizedGroup id="right-rows" orientation="vertical" isFixed={isFixed}>
          <Panel id="preview" defaultSize="57%" minSize={90}>
            <PreviewView />
          </Panel>
          <Separator className="separator" aria-label="Height of the preview" />
          <Panel id="texts" minSize={90}>
            <OutputView />
          </Panel>
        </SizedGroup>
      </Panel>
    </SizedGroup>
  );
}

/** All panels. A double click on the bar of one lets it fill the page, and back. */
export function LayoutView() {
  const isNarrow = useIsNarrow();
  const [filling, setFilling] = useState<string | null>(null);
  const toggle = (event: MouseEvent<HTMLElement>): void => {
    const target = event.target as Element;
    const panel = target.closest('.bar')?.closest('.panel');
    if (panel && !target.closest('button, input, select, form')) {
      const name = panel.getAttribute('aria-label');
      setFilling(filling === name ? null : name);
    }
  };
  return (
    <main data-filling={filling ?? undefined} onDoubleClick={toggle}>
      {isNarrow ? (
        <>
          <GraphView />
          <PreviewView />
          <EditorView />
          <OutputView />
          <MessagesView />
        </>
      ) : (
        <WideLayout isFixed={filling !== null} />
      )}
    </main>
  );
}
