// SPDX-License-Identifier: MIT
import { readFile } from "node:fs/promises";

/** Compiles the module that lies beside this file. */
export async function loadModule(): Promise<WebAssembly.Module> {
  return WebAssembly.compile(await readFile(new URL("./morl.wasm", import.meta.url)));
}
