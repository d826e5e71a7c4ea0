// SPDX-License-Identifier: MIT

/** Compiles the module that lies beside this file. */
export async function loadModule(): Promise<WebAssembly.Module> {
  const url = new URL("./morl.wasm", import.meta.url);
  const response = await fetch(url);
  if (!response.ok) {
    throw new Error(`cannot load ${url.href}: ${response.status} ${response.statusText}`);
  }
  return WebAssembly.compile(await response.arrayBuffer());
}
