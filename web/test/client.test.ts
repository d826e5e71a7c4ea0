// SPDX-License-Identifier: MIT
import { expect, test } from 'vitest';
import { CompilerClient } from '../src/compiler/client';
import { type Answer, failedAnswer, type Job } from '../src/compiler/protocol';
import { sampleProject } from '../src/files/samples';

/** Stands in for the browser's workers. */
class FakeWorker {
  static readonly all: FakeWorker[] = [];
  readonly jobs: Job[] = [];
  isRunning = true;
  onmessage: (event: { data: Answer }) => void = () => undefined;
  onerror: () => void = () => undefined;

  constructor() {
    FakeWorker.all.push(this);
  }
  postMessage(job: Job): void {
    this.jobs.push(job);
  }
  terminate(): void {
    this.isRunning = false;
  }
}

test('a compiler that fails is replaced, and gets all nodes again', () => {
  Object.assign(globalThis, { Worker: FakeWorker });
  const answers: Answer[] = [];
  const restarts: string[] = [];
  const client = new CompilerClient({
    onAnswer: (answer) => answers.push(answer),
    onRestart: (failure) => restarts.push(failure),
    onOther: () => undefined,
  });
  const project = sampleProject();
  const shader = project.shaders[0]?.name ?? '';
  client.compile(project, shader);
  const [first] = FakeWorker.all;
  const all = first?.jobs[0]?.changed.length ?? 0;
  expect(all).toBeGreaterThan(10);
  first?.onmessage({ data: { ...failedAnswer(1, ''), failure: '' } });
  client.compile(project, shader);
  expect(first?.jobs[1]?.changed).toEqual([]);
  client.compile(project, shader);
  first?.onerror();
  expect(first?.isRunning).toBe(false);
  // It may say so several times.
  first?.onerror();
  expect(FakeWorker.all).toHaveLength(2);
  expect(restarts).toEqual(['the compiler has stopped']);
  const second = FakeWorker.all[1];
  expect(second?.jobs[0]?.changed.length).toBe(all);
  // What makes it fail again is given up, and said; the next job gets a new one.
  second?.onmessage({ data: failedAnswer(3, 'trap') });
  expect(answers.at(-1)?.failure).toBe('trap');
  expect(FakeWorker.all[2]?.jobs).toEqual([]);
  client.compile(project, shader);
  expect(FakeWorker.all[2]?.jobs[0]?.changed.length).toBe(all);
});
