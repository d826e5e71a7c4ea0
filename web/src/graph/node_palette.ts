// SPDX-License-Identifier: MIT
// What the palettes of the graph offer.
import { declarationsOf, languageWords, visibleDeclarations } from '../editor/words';
import {
  findNode,
  type GraphNode,
  nodeById,
  type Project,
  reachable,
  type Shader,
  type StageName,
} from '../model/project';
import { withoutComments } from '../without_comments';

const knownWords = new Set(['main', ...languageWords.map((word) => word.label)]);

/** The names that a source uses and neither it nor the language declares. Macros are not among them. */
function readNames(node: GraphNode): string[] {
  const code = withoutComments(node.content).replace(/^\s*#.*/gm, ' ');
  const own = new Set(declarationsOf(node).map((one) => one.name));
  const words = code.match(/(?<![\w.$#])[A-Za-z_$][\w$]*/g) ?? [];
  return [...new Set(words)].filter((word) => !own.has(word) && !knownWords.has(word));
}

/** What a node declares and reads, in words. */
export function detailOf(node: GraphNode): string {
  const declared = declarationsOf(node).map((one) => one.name);
  const parts = [
    declared.length > 0 ? `declares ${declared.join(', ')}` : '',
    readNames(node).length > 0 ? `reads ${readNames(node).join(', ')}` : '',
  ];
  return parts.filter(Boolean).join(' · ');
}

/** The names that a node reads and nothing that it builds on declares. */
function missingNames(project: Project, node: GraphNode): Set<string> {
  const visible = new Set(visibleDeclarations(project, node).map((one) => one.name));
  return new Set(readNames(node).filter((name) => !visible.has(name)));
}

/** The end of a wire that a person has dropped: of the node that builds on something, or is built on. */
export type WireEnd = 'builds on' | 'is built on by';

/** The nodes that a wire can lead to, those first that declare or read what the other end is about. */
export function nodesForWire(project: Project, id: string, end: WireEnd): GraphNode[] {
  const node = nodeById(project, id);
  if (!node) {
    return [];
  }
  const missing = missingNames(project, node);
  const own = new Set(declarationsOf(node).map((one) => one.name));
  const helps = (other: GraphNode): boolean =>
    end === 'builds on'
      ? declarationsOf(other).some((one) => missing.has(one.name))
      : [...missingNames(project, other)].some((name) => own.has(name));
  const closesRing = (other: GraphNode): boolean => {
    const [start, goal] = end === 'builds on' ? [other, node] : [node, other];
    return reachable(project.nodes, [start.name]).includes(goal);
  };
  const isKnown = (other: GraphNode): boolean =>
    end === 'builds on'
      ? node.references.includes(other.name)
      : other.references.includes(node.name);
  const offered = project.nodes.filter((other) => !closesRing(other) && !isKnown(other));
  const rank = new Map(offered.map((other) => [other, helps(other) ? 0 : 1]));
  return offered.sort((one, other) => (rank.get(one) ?? 0) - (rank.get(other) ?? 0));
}

/** The pass that a node is for: the one that most shaders have it in, otherwise as its file is called. */
export function stageOf({ shaders, nodes }: Project, name: string): StageName {
  const uses = (shader: Shader, stage: StageName): boolean => shader[stage].includes(name);
  const vertex = shaders.filter((shader) => uses(shader, 'vertex')).length;
  const fragment = shaders.filter((shader) => uses(shader, 'fragment')).length;
  if (vertex !== fragment) {
    return vertex > fragment ? 'vertex' : 'fragment';
  }
  const node = nodes.findLast((one) => one.name === name);
  return node?.file.includes('vertex') ? 'vertex' : 'fragment';
}

/** The nodes that are in no pass of a shader. */
export function nodesOutside(project: Project, shader: Shader | undefined): GraphNode[] {
  const inside = new Set([...(shader?.vertex ?? []), ...(shader?.fragment ?? [])]);
  return project.nodes.filter(
    (node) => !inside.has(node.name) && findNode(project, node.name) === node,
  );
}
