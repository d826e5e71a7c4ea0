// SPDX-License-Identifier: MIT
// What is edited, and every edit as a plain function from a project to the next one.

/** A node of the graph. */
export interface GraphNode {
  /** Stays the same when the node is renamed. */
  readonly id: string;
  readonly name: string;
  readonly content: string;
  /** Names of the nodes that this one builds on. */
  readonly references: readonly string[];
  readonly x: number;
  readonly y: number;
  /** The path of the file that the node belongs to. */
  readonly file: string;
  /** The place of the node in that file's list when it was opened; null: a new node. */
  readonly index: number | null;
}

/** A node without its text: what the graph shows. */
export type NodeShape = Omit<GraphNode, 'content'>;

/** A file as it was opened, which is what saving it starts from. */
export interface NodeFile {
  readonly path: string;
  /** Of a node source: its node in the format of the node files. */
  readonly text: string;
  /** What a node source holds; null: there is no such file (any more). Other files have none. */
  readonly source?: string | null;
}

const sourceEnding = '.morlsource';

/** Whether a path is that of a node source, a file with one node. */
export function isSourcePath(path: string): boolean {
  return path.endsWith(sourceEnding);
}

/** The name of the node in a source whose header has none. */
export function nameOfSource(path: string): string {
  return path.slice(path.lastIndexOf('/') + 1, -sourceEnding.length);
}

/** The node file that a file's nodes belong to: sources lie in a folder of the same name. */
export function nodeFileOf(path: string): string {
  return isSourcePath(path) ? `${path.slice(0, path.lastIndexOf('/'))}.morl` : path;
}

/** A shader: the nodes of both passes, and the values of its macros. */
export interface Shader {
  readonly name: string;
  readonly vertex: readonly string[];
  readonly fragment: readonly string[];
  readonly macros: Readonly<Record<string, number>>;
  /** Values that count in one target only, by its name. */
  readonly targetMacros: Readonly<Record<string, Readonly<Record<string, number>>>>;
  readonly samplers: Readonly<Record<string, number>>;
  /** How many variants the manifest builds of it, by the values that it lists for macros. */
  readonly variants: number;
  /** Its place in the manifest when that was opened; null: a new shader. */
  readonly index: number | null;
}

/** Everything that undo and redo go over. */
export interface Project {
  readonly files: readonly NodeFile[];
  /** The list of shaders as it was opened; null: there was none. */
  readonly manifest: NodeFile | null;
  readonly nodes: readonly GraphNode[];
  readonly shaders: readonly Shader[];
  /** Uniforms that were set by hand, by name. */
  readonly values: Readonly<Record<string, readonly number[]>>;
}

export type StageName = 'vertex' | 'fragment';

/** An edit that is refused; the message is for the author. */
export class EditError extends Error {}

export function findNode(project: Project, name: string): GraphNode | undefined {
  // If two nodes have the same name, the later one counts.
  return project.nodes.findLast((node) => node.name === name);
}

export function nodeById(project: Project, id: string): GraphNode | undefined {
  return project.nodes.find((node) => node.id === id);
}

function changeNode(project: Project, id: string, change: Partial<GraphNode>): Project {
  const nodes = project.nodes.map((node) => (node.id === id ? { ...node, ...change } : node));
  return { ...project, nodes };
}

function changeShader(project: Project, name: string, change: Partial<Shader>): Project {
  const shaders = project.shaders.map((shader) =>
    shader.name === name ? { ...shader, ...change } : shader,
  );
  return { ...project, shaders };
}

export function setContent(project: Project, id: string, content: string): Project {
  return nodeById(project, id)?.content === content
    ? project
    : changeNode(project, id, { content });
}

export function moveNodes(
  project: Project,
  moves: readonly { id: string; x: number; y: number }[],
): Project {
  const places = new Map(moves.map(({ id, x, y }) => [id, { x: Math.round(x), y: Math.round(y) }]));
  const nodes = project.nodes.map((node) => {
    const place = places.get(node.id);
    return place ? { ...node, ...place } : node;
  });
  return { ...project, nodes };
}

/** The nodes of these names and all that they build on, in the order in which they are met. */
export function reachable<Shape extends NodeShape>(
  nodes: readonly Shape[],
  names: readonly string[],
): Shape[] {
  // If two nodes have the same name, the later one counts.
  const byName = new Map(nodes.map((node) => [node.name, node]));
  const met = new Set(names);
  // A set goes on over what is added on the way.
  for (const name of met) {
    byName.get(name)?.references.forEach((reference) => met.add(reference));
  }
  return [...met].flatMap((name) => byName.get(name) ?? []);
}

/** The nodes that a node builds on, directly or not, the nearest first. */
export function upstream(project: Project, name: string): GraphNode[] {
  return reachable(project.nodes, [name]).filter((node) => node.name !== name);
}

/** Makes a node build on another one. */
export function addReference(project: Project, id: string, reference: string): Project {
  const node = nodeById(project, id);
  if (!node || node.references.includes(reference)) {
    return project;
  }
  const isCycle =
    reference === node.name ||
    upstream(project, reference).some((other) => other.name === node.name);
  if (isCycle) {
    throw new EditError(
      `'${node.name}' cannot build on '${reference}': '${reference}' builds on '${node.name}' already, so this would be a cycle`,
    );
  }
  return changeNode(project, id, { references: [...node.references, reference] });
}

export function removeReference(project: Project, id: string, reference: string): Project {
  const node = nodeById(project, id);
  const references = node?.references.filter((name) => name !== reference) ?? [];
  return changeNode(project, id, { references });
}

/** A name that no node has. */
function freeName(project: Project, wanted: string): string {
  let name = wanted;
  for (let i = 2; findNode(project, name); ++i) {
    name = `${wanted}_${i}`;
  }
  return name;
}

/** An identifier that nothing else has, on any page. */
export function newId(): string {
  return Array.from(crypto.getRandomValues(new Uint32Array(4)), (one) => one.toString(36)).join('');
}

/** The value of a name; undefined: it has none. Names such as "constructor" are like all others. */
export function valueIn<Value>(table: Readonly<Record<string, Value>>, name: string) {
  return Object.hasOwn(table, name) ? table[name] : undefined;
}

const newContent = '// What this node does.\nvoid main() {\n}';

export function addNode(
  project: Project,
  at: { x: number; y: number; file: string },
): { project: Project; id: string } {
  const id = newId();
  const node: GraphNode = {
    id,
    name: freeName(project, 'node'),
    content: newContent,
    references: [],
    ...at,
    index: null,
  };
  return { project: { ...project, nodes: [...project.nodes, node] }, id };
}

export function duplicateNode(project: Project, id: string): { project: Project; id: string } {
  const node = nodeById(project, id);
  if (!node) {
    return { project, id };
  }
  const copy: GraphNode = {
    ...node,
    id: newId(),
    name: freeName(project, node.name),
    x: node.x + 40,
    y: node.y + 40,
    file: nodeFileOf(node.file),
    index: null,
  };
  return { project: { ...project, nodes: [...project.nodes, copy] }, id: copy.id };
}

/** Removes nodes. References to them stay out of the other nodes and shaders, too. */
export function removeNodes(project: Project, ids: readonly string[]): Project {
  const nodes = project.nodes.filter((node) => !ids.includes(node.id));
  const gone = new Set(
    project.nodes
      .filter((node) => ids.includes(node.id) && !nodes.some((other) => other.name === node.name))
      .map((node) => node.name),
  );
  const keep = (names: readonly string[]): readonly string[] =>
    names.some((name) => gone.has(name)) ? names.filter((name) => !gone.has(name)) : names;
  return {
    ...project,
    nodes: nodes.map((node) => ({ ...node, references: keep(node.references) })),
    shaders: project.shaders.map((shader) => ({
      ...shader,
      vertex: keep(shader.vertex),
      fragment: keep(shader.fragment),
    })),
  };
}

/** Renames a node where it is referred to, too. */
export function renameNode(project: Project, id: string, newName: string): Project {
  const node = nodeById(project, id);
  const name = newName.trim();
  if (!node || name === node.name) {
    return project;
  }
  if (name === '') {
    throw new EditError('a node needs a name');
  }
  if (findNode(project, name)) {
    throw new EditError(`there is a node '${name}' already`);
  }
  const swap = (names: readonly string[]): readonly string[] =>
    names.map((other) => (other === node.name ? name : other));
  return {
    ...project,
    nodes: project.nodes.map((other) => ({
      ...other,
      name: other.id === id ? name : other.name,
      references: swap(other.references),
    })),
    shaders: project.shaders.map((shader) => ({
      ...shader,
      vertex: swap(shader.vertex),
      fragment: swap(shader.fragment),
    })),
  };
}

/** Adds a node to a pass of a shader, or takes it out. */
export function toggleInPass(
  project: Project,
  shaderName: string,
  stage: StageName,
  name: string,
): Project {
  const shader = project.shaders.find((one) => one.name === shaderName);
  if (!shader) {
    return project;
  }
  const names = shader[stage].includes(name)
    ? shader[stage].filter((other) => other !== name)
    : [...shader[stage], name];
  return changeShader(project, shaderName, { [stage]: names });
}

export function setMacro(
  project: Project,
  shaderName: string,
  macro: string,
  value: number,
): Project {
  const shader = project.shaders.find((one) => one.name === shaderName);
  return changeShader(project, shaderName, { macros: { ...shader?.macros, [macro]: value } });
}

export function setUniform(project: Project, name: string, value: readonly number[]): Project {
  return { ...project, values: { ...project.values, [name]: value } };
}

/** A name that no shader has. */
function freeShaderName(project: Project, wanted: string): string {
  let name = wanted;
  for (let i = 2; project.shaders.some((shader) => shader.name === name); ++i) {
    name = `${wanted}_${i}`;
  }
  return name;
}

export function addShader(project: Project, wanted: string): { project: Project; name: string } {
  const name = freeShaderName(project, wanted);
  const shader: Shader = {
    name,
    vertex: [],
    fragment: [],
    macros: {},
    targetMacros: {},
    samplers: {},
    variants: 1,
    index: null,
  };
  return { project: { ...project, shaders: [...project.shaders, shader] }, name };
}

export function duplicateShader(
  project: Project,
  original: string,
): { project: Project; name: string } {
  const shader = project.shaders.find((one) => one.name === original);
  const name = freeShaderName(project, original);
  const copies = shader ? [{ ...shader, name, variants: 1, index: null }] : [];
  return { project: { ...project, shaders: [...project.shaders, ...copies] }, name };
}

/** Renames a shader; of several of one name, the first, which is the one that can be chosen. */
export function renameShader(project: Project, name: string, newName: string): Project {
  const wanted = newName.trim();
  if (wanted === '') {
    throw new EditError('a shader needs a name');
  }
  if (wanted === name) {
    return project;
  }
  if (project.shaders.some((shader) => shader.name === wanted)) {
    throw new EditError(`there is a shader '${wanted}' already`);
  }
  const at = project.shaders.findIndex((shader) => shader.name === name);
  const shaders = project.shaders.map((shader, i) =>
    i === at ? { ...shader, name: wanted } : shader,
  );
  return { ...project, shaders };
}

/** Removes a shader; of several of one name, the first. Its nodes stay. */
export function removeShader(project: Project, name: string): Project {
  const at = project.shaders.findIndex((shader) => shader.name === name);
  return { ...project, shaders: project.shaders.filter((_, i) => i !== at) };
}
