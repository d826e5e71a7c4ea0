// SPDX-License-Identifier: MIT
// The lists that the graph opens: nodes to put into the shader, ends for a wire, what can be done with a node.
import { useReactFlow } from '@xyflow/react';
import { useState } from 'react';
import { stages } from '../compiler/protocol';
import { nodeById, type StageName, toggleInPass } from '../model/project';
import { edited, projectOf, type State } from '../model/store';
import { usePageStore } from '../model/use_store';
import type { PaletteItem } from '../palette';
import { withDuplicates, withNewNode, withoutNodes, withReference } from './edits';
import type { Offsets, Point } from './layout';
import { detailOf, nodesForWire, nodesOutside, stageOf, type WireEnd } from './node_palette';

/** An open list, and where it is, in CSS pixels of the page. */
export interface Menu {
  readonly label: string;
  readonly at: Point;
  readonly items: readonly PaletteItem[];
}

function toggled(state: State, stage: StageName, name: string): State {
  return edited(state, (project) => toggleInPass(project, state.shader, stage, name));
}

/**
 * @param choose shows a node in the editor, by its id
 * @param goToSource puts the caret into the source of a node, by its id
 */
export function useMenus(
  offsets: Offsets,
  choose: (id: string) => void,
  goToSource: (id: string) => void,
) {
  const store = usePageStore();
  const flow = useReactFlow();
  const [menu, setMenu] = useState<Menu | null>(null);
  const change = store.setState;
  const shaderOf = (state: State) =>
    projectOf(state).shaders.find(({ name }) => name === state.shader);

  const newNode = (at: Point) => () => {
    const place = flow.screenToFlowPosition({ ...at });
    change((state) => withNewNode(state, offsets, place, place));
  };

  /** Nodes that are not in the shader, to be put into the pass that they are for. */
  const openNodes = (at: Point): void => {
    const project = projectOf(store.getState());
    const nodes = nodesOutside(project, shaderOf(store.getState())).map((node) => ({
      name: node.name,
      detail: detailOf(node),
      run: () => {
        change((state) => toggled(state, stageOf(project, node.name), node.name));
        choose(node.id);
      },
    }));
    const empty = { name: 'New node', detail: 'an empty one, here', run: newNode(at) };
    setMenu({ label: 'Put a node into the shader', at, items: [empty, ...nodes] });
  };

  /** Nodes for the other end of a wire. */
  const openWire = (id: string, end: WireEnd, at: Point): void => {
    const project = projectOf(store.getState());
    const connected = (state: State, other: string): State =>
      end === 'builds on' ? withReference(state, other, id) : withReference(state, id, other);
    const nodes = nodesForWire(project, id, end).map((node) => ({
      name: node.name,
      detail: detailOf(node),
      run: () => {
        change((state) => connected(state, node.id));
      },
    }));
    const empty = {
      name: 'New node',
      detail: 'an empty one, here',
      run: () => {
        newNode(at)();
        change((state) => (state.selected === null ? state : connected(state, state.selected)));
      },
    };
    const name = nodeById(project, id)?.name ?? '';
    setMenu({ label: `'${name}' ${end} …`, at, items: [...nodes, empty] });
  };

  /** @param more what can be done with the whole graph */
  const openGraph = (at: Point, more: readonly PaletteItem[]): void => {
    const put = {
      name: 'Put a node here…',
      detail: 'a new one, or one of another shader',
      keys: 'double click',
      run: () => {
        openNodes(at);
      },
    };
    setMenu({
      label: 'Graph',
      at,
      items: [put, { name: 'New node', run: newNode(at) }, ...more],
    });
  };

  /** @param ids of all nodes that are chosen with this one */
  const openNode = (id: string, ids: readonly string[], at: Point): void => {
    const name = nodeById(projectOf(store.getState()), id)?.name ?? '';
    const shader = shaderOf(store.getState());
    const all = ids.length > 1 ? ` ${ids.length} nodes` : '';
    const items: PaletteItem[] = [
      {
        name: 'Edit the source',
        keys: 'Enter',
        run: () => {
          goToSource(id);
        },
      },
      ...stages.map((stage) => ({
        name: shader?.[stage].includes(name)
          ? `Take out of the ${stage} pass`
          : `Put into the ${stage} pass`,
        run: () => {
          change((state) => toggled(state, stage, name));
        },
      })),
      {
        name: 'Build on…',
        detail: 'those that declare what is missing come first',
        run: () => {
          openWire(id, 'builds on', at);
        },
      },
      {
        name: `Duplicate${all}`,
        run: () => {
          change((state) => withDuplicates(state, ids));
        },
      },
      {
        name: `Delete${all}`,
        keys: 'Delete',
        run: () => {
          change((state) => withoutNodes(state, ids));
        },
      },
    ];
    setMenu({ label: name, at, items });
  };

  const close = (): void => {
    setMenu(null);
  };
  return { menu, openNodes, openWire, openGraph, openNode, close };
}
