// SPDX-License-Identifier: MIT

/** Starts the worker with the compiler. The page in one file has its own way, start_worker_inline.ts. */
export function startWorker(): Worker {
  return new Worker(new URL('./worker.ts', import.meta.url), { type: 'module' });
}
