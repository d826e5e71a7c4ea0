// SPDX-License-Identifier: MIT
import InlineWorker from './worker?worker&inline';

/** Starts the worker from a text within the page, which has no other file. */
export function startWorker(): Worker {
  return new InlineWorker();
}
