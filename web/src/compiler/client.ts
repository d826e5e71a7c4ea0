// SPDX-License-Identifier: MIT
import type { Project } from '../model/project';
import { type Answer, failedAnswer, type Job, type SourceNode } from './protocol';

/** What has to be sent so that the compiler has the nodes of a project. */
export function changesSince(
  sent: ReadonlyMap<string, SourceNode>,
  project: Project,
): { changed: SourceNode[]; removed: string[] } {
  // If two nodes have the same name, the later one counts.
  const nodes = new Map(project.nodes.map((node) => [node.name, node]));
  const changed: SourceNode[] = [];
  for (const [name, { content, references }] of nodes) {
    const known = sent.get(name);
    if (known?.content !== content || known.references !== references) {
      changed.push({ name, content, references });
    }
  }
  return { changed, removed: [...sent.keys()].filter((name) => !nodes.has(name)) };
}

/**
 * The compiler in its worker. Of the jobs that come while it is busy, only the last one is done. A
 * worker that fails is replaced, and gets all nodes again; a job that makes it fail twice is given up.
 */
export class CompilerClient {
  private worker: Worker;
  private readonly sent = new Map<string, SourceNode>();
  private waiting: { project: Project; shader: string } | undefined;
  private isBusy = false;
  /** The last job; null: there was none. */
  private last: { project: Project; shader: string } | null = null;
  /** Whether the last answer was a failure. */
  private hasFailed = false;
  private lastId = 0;

  /** @param onRestart is told why the compiler was started again */
  constructor(
    private readonly onAnswer: (answer: Answer) => void,
    private readonly onRestart: (failure: string) => void,
  ) {
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
    const failed = answer.failure === '' ? null : this.last;
    const isRetry = failed !== null && !this.hasFailed;
    this.hasFailed = answer.failure !== '';
    this.isBusy = false;
    if (answer.failure !== '') {
      this.worker.terminate();
      this.sent.clear();
      this.worker = this.start();
    }
    const next = this.waiting ?? (isRetry ? failed : null);
    if (next) {
      this.compile(next.project, next.shader);
    }
    if (isRetry) {
      this.onRestart(answer.failure);
    } else {
      this.onAnswer(answer);
    }
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
    this.last = { project, shader: shaderName };
    this.worker.postMessage(job);
  }
}
