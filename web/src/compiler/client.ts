// SPDX-License-Identifier: MIT
import { findNode, type Project } from '../model/project';
import { type Answer, failedAnswer, type Job, type SourceNode } from './protocol';

/** What has to be sent so that the compiler has the nodes of a project. */
export function changesSince(
  sent: ReadonlyMap<string, SourceNode>,
  project: Project,
): { changed: SourceNode[]; removed: string[] } {
  const names = new Set(project.nodes.map((node) => node.name));
  const changed: SourceNode[] = [];
  for (const name of names) {
    const node = findNode(project, name);
    const known = sent.get(name);
    if (node && (known?.content !== node.content || known.references !== node.references)) {
      changed.push({ name, content: node.content, references: node.references });
    }
  }
  return { changed, removed: [...sent.keys()].filter((name) => !names.has(name)) };
}

/**
 * The compiler in its worker. Of the jobs that come while it is busy, only the last one is done. A
 * worker that fails is replaced, and the next job brings it all nodes.
 */
export class CompilerClient {
  private worker: Worker;
  private readonly sent = new Map<string, SourceNode>();
  private waiting: { project: Project; shader: string } | undefined;
  private isBusy = false;
  private lastId = 0;

  constructor(private readonly onAnswer: (answer: Answer) => void) {
    this.worker = this.start();
  }

  private start(): Worker {
    const worker = new Worker(new URL('./worker.ts', import.meta.url), { type: 'module' });
    worker.onmessage = (event: MessageEvent<Answer>) => {
      this.take(event.data);
    };
    worker.onerror = () => {
      this.take(failedAnswer(this.lastId, 'the compiler has stopped'));
    };
    return worker;
  }

  private take(answer: Answer): void {
    this.isBusy = false;
    if (answer.failure) {
      this.worker.terminate();
      this.sent.clear();
      this.worker = this.start();
    }
    if (this.waiting) {
      this.compile(this.waiting.project, this.waiting.shader);
    }
    this.onAnswer(answer);
  }

  compile(project: Project, shaderName: string): void {
    if (this.isBusy) {
      this.waiting = { project, shader: shaderName };
      return;
    }
    this.waiting = undefined;
    const shader = project.shaders.find((one) => one.name === shaderName);
    if (!shader) {
      return;
    }
    const { changed, removed } = changesSince(this.sent, project);
    changed.forEach((node) => this.sent.set(node.name, node));
    removed.forEach((name) => this.sent.delete(name));
    this.lastId += 1;
    const { vertex, fragment, macros, targetMacros, samplers } = shader;
    const passes = { vertex, fragment, macros, targetMacros, samplers };
    const optionalMacros = project.shaders.flatMap((one) => Object.keys(one.macros));
    const id = this.lastId;
    const job: Job = { id, changed, removed, ...passes, optionalMacros };
    this.isBusy = true;
    this.worker.postMessage(job);
  }
}
