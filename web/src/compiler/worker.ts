// SPDX-License-Identifier: MIT
import { Compiler } from 'morl';
import { compileShader } from './compile_shader';
import { failedAnswer, type Job } from './protocol';

let compiler: Promise<Compiler> | undefined;

async function answer(job: Job): Promise<void> {
  try {
    compiler ??= Compiler.create();
    postMessage(compileShader(await compiler, job));
  } catch (error) {
    postMessage(failedAnswer(job.id, `the compiler has failed: ${String(error)}`));
  }
}

onmessage = (event: MessageEvent<Job>) => void answer(event.data);
