// SPDX-License-Identifier: MIT
import { compileShader } from "./shader";

function show(id: string, text: string): void {
  const element = document.getElementById(id);
  if (element) {
    element.textContent = text;
  }
}

const worker = new Worker(new URL("./worker.ts", import.meta.url), { type: "module" });
worker.onmessage = (event: MessageEvent<string>) => {
  show("worker", event.data);
};
void compileShader().then((text) => {
  show("page", text);
});
