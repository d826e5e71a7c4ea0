// SPDX-License-Identifier: MIT
import { type Project, reachable, type Shader } from '../model/project';
import { startWorker } from './start_worker';
import { type Answer, failedAnswer, type Job, type Message, type SourceNode } from './protocol';

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

/** All that the messages of a shader depend on; each element is compared by itself. */
function inputsOf(project: Project, shader: Shader): readonly unknown[] {
  const { vertex, fragment, macros, targetMacros, samplers } = shader;
  return [
    ...[vertex, fragment, macros, targetMacros, samplers],
    ...reachable(project.nodes, [...vertex, ...fragment]).flatMap((node) => [
      node.name,
      node.content,
      node.references,
    ]),
  ];
}

function areSame(one: readonly unknown[] | undefined, other: readonly unknown[]): boolean {
  return one?.length === other.length && other.every((input, i) => one[i] === input);
}

function failureMessage(failure: string): Message {
  const place = { node: '', line: 0, column: 0 };
  return { severity: 'error', ...place, text: failure, hint: '', targets: [], check: '' };
}

export interface CompilerEvents {
  onAnswer(answer: Answer): void;
  /** The compiler was started again, and has all nodes. */
  onRestart(failure: string): void;
  /** What is wrong with a shader that is not chosen. */
  onOther(shader: string, messages: readonly Message[], project: Project): void;
}

/** So long nothing has to happen before the shaders that are not chosen are looked at, in milliseconds. */
const idle = 200;

/**
 * The compiler in its worker. Of the jobs that come while it is busy, only the last one is done; while there are none,
 * it looks at the shaders that are not chosen. A worker that fails is replaced, and gets all nodes again; a job that
 * makes it fail twice is given up.
 */
export class CompilerClient {
  private worker: Worker;
  private readonly sent = new Map<string, SourceNode>();
  private waiting: { project: Project; shader: string } | undefined;
  private isBusy = false;
  /** The last job; null: there was none. */
  private last: { project: Project; shader: string } | null = null;
  /** The shader that is looked at meanwhile; null: none, and the worker is busy with the last job. */
  private other: string | null = null;
  /** What was looked at last of each shader that is not chosen. */
  private readonly checked = new Map<string, readonly unknown[]>();
  private timer: ReturnType<typeof setTimeout> | undefined;
  /** Whether the last answer was a failure. */
  private hasFailed = false;
  private lastId = 0;

  constructor(private readonly events: CompilerEvents) {
    this.worker = this.start();
  }

  compile(project: Project, shader: string): void {
    clearTimeout(this.timer);
    if (this.isBusy) {
      this.waiting = { project, shader };
      return;
    }
    this.waiting = undefined;
    if (this.send(project, shader)) {
      this.last = { project, shader };
      this.other = null;
    }
  }

  private start(): Worker {
    const worker = startWorker();
    // What a worker says that has been given up does not count.
    const take = (answer: Answer): void => {
      if (worker === this.worker) {
        this.take(answer);
      }
    };
    worker.onmessage = (event: MessageEvent<Answer>) => {
      take(event.data);
    };
    worker.onerror = () => {
      take(failedAnswer(this.lastId, 'the compiler has stopped'));
    };
    return worker;
  }

  private take(answer: Answer): void {
    this.isBusy = false;
    if (answer.failure !== '') {
      this.worker.terminate();
      this.sent.clear();
      this.worker = this.start();
    }
    if (this.other !== null && this.last) {
      const { failure } = answer;
      this.events.onOther(
        this.other,
        failure === '' ? answer.messages : [failureMessage(failure)],
        this.last.project,
      );
      this.goOn(this.waiting, 0);
      if (failure !== '') {
        this.events.onRestart(failure);
      }
      return;
    }
    const failed = answer.failure === '' ? null : this.last;
    const isRetry = failed !== null && !this.hasFailed;
    this.hasFailed = answer.failure !== '';
    this.goOn(this.waiting ?? (isRetry ? failed : null), idle);
    if (isRetry) {
      this.events.onRestart(answer.failure);
    } else {
      this.events.onAnswer(answer);
    }
  }

  /** Does the next job, or otherwise looks at another shader after a while. */
  private goOn(next: { project: Project; shader: string } | null | undefined, delay: number): void {
    this.other = null;
    if (next) {
      this.compile(next.project, next.shader);
    } else {
      clearTimeout(this.timer);
      this.timer = setTimeout(() => {
        this.checkNext();
      }, delay);
    }
  }

  private checkNext(): void {
    if (this.isBusy || !this.last || this.hasFailed) {
      return;
    }
    const { project, shader: chosen } = this.last;
    for (const shader of project.shaders) {
      const inputs = inputsOf(project, shader);
      if (shader.name !== chosen && !areSame(this.checked.get(shader.name), inputs)) {
        this.checked.set(shader.name, inputs);
        this.other = shader.name;
        this.send(project, shader.name);
        return;
      }
    }
  }

  /** Sends a job to the worker. Returns whether there is such a shader. */
  private send(project: Project, shaderName: string): boolean {
    const shader = project.shaders.find((one) => one.name === shaderName);
    if (!shader) {
      return false;
    }
    const { changed, removed } = changesSince(this.sent, project);
    changed.forEach((node) => this.sent.set(node.name, node));
    removed.forEach((name) => this.sent.delete(name));
    this.lastId += 1;
    const { vertex, fragment, macros, targetMacros, samplers } = shader;
    const passes = { vertex, fragment, macros, targetMacros, samplers };
    const optionalMacros = project.shaders.flatMap((one) => Object.keys(one.macros));
    const job: Job = { id: this.lastId, changed, removed, ...passes, optionalMacros };
    this.isBusy = true;
    this.worker.postMessage(job);
    return true;
  }
}
