// SPDX-License-Identifier: MIT
import {
  Background,
  type FinalConnectionState,
  MiniMap,
  type NodeChange,
  ReactFlow,
  ReactFlowProvider,
  SelectionMode,
  useNodesInitialized,
  useReactFlow,
} from '@xyflow/react';
import { type KeyboardEvent, useEffect, useMemo, useRef, useState } from 'react';
import { useCommands } from '../commands';
import { storedText, storeText } from '../files/storage';
import type { NodeShape } from '../model/project';
import { countsOf, orderOf, shaderOf, shapesOf } from '../model/selectors';
import { projectOf, type State } from '../model/store';
import { usePage, usePageStore } from '../model/use_store';
import { moving } from '../motion';
import { Palette, type PaletteItem } from '../palette';
import { Toolbar } from '../toolbar';
import {
  withArranged,
  withDuplicates,
  withNewNode,
  withoutNodes,
  withoutReference,
  withPlaces,
  withReference,
} from './edits';
import { FileFrame, MorlGraphNode, RoutedEdge } from './graph_node';
import { boundsOf, fileOffsets, nodeSize, type Point, readableZoom, sightOf } from './layout';
import { useMenus } from './menus';
import {
  type Drags,
  reuse,
  type Route,
  routesOf,
  type Shown,
  type ShownEdge,
  shownEdges,
  shownFiles,
  type ShownNode,
  shownNodes,
  withDrags,
} from './shown';
import { directionOf, nextNode } from './walk';

const minimapSize = { width: 130, height: 90 };
/** So many nodes are all drawn; of more, only those that can be seen. */
const manyNodes = 150;
/** How far an arrow key moves nodes, on the screen. */
const keyStep = 20;
const nodeTypes = { morl: MorlGraphNode, file: FileFrame };
const edgeTypes = { routed: RoutedEdge };
const wholeKey = 'morl.graph.whole';

/** Keeps the elements that have not changed from one drawing to the next. */
function useReused<Element extends { readonly id: string }>(
  next: readonly Element[],
): readonly Element[] {
  const last = useRef<readonly Element[]>([]);
  last.current = reuse(last.current, next);
  return last.current;
}

function pointOf({ clientX, clientY }: { clientX: number; clientY: number }): Point {
  return { x: clientX, y: clientY };
}

function middleOf({ position: { x, y } }: ShownNode): Point {
  return { x: x + nodeSize.width / 2, y: y + nodeSize.height / 2 };
}

/** The lines of references. While nodes are dragged, only their own lines follow. */
function useRoutes(
  shapes: readonly NodeShape[],
  nodes: readonly ShownNode[],
  isDragging: boolean,
): ReadonlyMap<string, Route> {
  const last = useRef<ReadonlyMap<string, Route>>(new Map());
  const places = useReused(
    useMemo(() => nodes.map(({ id, position: { x, y } }) => ({ id, x, y })), [nodes]),
  );
  return useMemo(() => {
    last.current = routesOf(shapes, places, isDragging ? last.current : new Map());
    return last.current;
  }, [shapes, places, isDragging]);
}

/** How the canvases of files lie below each other: as when the project was opened, so that nothing jumps. */
function useOffsets() {
  const id = usePage((state) => state.project.id);
  const paths = usePage((state) =>
    projectOf(state)
      .files.map((file) => file.path)
      .join('\n'),
  );
  const store = usePageStore();
  return useMemo(() => {
    const { files, nodes } = projectOf(store.getState());
    return fileOffsets(files, nodes);
    // eslint-disable-next-line react-hooks/exhaustive-deps
  }, [store, id, paths]);
}

function Graph() {
  const store = usePageStore();
  const shapes = usePage(shapesOf);
  const shader = usePage(shaderOf);
  const counts = usePage(countsOf);
  const order = usePage(orderOf);
  const selected = usePage((state) => state.selected);
  const theme = usePage((state) => state.theme);
  const flow = useReactFlow();
  const canvas = useRef<HTMLDivElement>(null);
  const offsets = useOffsets();
  const [drags, setDrags] = useState<Drags>({});
  const [edge, setEdge] = useState<string | null>(null);
  const [search, setSearch] = useState('');
  const [isWholeWanted, setWhole] = useState(() => storedText(wholeKey) === 'yes');
  const isWhole =
    isWholeWanted || (shader?.vertex ?? []).length + (shader?.fragment ?? []).length === 0;
  const [picks, setPicks] = useState<ReadonlySet<string>>(new Set());
  const [arrangements, setArrangements] = useState(0);

  // What is picked together holds as long as the node in the editor belongs to it. The Delete key is about one thing:
  // the line, or otherwise the nodes.
  const picked = useMemo((): ReadonlySet<string> => {
    if (edge !== null || selected === null) {
      return new Set();
    }
    return picks.has(selected) ? picks : new Set([selected]);
  }, [edge, selected, picks]);
  const standing = useReused<ShownNode>(
    useMemo(
      () =>
        shownNodes({
          ...{ shapes, shader, isWhole, chosen: selected, picked },
          ...{ counts, order, offsets, search },
        }),
      [shapes, shader, isWhole, selected, picked, counts, order, offsets, search],
    ),
  );
  const nodes = useMemo(() => withDrags(standing, drags), [standing, drags]);
  const files = useReused(useMemo(() => shownFiles(shapes, nodes), [shapes, nodes]));
  const routes = useRoutes(shapes, nodes, Object.keys(drags).length > 0);
  const edges = useMemo(() => {
    const names = new Set([...(shader?.vertex ?? []), ...(shader?.fragment ?? [])]);
    return shownEdges(routes, names, edge);
  }, [routes, shader, edge]);
  const shownLines = useReused<ShownEdge>(edges);
  const elements = useMemo((): Shown[] => [...files, ...nodes], [files, nodes]);

  const show = (shown: readonly ShownNode[]): void => {
    const area = canvas.current?.getBoundingClientRect();
    const around = shown.find((node) => node.id === selected) ?? shown[0];
    if (area && around) {
      const box = boundsOf(shown.map(({ position }) => position));
      const { center, zoom } = sightOf(box, area, middleOf(around));
      void flow.setCenter(center.x, center.y, { zoom, duration: moving(200) });
    }
  };
  const fitShader = (): void => {
    const used = nodes.filter((node) => !node.data.isDimmed);
    show(used.length > 0 ? used : nodes);
  };
  const isReady = useNodesInitialized();
  const shaderName = shader?.name;
  useEffect(() => {
    if (isReady) {
      fitShader();
    }
    // Only when other nodes are shown, not with every edit.
    // eslint-disable-next-line react-hooks/exhaustive-deps
  }, [shaderName, isWhole, isReady, arrangements]);
  useEffect(() => {
    const node = nodes.find((one) => one.id === selected);
    const area = canvas.current?.getBoundingClientRect();
    if (!node || !area || !isReady) {
      return;
    }
    const start = flow.flowToScreenPosition(node.position);
    const { zoom } = flow.getViewport();
    const isSeen =
      start.x > area.left - (nodeSize.width * zoom) / 2 &&
      start.y > area.top &&
      start.x + (nodeSize.width * zoom) / 2 < area.right &&
      start.y + nodeSize.height * zoom < area.bottom;
    if (!isSeen) {
      const { x, y } = middleOf(node);
      void flow.setCenter(x, y, { zoom: Math.max(zoom, readableZoom), duration: moving(200) });
    }
    // Only when another node is chosen: nobody's view jumps while nodes move.
    // eslint-disable-next-line react-hooks/exhaustive-deps
  }, [selected]);

  const change = (edit: (state: State) => State): void => {
    store.setState(edit);
  };
  const choose = (id: string): void => {
    setEdge(null);
    setPicks(new Set([id]));
    store.setState({ selected: id });
  };
  const goToSource = (id: string): void => {
    const node = projectOf(store.getState()).nodes.find((one) => one.id === id);
    if (node) {
      store.setState({ selected: id, goTo: { node: node.name, line: 1, column: 1 } });
    }
  };
  const menus = useMenus(offsets, choose, goToSource);
  const onNodesChange = (changes: NodeChange<Shown>[]): void => {
    const moved: Record<string, Point> = {};
    let isOver = false;
    const next = new Set(picked);
    let last: string | null = null;
    for (const one of changes) {
      if (one.type === 'position' && one.position) {
        moved[one.id] = one.position;
        isOver ||= one.dragging !== true;
      } else if (one.type === 'select' && one.selected) {
        next.add(one.id);
        last = one.id;
      } else if (one.type === 'select') {
        next.delete(one.id);
      }
    }
    if (last !== null || next.size < picked.size) {
      const stays = selected !== null && next.has(selected) ? selected : [...next].at(-1);
      setEdge(null);
      setPicks(next);
      store.setState({ selected: last ?? stays ?? selected });
    }
    if (Object.keys(moved).length === 0) {
      return;
    }
    const all = { ...drags, ...moved };
    if (isOver) {
      change((state) => withPlaces(state, offsets, Object.entries(all)));
      setDrags({});
    } else {
      setDrags(all);
    }
  };
  const middle = (): Point => {
    const area = canvas.current?.getBoundingClientRect();
    return flow.screenToFlowPosition({
      x: (area?.left ?? 0) + (area?.width ?? 0) / 2,
      y: (area?.top ?? 0) + (area?.height ?? 0) / 2,
    });
  };
  const add = (at: Point | null = null): void => {
    change((state) => withNewNode(state, offsets, at, middle()));
  };
  const duplicate = (): void => {
    change((state) => withDuplicates(state, picked));
  };
  const remove = (): void => {
    if (edge !== null) {
      change((state) => withoutReference(state, edge));
      setEdge(null);
    } else {
      change((state) => withoutNodes(state, [...picked]));
    }
  };
  const arrange = (): void => {
    const ids = nodes.map(({ id }) => id);
    change((state) => withArranged(state, offsets, ids));
    setArrangements(arrangements + 1);
  };
  const toggleWhole = (): void => {
    storeText(wholeKey, isWhole ? 'no' : 'yes');
    setWhole(!isWhole);
  };
  const find = (): void => {
    const [found] = nodes.filter((node) => node.data.isFound);
    if (found) {
      choose(found.id);
    } else {
      store.setState({
        notice: { kind: 'info', text: `no node is called like '${search}'` },
      });
    }
  };

  /** A wire that ends on a node connects it; one that ends on nothing offers nodes. */
  const onConnectEnd = (
    event: MouseEvent | TouchEvent,
    { fromNode, fromHandle, toNode }: FinalConnectionState,
  ): void => {
    if (!fromNode || toNode) {
      return;
    }
    const isStart = fromHandle.type === 'source';
    const under = (event.target as Element).closest('.react-flow__node-morl');
    const other = under?.getAttribute('data-id');
    if (other) {
      const [from, to] = isStart ? [fromNode.id, other] : [other, fromNode.id];
      change((state) => withReference(state, from, to));
      return;
    }
    const pointer = event instanceof MouseEvent ? event : event.changedTouches[0];
    const at = pointOf(pointer ?? { clientX: 0, clientY: 0 });
    menus.openWire(fromNode.id, isStart ? 'is built on by' : 'builds on', at);
  };
  const viewItems: PaletteItem[] = [
    ...(isWhole ? [{ name: 'Arrange all nodes', detail: 'in columns', run: arrange }] : []),
    { name: 'Show the whole shader', detail: 'or its chosen node', run: fitShader },
    {
      name: isWhole ? 'Show only the nodes of the shader' : 'Show the nodes of all shaders',
      run: toggleWhole,
    },
  ];
  const onKeyDown = (event: KeyboardEvent): void => {
    const direction = directionOf(event.key);
    const current = nodes.find((node) => node.id === selected) ?? nodes[0];
    if (event.key === 'Delete') {
      remove();
    } else if (event.target !== canvas.current || !current) {
      return;
    } else if (event.key === 'Enter') {
      event.preventDefault();
      goToSource(current.id);
    } else if (direction && event.altKey && isWhole) {
      event.preventDefault();
      const moved = nodes
        .filter((node) => picked.has(node.id))
        .map(({ id, position: { x, y } }) => {
          const place = { x: x + direction.x * keyStep, y: y + direction.y * keyStep };
          return [id, place] as const;
        });
      change((state) => withPlaces(state, offsets, moved, 'move by keys'));
    } else if (direction && !event.altKey && !event.ctrlKey && !event.metaKey) {
      event.preventDefault();
      choose(nextNode(nodes, current.position, direction)?.id ?? current.id);
    }
  };
  useCommands(() => [
    {
      name: 'New node',
      run: () => {
        add();
      },
    },
    {
      name: 'Put a node into the shader…',
      keys: 'double click on the graph',
      run: () => {
        const area = canvas.current?.getBoundingClientRect();
        menus.openNodes({ x: area?.left ?? 0, y: area?.top ?? 0 });
      },
    },
    { name: 'Duplicate the chosen nodes', run: duplicate },
    { name: 'Delete the chosen nodes', keys: 'Delete', run: remove },
    ...viewItems,
  ]);
  const chosenName = nodes.find((node) => node.id === selected)?.data.name;

  return (
    <section className="panel graph" aria-label="Graph">
      <div className="bar">
        <Toolbar label="Graph">
          <button
            onClick={() => {
              add();
            }}
          >
            Add node
          </button>
          <button onClick={duplicate} disabled={picked.size === 0}>
            Duplicate
          </button>
          <button onClick={remove} disabled={picked.size === 0 && edge === null}>
            Delete
          </button>
          <button onClick={arrange} disabled={!isWhole} title="Put all nodes into columns">
            Arrange
          </button>
          <button onClick={fitShader} title="Show the whole shader, or its chosen node">
            Fit
          </button>
          <button
            aria-pressed={isWhole}
            onClick={toggleWhole}
            title="Show the nodes of all shaders, or only those of the chosen one"
          >
            All
          </button>
        </Toolbar>
        <span className="space" />
        <form
          role="search"
          onSubmit={(event) => {
            event.preventDefault();
            find();
          }}
        >
          <input
            type="search"
            aria-label="Find a node by its name"
            placeholder="Find a node"
            value={search}
            onChange={(event) => {
              setSearch(event.target.value);
            }}
          />
        </form>
      </div>
      <div
        className="canvas"
        ref={canvas}
        role="application"
        aria-label="Nodes: arrow keys go from one to the next, Enter goes to the source, Alt and arrow keys move"
        tabIndex={0}
        onKeyDown={onKeyDown}
        onDoubleClick={(event) => {
          if ((event.target as Element).classList.contains('react-flow__pane')) {
            menus.openNodes(pointOf(event));
          }
        }}
      >
        <ReactFlow<Shown, ShownEdge>
          nodes={elements}
          edges={shownLines as ShownEdge[]}
          nodeTypes={nodeTypes}
          edgeTypes={edgeTypes}
          colorMode={theme}
          minZoom={0.1}
          nodesFocusable={false}
          edgesFocusable={false}
          disableKeyboardA11y
          deleteKeyCode={null}
          selectionMode={SelectionMode.Partial}
          zoomOnDoubleClick={false}
          onlyRenderVisibleElements={elements.length > manyNodes}
          onNodesChange={onNodesChange}
          onNodeClick={() => canvas.current?.focus()}
          onNodeDoubleClick={(_, { id }) => {
            goToSource(id);
          }}
          onNodeContextMenu={(event, { id }) => {
            event.preventDefault();
            const ids = picked.has(id) ? [...picked] : [id];
            if (!picked.has(id)) {
              choose(id);
            }
            menus.openNode(id, ids, pointOf(event));
          }}
          onPaneContextMenu={(event) => {
            event.preventDefault();
            menus.openGraph(pointOf(event), viewItems);
          }}
          onEdgeClick={(_, clicked) => {
            setEdge(clicked.id);
            // So that the Delete key is about it.
            canvas.current?.focus();
          }}
          onPaneClick={() => {
            setEdge(null);
            canvas.current?.focus();
          }}
          onConnect={({ source, target }) => {
            change((state) => withReference(state, source, target));
          }}
          onConnectEnd={onConnectEnd}
        >
          <Background />
          <MiniMap
            position="top-right"
            pannable
            zoomable
            ariaLabel="Map of the graph"
            style={minimapSize}
          />
        </ReactFlow>
        <span className="for-readers" aria-live="polite">
          {chosenName === undefined ? '' : `node ${chosenName}`}
        </span>
      </div>
      {menus.menu && <Palette key={menus.menu.label} {...menus.menu} onClose={menus.close} />}
    </section>
  );
}

/** The nodes and their references. */
export function GraphView() {
  return (
    <ReactFlowProvider>
      <Graph />
    </ReactFlowProvider>
  );
}
