// SPDX-License-Identifier: MIT
import { compileShader } from "./shader";

void compileShader().then((text) => {
  postMessage(text);
});
