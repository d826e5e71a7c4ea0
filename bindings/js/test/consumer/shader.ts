// SPDX-License-Identifier: MIT
import { Compiler, MorlError, type Fault, type Result } from "morl";

/** Compiles a shader, and one with a fault. */
export async function compileShader(): Promise<string> {
  const compiler = await Compiler.create();
  compiler.setNode({ name: "n", content: "out float4 c : COLOR;\nvoid main() {\nc = 1.0;\n}" });
  const result: Result = compiler.compile({ target: "glsles", stage: "fragment", nodes: ["n"] });
  let faults: readonly Fault[] = [];
  try {
    compiler.loadNodes("broken.json", "[{]");
  } catch (error) {
    faults = error instanceof MorlError ? error.faults : [];
  }
  compiler.dispose();
  return `${result.code}${faults.map((fault) => `${fault.file}:${fault.line}`).join()}`;
}
