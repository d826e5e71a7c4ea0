// SPDX-License-Identifier: MIT
// What is wrong anywhere in the project.
import type { Message } from '../compiler/protocol';
import type { GraphNode, Project, Shader } from './project';
import { messagesOf, type State } from './store';

/** A message, and the shaders that are not chosen and have it. */
export interface OtherMessage extends Message {
  readonly shaders: readonly string[];
}

/** What was found in a shader that is not chosen. */
export interface OtherCheck {
  readonly messages: readonly Message[];
  /** What was looked at. */
  readonly project: Project;
}

export interface AllMessages {
  /** Of the chosen shader. */
  readonly own: readonly Message[];
  /** Of the others only. */
  readonly others: readonly OtherMessage[];
  /** The worst that any message says of a shader, by name. */
  readonly worst: ReadonlyMap<string, Message['severity']>;
  /** Of the project as a whole. */
  readonly remarks: readonly Message[];
}

function keyOf({ node, line, column, text }: Message): string {
  return [node, line, column, text].join('\0');
}

function contents(nodes: readonly GraphNode[]): Map<string, string> {
  return new Map(nodes.map(({ name, content }) => [name, content]));
}

/** The messages of all shaders. What was said of a node's former text is left out. */
export function allMessages(
  state: Pick<State, 'answer' | 'driverMessages' | 'others' | 'shader'>,
  nodes: readonly GraphNode[],
  shaders: readonly Shader[],
  remarks: readonly Message[],
): AllMessages {
  const own = messagesOf(state);
  const known = new Set(own.map(keyOf));
  const names = new Set(shaders.map(({ name }) => name));
  const now = contents(nodes);
  const others = new Map<string, OtherMessage>();
  const worst = new Map<string, Message['severity']>();
  const note = (shader: string, { severity }: Message): void => {
    worst.set(shader, worst.get(shader) === 'error' ? 'error' : severity);
  };
  own.forEach((message) => {
    note(state.shader, message);
  });
  for (const [shader, check] of state.others) {
    if (shader === state.shader || !names.has(shader) || check.messages.length === 0) {
      continue;
    }
    const then = check.project.nodes === nodes ? now : contents(check.project.nodes);
    for (const message of check.messages) {
      const key = keyOf(message);
      if (then.get(message.node) !== now.get(message.node)) {
        continue;
      }
      note(shader, message);
      if (!known.has(key)) {
        const shaders = [...(others.get(key)?.shaders ?? []), shader];
        others.set(key, { ...message, shaders });
      }
    }
  }
  return { own, others: [...others.values()], worst, remarks };
}
