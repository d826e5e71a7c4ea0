// SPDX-License-Identifier: MIT
// From node to node by arrow keys.
import { nodeSize, type Point } from './layout';

const directions: Readonly<Record<string, Point>> = {
  ArrowLeft: { x: -1, y: 0 },
  ArrowRight: { x: 1, y: 0 },
  ArrowUp: { x: 0, y: -1 },
  ArrowDown: { x: 0, y: 1 },
};

/** The way that an arrow key points; undefined: it is another key. */
export function directionOf(key: string): Point | undefined {
  return Object.hasOwn(directions, key) ? directions[key] : undefined;
}

/** The nearest node in a direction; what is off to the side counts as farther. */
export function nextNode<Node extends { readonly position: Point }>(
  nodes: readonly Node[],
  from: Point,
  direction: Point,
): Node | undefined {
  let nearest: Node | undefined;
  let least = Infinity;
  for (const node of nodes) {
    const dx = node.position.x - from.x;
    const dy = node.position.y - from.y;
    const ahead = dx * direction.x + dy * direction.y;
    const aside = Math.abs(dx * direction.y) + Math.abs(dy * direction.x);
    const cost = ahead + 2 * aside;
    if (ahead > nodeSize.height / 2 && cost < least) {
      least = cost;
      nearest = node;
    }
  }
  return nearest;
}
