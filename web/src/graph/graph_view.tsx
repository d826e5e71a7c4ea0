// SPDX-License-Identifier: MIT
import {
  Background,
  Controls,
  type Edge,
  MiniMap,
  type NodeChange,
  ReactFlow,
  ReactFlowProvider,
  useNodesInitialized,
  useReactFlow,
} from '@xyflow/react';
import { useEffect, useMemo, useRef, useState } from 'react';
import type { Message } from '../compiler/protocol';
import {
  addNode,
  addReference,
  duplicateNode,
  moveNodes,
  nodeById,
  nodeFileOf,
  type Project,
  removeNodes,
  removeReference,
} from '../model/project';
import { edited, projectOf, type State } from '../model/store';
import { useAllMessages, usePage, usePageStore } from '../model/use_store';
import { MorlGraphNode, type ShownNode } from './graph_node';
import { fileOffsets, nodeSize, type Point, referencesOf, toCanvas, toScreen } from './layout';

const minimapSize = { width: 130, height: 90 };
/** The names of nodes, of 13 CSS pixels, have 11 then. */
const readableZoom = 0.85;
const nodeTypes = { morl: MorlGraphNode };

/** Takes the elements of the last list that are equal, so that only nodes that differ are drawn again. */
function reuse(last: readonly ShownNode[], next: readonly ShownNode[]): ShownNode[] {
  const byId = new Map(last.map((node) => [node.id, node]));
  return next.map((node) => {
    const old = byId.get(node.id);
    return old && JSON.stringify(old) === JSON.stringify(node) ? old : node;
  });
}

/** Places of nodes while they are dragged, by id; the project gets them when the drag ends. */
type Drags = Readonly<Record<string, Point>>;

function countByNode(messages: readonly Message[]): Map<string, number> {
  const counts = new Map<string, number>();
  messages.forEach(({ node }) => counts.set(node, (counts.get(node) ?? 0) + 1));
  return counts;
}

function shownNodes(
  project: Project,
  shaderName: string,
  messages: readonly Message[],
  order: readonly string[],
  selected: string | null,
  drags: Drags,
  search: string,
): ShownNode[] {
  const offsets = fileOffsets(project);
  const places = new Map(order.map((name, i) => [name, i + 1]));
  const errorsOf = countByNode(messages.filter(({ severity }) => severity === 'error'));
  const warningsOf = countByNode(messages.filter(({ severity }) => severity === 'warning'));
  const shader = project.shaders.find((one) => one.name === shaderName);
  return project.nodes.map((node) => {
    return {
      id: node.id,
      type: 'morl',
      position: drags[node.id] ?? toScreen(offsets, node.file, node),
      selected: node.id === selected,
      ...nodeSize,
      measured: nodeSize,
      ariaLabel: `node ${node.name}`,
      data: {
        name: node.name,
        file: node.file,
        errors: errorsOf.get(node.name) ?? 0,
        warnings: warningsOf.get(node.name) ?? 0,
        place: places.get(node.name) ?? 0,
        isInVertex: shader?.vertex.includes(node.name) ?? false,
        isInFragment: shader?.fragment.includes(node.name) ?? false,
        isFound: search !== '' && node.name.toLowerCase().includes(search.toLowerCase()),
      },
    };
  });
}

function shownEdges(project: Project, shaderName: string, chosen: string | null): Edge[] {
  const shader = project.shaders.find((one) => one.name === shaderName);
  const used = new Set([...(shader?.vertex ?? []), ...(shader?.fragment ?? [])]);
  return referencesOf(project).map(({ from, to }) => {
    const id = `${from.id}>${to.id}`;
    return {
      id,
      source: from.id,
      target: to.id,
      selected: id === chosen,
      className: used.has(from.name) && used.has(to.name) ? 'used' : '',
      ariaLabel: `'${to.name}' builds on '${from.name}'`,
    };
  });
}

function Graph() {
  const store = usePageStore();
  const project = usePage(projectOf);
  const shader = usePage((state) => state.shader);
  const selected = usePage((state) => state.selected);
  const order = usePage((state) => state.answer?.texts[state.target][state.stage]?.nodes);
  const { own, others, remarks } = useAllMessages();
  const theme = usePage((state) => state.theme);
  const flow = useReactFlow();
  const canvas = useRef<HTMLDivElement>(null);
  const [drags, setDrags] = useState<Drags>({});
  const [edge, setEdge] = useState<string | null>(null);
  const [search, setSearch] = useState('');
  // The Delete key is about one thing: the edge, or otherwise the node.
  const shownAsSelected = edge === null ? selected : null;
  const lastNodes = useRef<ShownNode[]>([]);
  const nodes = useMemo(() => {
    const messages = [...own, ...others, ...remarks];
    const next = shownNodes(project, shader, messages, order ?? [], shownAsSelected, drags, search);
    lastNodes.current = reuse(lastNodes.current, next);
    return lastNodes.current;
  }, [project, shader, own, others, remarks, order, shownAsSelected, drags, search]);
  const edges = useMemo(() => shownEdges(project, shader, edge), [project, shader, edge]);

  const fitShader = (): void => {
    const used = nodes.filter((node) => node.data.isInVertex || node.data.isInFragment);
    const shown = used.length > 0 ? used : nodes;
    const { width, height } = flow.getNodesBounds(shown);
    const area = canvas.current?.getBoundingClientRect();
    const fits =
      width * readableZoom < (area?.width ?? 0) && height * readableZoom < (area?.height ?? 0);
    // Where not all can be read at once, the chosen one can.
    const chosen = shown.find((node) => node.id === selected) ?? shown[0];
    void flow.fitView({
      nodes: fits || !chosen ? shown : [chosen],
      padding: 0.1,
      minZoom: readableZoom,
      maxZoom: fits ? 1.5 : readableZoom,
      duration: 200,
    });
  };
  const isReady = useNodesInitialized();
  useEffect(() => {
    if (isReady) {
      fitShader();
    }
    // Only when another shader is shown, not with every edit.
    // eslint-disable-next-line react-hooks/exhaustive-deps
  }, [shader, isReady]);

  const change = (edit: (whole: State) => State): void => {
    store.setState(edit);
  };
  const commit = (moved: Drags): void => {
    change((whole) =>
      edited(whole, (before) => {
        const offsets = fileOffsets(before);
        const moves = Object.entries(moved).map(([id, point]) => {
          const file = nodeById(before, id)?.file ?? '';
          return { id, ...toCanvas(offsets, file, point) };
        });
        return moveNodes(before, moves);
      }),
    );
    setDrags({});
  };
  const onNodesChange = (changes: NodeChange<ShownNode>[]): void => {
    const moved: Record<string, Point> = {};
    let isOver = false;
    for (const one of changes) {
      if (one.type === 'position' && one.position) {
        moved[one.id] = one.position;
        isOver ||= one.dragging !== true;
      } else if (one.type === 'select' && one.selected) {
        setEdge(null);
        store.setState({ selected: one.id });
      }
    }
    if (Object.keys(moved).length === 0) {
      return;
    }
    if (isOver) {
      commit({ ...drags, ...moved });
    } else {
      setDrags({ ...drags, ...moved });
    }
  };
  const disconnect = (ids: readonly string[]): void => {
    change((whole) =>
      edited(whole, (project) =>
        ids.reduce((next, id) => {
          const [from = '', to = ''] = id.split('>');
          return removeReference(next, to, nodeById(next, from)?.name ?? '');
        }, project),
      ),
    );
  };
  const add = (): void => {
    change((whole) => {
      const offsets = fileOffsets(projectOf(whole));
      const chosen =
        whole.selected === null ? undefined : nodeById(projectOf(whole), whole.selected);
      const file = nodeFileOf(chosen?.file ?? projectOf(whole).files[0]?.path ?? '');
      const center = flow.screenToFlowPosition({
        x: window.innerWidth / 4,
        y: window.innerHeight / 4,
      });
      const { x, y } = chosen
        ? { x: chosen.x + 40, y: chosen.y + 90 }
        : toCanvas(offsets, file, center);
      const at = { x: Math.round(x), y: Math.round(y), file };
      const added = addNode(projectOf(whole), at);
      return { ...edited(whole, () => added.project), selected: added.id };
    });
  };
  const duplicate = (): void => {
    change((whole) => {
      if (whole.selected === null) {
        return whole;
      }
      const copied = duplicateNode(projectOf(whole), whole.selected);
      return { ...edited(whole, () => copied.project), selected: copied.id };
    });
  };
  const remove = (): void => {
    if (edge !== null) {
      disconnect([edge]);
      setEdge(null);
    } else if (selected !== null) {
      change((whole) => edited(whole, (project) => removeNodes(project, [selected])));
    }
  };
  const find = (): void => {
    const [found] = nodes.filter((node) => node.data.isFound);
    if (found) {
      store.setState({ selected: found.id });
      void flow.fitView({ nodes: [found], maxZoom: 1.2, duration: 200 });
    } else {
      store.setState({
        notice: { kind: 'info', text: `no node is called like '${search}'` },
      });
    }
  };

  return (
    <section className="panel graph" aria-label="Graph">
      <div className="bar">
        <button onClick={add}>Add node</button>
        <button onClick={duplicate} disabled={selected === null}>
          Duplicate
        </button>
        <button onClick={remove} disabled={selected === null && edge === null}>
          Delete
        </button>
        <button onClick={fitShader}>Show shader</button>
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
        tabIndex={-1}
        onKeyDown={(event) => {
          if (event.key === 'Delete') {
            remove();
          }
        }}
      >
        <ReactFlow<ShownNode>
          nodes={nodes}
          edges={edges}
          nodeTypes={nodeTypes}
          colorMode={theme}
          minZoom={0.1}
          edgesFocusable={false}
          deleteKeyCode={null}
          onNodesChange={onNodesChange}
          onEdgeClick={(event, clicked) => {
            setEdge(clicked.id);
            // So that the Delete key is about it.
            (event.target as Element).closest<HTMLElement>('.canvas')?.focus();
          }}
          onPaneClick={() => {
            setEdge(null);
          }}
          onConnect={({ source, target }) => {
            change((whole) =>
              edited(whole, (project) =>
                addReference(project, target, nodeById(project, source)?.name ?? ''),
              ),
            );
          }}
        >
          <Background />
          <MiniMap
            position="top-right"
            pannable
            zoomable
            ariaLabel="Map of the graph"
            style={minimapSize}
          />
          <Controls showInteractive={false} />
        </ReactFlow>
      </div>
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
