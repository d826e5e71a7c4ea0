// SPDX-License-Identifier: MIT
// What is derived from the state, once for all views, and only when what it depends on has changed.
import { createSelectorCreator, lruMemoize } from 'reselect';
import { allMessages } from './all_messages';
import type { NodeShape } from './project';
import { remarksOn } from './remarks';
import { projectOf, type State } from './store';

const createSelector = createSelectorCreator(lruMemoize).withTypes<State>();

function hasSameShape(one: NodeShape, other: NodeShape | undefined): boolean {
  return (
    one === other ||
    (one.id === other?.id &&
      one.name === other.name &&
      one.references === other.references &&
      one.x === other.x &&
      one.y === other.y &&
      one.file === other.file)
  );
}

function areSameShapes(some: readonly NodeShape[], others: readonly NodeShape[]): boolean {
  return some.length === others.length && some.every((one, i) => hasSameShape(one, others[i]));
}

const nodesOf = (state: State) => projectOf(state).nodes;
const shadersOf = (state: State) => projectOf(state).shaders;

/** The shapes of all nodes: the same array as long as only texts change. */
export const shapesOf = createSelector([nodesOf], (nodes): readonly NodeShape[] => nodes, {
  memoizeOptions: { resultEqualityCheck: areSameShapes },
});

/** The shape of the node in the editor. */
export const chosenShapeOf = createSelector(
  [shapesOf, (state) => state.selected],
  (shapes, selected) => shapes.find(({ id }) => id === selected),
);

/** The chosen shader. */
export const shaderOf = createSelector([shadersOf, (state) => state.shader], (shaders, name) =>
  shaders.find((shader) => shader.name === name),
);

const remarksOf = createSelector([shapesOf, shadersOf], remarksOn);

/** What is wrong anywhere in the project. */
export const allMessagesOf = createSelector(
  [
    (state) => state.answer,
    (state) => state.driverMessages,
    (state) => state.others,
    (state) => state.shader,
    nodesOf,
    shadersOf,
    remarksOf,
  ],
  (answer, driverMessages, others, shader, nodes, shaders, remarks) =>
    allMessages({ answer, driverMessages, others, shader }, nodes, shaders, remarks),
);

/** How much is wrong with a node. */
export interface Counts {
  readonly errors: number;
  readonly warnings: number;
}

function areSameCounts(
  some: ReadonlyMap<string, Counts>,
  others: ReadonlyMap<string, Counts>,
): boolean {
  return (
    some.size === others.size &&
    [...some].every(([name, { errors, warnings }]) => {
      const other = others.get(name);
      return other?.errors === errors && other.warnings === warnings;
    })
  );
}

/** How much is wrong with the nodes that have messages, by name. */
export const countsOf = createSelector(
  [allMessagesOf],
  ({ own, others, remarks }): ReadonlyMap<string, Counts> => {
    const counts = new Map<string, Counts>();
    for (const { node, severity } of [...own, ...others, ...remarks]) {
      const { errors, warnings } = counts.get(node) ?? { errors: 0, warnings: 0 };
      const isError = severity === 'error';
      counts.set(
        node,
        isError ? { errors: errors + 1, warnings } : { errors, warnings: warnings + 1 },
      );
    }
    return counts;
  },
  { memoizeOptions: { resultEqualityCheck: areSameCounts } },
);

function areSameNames(some: readonly string[], others: readonly string[]): boolean {
  return some.length === others.length && some.every((name, i) => name === others[i]);
}

/** The names of the nodes of the text that is shown, in its order. */
export const orderOf = createSelector(
  [(state) => state.answer?.texts[state.target][state.stage]?.nodes],
  (names): readonly string[] => names ?? [],
  { memoizeOptions: { resultEqualityCheck: areSameNames } },
);
