// SPDX-License-Identifier: MIT
import { expect, test } from 'vitest';
import { sampleProject } from '../src/files/samples';
import { arranged, nodeSize, readableZoom, sightOf } from '../src/graph/layout';
import { nodesForWire } from '../src/graph/node_palette';
import { Obstacles, route } from '../src/graph/routes';
import { nextNode } from '../src/graph/walk';
import { findNode, renameNode, renameShader, setContent } from '../src/model/project';
import { revealed } from '../src/model/reveal';
import { idOf } from './support';

/** Points of a line: the ends and corners of its pieces. */
function points(path: string): { x: number; y: number }[] {
  return [...path.matchAll(/(-?[\d.]+),(-?[\d.]+)/g)].map(([, x, y]) => ({
    x: Number(x),
    y: Number(y),
  }));
}

test('lines go around nodes, and are curves where nothing is in the way', () => {
  const source = { x: 0, y: 0 };
  const target = { x: 800, y: 0 };
  const between = { x: 400, y: 0 };
  expect(route(new Obstacles([source, target]), source, target)).toContain('C');
  const line = route(new Obstacles([source, between, target]), source, target);
  expect(line).not.toContain('C');
  const crossing = points(line).filter(({ x }) => x > 410 && x < 590);
  expect(crossing.filter(({ y }) => y > -10 && y < nodeSize.height + 10)).toEqual([]);
  expect(points(line).some(({ y }) => y < 0 || y > nodeSize.height)).toBe(true);
  // Back to a node on the left, around both.
  const back = points(route(new Obstacles([source, target]), target, source));
  expect(back.some(({ y }) => y < -10 || y > nodeSize.height + 10)).toBe(true);
});

test('nodes in columns stand right of what they build on, and apart', () => {
  const { nodes } = sampleProject();
  const places = arranged(nodes);
  for (const node of nodes) {
    const place = places.get(node.id);
    for (const name of node.references) {
      const base = nodes.find((one) => one.name === name && one.file === node.file);
      expect(place?.x, `${node.name} ${name}`).toBeGreaterThan(places.get(base?.id ?? '')?.x ?? -1);
    }
    const near = nodes.filter((other) => {
      const dx = (places.get(other.id)?.x ?? 0) - (place?.x ?? 0);
      const dy = (places.get(other.id)?.y ?? 0) - (place?.y ?? 0);
      return Math.abs(dx) < nodeSize.width && Math.abs(dy) < nodeSize.height;
    });
    expect(near).toEqual([node]);
  }
});

test('a view shows all, or what can be read around a point', () => {
  const area = { width: 850, height: 340 };
  const small = sightOf({ x: 0, y: 0, width: 300, height: 100 }, area, { x: 0, y: 0 });
  expect(small).toEqual({ center: { x: 150, y: 50 }, zoom: 1.2 });
  const box = { x: 0, y: 0, width: 3000, height: 200 };
  const { center, zoom } = sightOf(box, area, { x: 0, y: 0 });
  expect(zoom).toBe(readableZoom);
  expect(center).toEqual({ x: -30 + 500, y: 100 });
});

test('arrow keys find the nearest node in their direction', () => {
  const at = (name: string, x: number, y: number) => ({ name, position: { x, y } });
  const nodes = [at('start', 0, 0), at('near', 260, 60), at('far', 520, 0), at('below', 0, 80)];
  const next = (x: number, y: number) => nextNode(nodes, { x: 0, y: 0 }, { x, y })?.name;
  expect([next(1, 0), next(0, 1), next(-1, 0)]).toEqual(['near', 'below', undefined]);
});

test('a wire leads first to what declares what is missing, and never into a ring', () => {
  const project = sampleProject();
  const bare = setContent(
    project,
    idOf(project, 'blur'),
    'void main() {\nfloat a = fogColor.x;\n}',
  );
  const [first] = nodesForWire(bare, idOf(bare, 'blur'), 'builds on');
  expect(first?.name).toBe('fog');
  const bases = nodesForWire(project, idOf(project, 'surface_texture'), 'builds on');
  expect(bases.map(({ name }) => name)).not.toContain('surface_out');
});

test('a step of undo shows what it has changed', () => {
  const project = sampleProject();
  const id = idOf(project, 'fog');
  const content = findNode(project, 'fog')?.content ?? '';
  const longer = setContent(project, id, content.replace('void main', 'x void main'));
  const line = content.slice(0, content.indexOf('void main')).split('\n').length;
  expect(revealed(longer, project)).toEqual({
    selected: id,
    goTo: { node: 'fog', line, column: 1 },
  });
  expect(revealed(project, renameNode(project, id, 'mist')).selected).toBeDefined();
  const shader = project.shaders[0]?.name ?? '';
  expect(revealed(project, renameShader(project, shader, 'wall'))).toEqual({ shader: 'wall' });
});
