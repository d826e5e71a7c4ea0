// SPDX-License-Identifier: MIT
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { test } from "node:test";
import { Compiler, MorlError } from "morl";

const root = new URL("../../../", import.meta.url);
const read = (path) => readFileSync(new URL(path, root), "utf8");
const nodeFiles = ["vertex_shader", "fragment_shader", "post_effect", "special_output"];
const targets = ["hlsl", "hlsl10", "glsl", "glsles"];

async function sampleCompiler() {
  const compiler = await Compiler.create();
  nodeFiles.forEach((file) => compiler.loadNodes(file, read(`examples/morl/${file}.morl`)));
  return compiler;
}

/** The texts of the variant of a shader with the largest macro values. */
function richest(compiler, shader, target) {
  const macros = {};
  for (const [name, values] of Object.entries({ ...shader.macros, ...shader.targetMacros?.[target] })) {
    macros[name] = Math.max(...[values].flat());
  }
  const samplers = shader.samplers ?? {};
  const shared = { target, macros, samplers };
  const vertex = compiler.compile({ ...shared, stage: "vertex", nodes: shader.vertex });
  const { semantics } = vertex;
  const fragment = compiler.compile({ ...shared, stage: "fragment", nodes: shader.fragment, semantics });
  return { vertex, fragment };
}

test("the texts of the samples are the golden files", async () => {
  const compiler = await sampleCompiler();
  const { shaders } = JSON.parse(read("examples/shaders.json"));
  assert.equal(shaders.length, 16);
  for (const shader of shaders) {
    for (const target of targets) {
      const { vertex, fragment } = richest(compiler, shader, target);
      const golden = (extension) => read(`tests/golden/${shader.name}/${target}.${extension}`);
      assert.equal(vertex.code, golden("vert"), `${shader.name} ${target}`);
      assert.equal(fragment.code, golden("frag"), `${shader.name} ${target}`);
      assert.equal(fragment.lines.length, fragment.code.split("\n").length - 1);
      assert.deepEqual(fragment.faults, []);
    }
  }
});

test("a result tells what the code was made from", async () => {
  const compiler = await Compiler.create();
  compiler.setNode({
    name: "base",
    content: "uniform sampler2D map : SAUTO;\n#for LIGHTS : 0\nuniform float4 light_LIGHTS[8];\n#endfor",
  });
  const content = "out float4 c : COLOR;\nvoid main() {\n#if FOG\nc = tex2D(map, coord);\n#endif\n}";
  compiler.setNode({ name: "n", content, references: ["base"], x: 1.5, y: -2 });
  assert.deepEqual(compiler.getNode("n"), { name: "n", content, references: ["base"], x: 1.5, y: -2 });
  assert.deepEqual(compiler.getNodeNames(), ["base", "n"]);
  const request = { target: "hlsl", stage: "fragment", nodes: ["base", "n"], samplers: { map: 3 } };
  const result = compiler.compile({ ...request, macros: { FOG: 1, LIGHTS: 1, NONE: 2 }, warnings: true });
  assert.deepEqual(result.nodes, ["base", "n"]);
  assert.deepEqual(result.unusedMacros, ["NONE"]);
  assert.deepEqual(result.macros.map((macro) => [macro.name, macro.value, macro.isSet]), [
    ["FOG", 1, true],
    ["LIGHTS", 1, true],
  ]);
  const [map] = result.uniforms.filter((uniform) => uniform.name === "map");
  assert.deepEqual([map.type, map.semantic, map.number, map.node, map.line], ["sampler2D", "SAUTO", 3, "base", 1]);
  assert.equal(result.uniforms.find((uniform) => uniform.elements === 8)?.arraySize, "8");
  const written = result.code.split("\n").findIndex((line) => line.includes("tex2D"));
  assert.deepEqual(result.lines[written], { node: "n", line: 4 });
  assert.ok(result.warnings.some((warning) => warning.check === "undeclared-name" && warning.node === "n" && warning.line === 4 && warning.isRefused));
  const unset = compiler.compile({ ...request, warnings: true }).warnings.find((warning) => warning.check === "unset-macro");
  assert.equal(unset?.isRefused, false);
  assert.equal(compiler.compile(request).code.includes("light_"), false);
  const tint = { vertex: "uniform float4 tint; out float2 uv : TEXAUTO; void main() { uv = tint.xy; }" };
  compiler.setNode({ name: "v", content: tint.vertex });
  compiler.setNode({ name: "f", content: "uniform float k;\nuniform float4 tint; in float2 lost : TEXAUTO;" });
  const program = compiler.compileProgram({ target: "hlsl10", vertex: ["v"], fragment: ["f"] });
  assert.deepEqual(program.uniforms, [
    { name: "tint", vertex: 0, fragment: 1 },
    { name: "k", vertex: -1, fragment: 0 },
  ]);
  assert.deepEqual(program.varyings.map(({ name, output, input }) => [name, output, input]), [
    ["uv", 0, -1],
    ["lost", -1, 0],
  ]);
  assert.deepEqual(program.warnings.map(({ check, node, line }) => [check, node, line]), [["unmatched-input", "f", 2]]);
  const { isUsed, offset, baseType, rows, semanticKind } = program.fragment.uniforms[1];
  assert.deepEqual([isUsed, offset, baseType, rows, semanticKind], [false, 16, "float", 4, "none"]);
  assert.equal(program.fragment.constantBytes, 32);
  assert.throws(() => compiler.compile({ ...request, mostTextBytes: 9 }), { kind: "limit-reached" });
  assert.equal(compiler.removeNode("base"), true);
  assert.equal(compiler.removeNode("base"), false);
  assert.equal(compiler.getNode("base"), undefined);
  assert.match(compiler.version, /^\d+\.\d+\.\d+$/);
});

test("faults have places as editors count, and refused calls change nothing", async () => {
  const compiler = await Compiler.create();
  compiler.setNode({ name: "ж", content: "void main() {\n/*💡ж*/ a = = 1;\n}" });
  const { faults, code } = compiler.compile({ target: "glsl", stage: "vertex", nodes: ["ж"] });
  assert.equal(faults[0].node, "ж");
  assert.equal(faults[0].line, 2);
  compiler.setNode({ name: "vec", content: "void main() {\nvec3 ж = 1.0;\n}" });
  const foreign = compiler.compile({ target: "glsl", stage: "vertex", nodes: ["vec"] }).faults[0];
  assert.match(foreign.hint, /there is no type 'vec3': did you mean 'float3'/);
  compiler.removeNode("vec");
  const bytes = Buffer.byteLength("/*💡ж*/") - "/*💡ж*/".length;
  compiler.setNode({ name: "a", content: "void main() {\n/*abcж*/ a = = 1;\n}".replace("ж", "d") });
  const plain = compiler.compile({ target: "glsl", stage: "vertex", nodes: ["a"] }).faults[0].column;
  assert.equal(faults[0].column, plain - "abcd".length + "💡ж".length, `${bytes} bytes more`);
  assert.ok(code.includes("main"));

  const isError = (kind, check = () => true) => (error) =>
    error instanceof MorlError && error.kind === kind && error.message !== "" && check(error);
  const malformed = '[{"name": "b", "content": "é", "x": }]';
  assert.throws(
    () => compiler.loadNodes("f.json", malformed),
    isError("nodes-refused", ({ faults: [fault] }) => {
      assert.equal(fault.file, "f.json");
      assert.equal(fault.line, 1);
      assert.equal(malformed[fault.column - 1], "}");
      return true;
    }),
  );
  assert.deepEqual(compiler.getNodeNames(), ["a", "ж"]);
  const source = "//! ref: a\n//! at: 0.5 2\nvoid main() {}\n";
  assert.equal(compiler.loadSource("b.morlsource", "b", source), "b");
  assert.deepEqual(compiler.getNode("b").references, ["a"]);
  assert.equal(compiler.getSource("b"), source);
  assert.equal(compiler.getSource("b", true), `//! name: b\n${source}`);
  assert.equal(compiler.getSource("c"), undefined);
  assert.throws(
    () => compiler.loadSource("b.morlsource", "b", '//! name: é, "'),
    isError("nodes-refused", ({ faults: [fault] }) => fault.node === "b" && fault.column === 11),
  );
  const kept = '//! ref: a\n//! "tint": [1,2.5]\nvoid main() {}\n';
  const nodes = compiler.sourceToNodes("b.morlsource", "b", kept);
  assert.deepEqual(JSON.parse(nodes)[0].tint, [1, 2.5]);
  assert.equal(compiler.nodesToSource("b", nodes), kept);
  assert.equal(compiler.nodesToSource("b", nodes, true), `//! name: b\n${kept}`);
  assert.throws(
    () => compiler.sourceToNodes("b.morlsource", "b", "//! at: 1"),
    isError("nodes-refused", ({ faults: [fault] }) => fault.file === "b.morlsource"),
  );
  assert.throws(() => compiler.nodesToSource("b", "[]"), isError("nodes-refused"));
  compiler.removeNode("b");
  const request = { target: "glsl", stage: "vertex", nodes: ["nope"] };
  assert.throws(() => compiler.compile(request), isError("request-refused"));
  assert.throws(() => compiler.compile({ ...request, target: "spirv" }), isError("request-refused"));
  assert.throws(() => compiler.compile({ ...request, stage: "pixel" }), isError("invalid-argument"));
  assert.throws(() => compiler.compile({ target: "glsl", stage: "vertex" }), isError("invalid-argument"));
  assert.throws(() => compiler.setNode(undefined), isError("invalid-argument"));
  compiler.setNode({ name: "\ufeffa", content: "" });
  assert.equal(compiler.getNode("\ufeffa").name, "\ufeffa");
  compiler.removeNode("\ufeffa");
  const macros = { A: 1.5 };
  assert.throws(() => compiler.compile({ ...request, macros }), isError("invalid-argument"));
  const { faults: none } = compiler.compile({ target: "glsl", stage: "vertex", nodes: ["a"] });
  assert.equal(none.length, 1);
  compiler.dispose();
  compiler.dispose();
  assert.throws(() => compiler.getNodeNames(), isError("disposed"));
});

test("malformed and deeply nested sources end in faults", async () => {
  const compiler = await Compiler.create();
  const compile = (content) => {
    compiler.setNode({ name: "n", content });
    const { faults } = compiler.compile({ target: "glsles", stage: "fragment", nodes: ["n"] });
    return faults;
  };
  const million = 1_000_000;
  const nests = [
    "void main() { x = " + "(".repeat(million),
    "void main() { x = " + "(".repeat(million / 2) + "1" + ")".repeat(million / 2) + "; }",
    "void main() { x = " + "max(1,a+-b*".repeat(million / 10),
    "void main() { x = a" + "[1".repeat(million / 2),
    "void main() { " + "if(a){".repeat(million / 6),
    "void main() { " + "if(a){}else ".repeat(million / 12),
    "void main() { " + "#if A ".repeat(million / 6),
    "#for N : 0 ".repeat(million / 11),
    "void main() " + "{".repeat(million),
  ];
  for (const nest of nests) {
    const [fault] = compile(nest);
    assert.notEqual(fault?.text, undefined, nest.slice(0, 40));
  }
  const sample = read("examples/morl/fragment_shader.morl");
  for (let end = 0; end < sample.length; end += 4999) {
    compile(sample.slice(0, end));
    assert.throws(() => compiler.loadNodes("cut", sample.slice(0, end)), MorlError);
  }
  compile("\u0000\ud800\uffff");
  assert.deepEqual(compile("void main() { }"), []);
});

test("memory stays as it is over 100,000 edits and requests", async () => {
  const compiler = await sampleCompiler();
  const { content, references } = compiler.getNode("lighting");
  const edit = (i) => {
    compiler.setNode({ name: "lighting", content: `${content}\n//${i}`, references });
    compiler.compile({
      target: targets[i % 4],
      stage: "fragment",
      nodes: ["surface_texture", "normal_vertex", "view_vector", "lighting", "fog", "surface_out"],
      macros: { LIGHTS: i % 3, SUNS: 1, FOG: i % 2 },
      warnings: i % 5 === 0,
    });
  };
  for (let i = 0; i < 1000; ++i) {
    edit(i);
  }
  const size = compiler.memorySize;
  for (let i = 0; i < 100_000; ++i) {
    edit(i);
  }
  assert.equal(compiler.memorySize, size);
});
