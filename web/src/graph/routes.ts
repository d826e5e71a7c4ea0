// SPDX-License-Identifier: MIT
// The lines of references, around the nodes that stand between.
import { nodeSize, type Point } from './layout';

/** So far a line stays from nodes, in units of the screen. */
const distance = 10;
/** So far a line goes straight on from a node before it turns. */
const lead = 18;
const radius = 8;

/** The places of nodes, ordered so that those near a line are found quickly. */
export class Obstacles {
  private readonly byLeft: readonly Point[];

  constructor(places: Iterable<Point>) {
    this.byLeft = [...places].sort((one, other) => one.x - other.x);
  }

  /** The nodes that reach into a span of columns. */
  between(left: number, right: number): Point[] {
    let low = 0;
    let high = this.byLeft.length;
    const start = left - nodeSize.width;
    while (low < high) {
      const middle = (low + high) >> 1;
      if ((this.byLeft[middle]?.x ?? 0) < start) low = middle + 1;
      else high = middle;
    }
    const found: Point[] = [];
    for (let i = low; i < this.byLeft.length; ++i) {
      const place = this.byLeft[i];
      if (!place || place.x > right) break;
      found.push(place);
    }
    return found;
  }
}

function isInRow({ y }: Point, top: number, bottom: number): boolean {
  return y - distance < bottom && y + nodeSize.height + distance > top;
}

function isInColumn({ x }: Point, left: number, right: number): boolean {
  return x - distance < right && x + nodeSize.width + distance > left;
}

/** A curve, as it is drawn where nothing stands between. */
function curve(from: Point, to: Point): string {
  const reach = Math.max(Math.abs(to.x - from.x) / 2, lead);
  return `M${from.x},${from.y} C${from.x + reach},${from.y} ${to.x - reach},${to.y} ${to.x},${to.y}`;
}

/** A line over some corners, which are rounded. */
function polyline(corners: readonly Point[]): string {
  const [first, ...rest] = corners;
  const towards = (from: Point, to: Point): Point => {
    const length = Math.hypot(to.x - from.x, to.y - from.y);
    const part = length === 0 ? 0 : Math.min(radius, length / 2) / length;
    return { x: from.x + (to.x - from.x) * part, y: from.y + (to.y - from.y) * part };
  };
  const parts = rest.map((corner, i) => {
    const next = rest[i + 1];
    if (!next) {
      return `L${corner.x},${corner.y}`;
    }
    const before = towards(corner, corners[i] ?? corner);
    const after = towards(corner, next);
    return `L${before.x},${before.y} Q${corner.x},${corner.y} ${after.x},${after.y}`;
  });
  return `M${first?.x ?? 0},${first?.y ?? 0} ${parts.join(' ')}`;
}

/**
 * The line from one node to another, as the data of an SVG path. Where a curve would run behind nodes, it goes along
 * the nearest free row instead; where there is none, it stays a curve.
 */
export function route(obstacles: Obstacles, source: Point, target: Point): string {
  const from = { x: source.x + nodeSize.width, y: source.y + nodeSize.height / 2 };
  const to = { x: target.x, y: target.y + nodeSize.height / 2 };
  const turns = [from.x + lead, to.x - lead] as const;
  const left = Math.min(...turns);
  const right = Math.max(...turns);
  const near = obstacles
    .between(left - distance, right + distance)
    .filter((place) => isInColumn(place, left, right));
  const isFree = (top: number, bottom: number, nodes: readonly Point[]): boolean =>
    !nodes.some((place) => isInRow(place, top, bottom));
  const isForward = to.x > from.x + lead;
  const between = near.filter(
    (place) =>
      !(place.x === source.x && place.y === source.y) &&
      !(place.x === target.x && place.y === target.y),
  );
  if (isForward && isFree(Math.min(from.y, to.y), Math.max(from.y, to.y), between)) {
    return curve(from, to);
  }
  const detour = (y: number): number => Math.abs(from.y - y) + Math.abs(to.y - y);
  const isOpen = (y: number): boolean =>
    isFree(y, y, near) &&
    turns.every((x, i) => {
      const end = i === 0 ? from.y : to.y;
      const column = between.filter((place) => isInColumn(place, x, x));
      return isFree(Math.min(y, end), Math.max(y, end), column);
    });
  const rows = [
    from.y,
    to.y,
    ...near.flatMap(({ y }) => [y - distance - 1, y + nodeSize.height + distance + 1]),
  ];
  const [row] = rows.filter(isOpen).sort((one, other) => detour(one) - detour(other));
  if (row === undefined) {
    return curve(from, to);
  }
  return polyline([
    from,
    { x: turns[0], y: from.y },
    { x: turns[0], y: row },
    { x: turns[1], y: row },
    { x: turns[1], y: to.y },
    to,
  ]);
}
