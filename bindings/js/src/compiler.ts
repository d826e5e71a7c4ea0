// SPDX-License-Identifier: MIT
import { loadModule } from "#load_module";
import { kindOfStatus, MorlError } from "./error.js";
import { type Arena, Native, NoMemory, Reader, readElements, sizes, Trap } from "./native.js";
import { type ColumnReader, columnReader } from "./places.js";
import type {
  BaseType,
  Declare,
  Fault,
  MorlNode,
  Program,
  ProgramRequest,
  Request,
  Result,
  SemanticKind,
  Warning,
} from "./types.js";

/** The module, compiled once for all compilers. */
let sharedModule: Promise<WebAssembly.Module> | undefined;

/** How to make a compiler. */
export interface CreateOptions {
  /**
   * The module `morl.wasm`, if the host has loaded it in its own way. By default it is taken from
   * beside the package's files, once for all compilers.
   */
  module?: WebAssembly.Module;
}

/**
 * A compiler with its nodes. Each has its own memory, which {@link dispose} gives back. Methods
 * are synchronous; use a worker to keep a page free of them.
 *
 * ```ts
 * const compiler = await Compiler.create();
 * compiler.loadNodes("nodes.json", text);
 * const { code, faults } = compiler.compile({ target: "glsles", stage: "vertex", nodes: ["surface"] });
 * ```
 */
export class Compiler {
  private native: Native | undefined;
  private readonly handle: number;

  private constructor(module: WebAssembly.Module) {
    this.native = new Native(module);
    this.handle = this.native.calls.morl_compiler_create();
    if (this.handle === 0) {
      throw new MorlError("out-of-memory", "there is no memory for a compiler");
    }
  }

  /** Makes a compiler without nodes. Rejects if the module cannot be loaded. */
  static async create(options: CreateOptions = {}): Promise<Compiler> {
    if (options.module) {
      return new Compiler(options.module);
    }
    sharedModule ??= loadModule();
    try {
      return new Compiler(await sharedModule);
    } catch (error) {
      sharedModule = undefined;
      throw error;
    }
  }

  /** The version of the compiler, such as "2.0.0". */
  get version(): string {
    return this.call((native) => native.terminatedText(native.calls.morl_version()));
  }

  /** The size of this compiler's memory, in bytes. It never shrinks. */
  get memorySize(): number {
    return this.call((native) => native.memorySize);
  }

  /**
   * Loads all nodes of a text in the format of the node files, or none if it has faults. Nodes of
   * the same names are replaced.
   * @param name what faults call the text, such as a path
   * @returns the names of the nodes, in their order
   * @throws {@link MorlError} `nodes-refused`
   */
  loadNodes(name: string, text: string): string[] {
    return this.call((native) =>
      native.with((arena) => {
        const status = native.calls.morl_load_nodes(
          this.handle,
          arena.put(arena.text(name)),
          arena.put(arena.text(text)),
        );
        this.check(native, arena, status, () => text);
        return this.loadedNodes(native, arena);
      }),
    );
  }

  /**
   * Loads a node from its source, a text file of its own. A node of the same name is replaced. Words
   * of the header that it does not know, and further members, have no effect.
   * @param file what faults call the text, such as a path
   * @param name the name of the node, unless the header says one
   * @returns the name of the node
   * @throws {@link MorlError} `nodes-refused`
   */
  loadSource(file: string, name: string, source: string): string {
    return this.call((native) =>
      native.with((arena) => {
        const [fileText, nameText, text] = [file, name, source].map((each) =>
          arena.put(arena.text(each)),
        ) as [number, number, number];
        const status = native.calls.morl_load_source(this.handle, fileText, nameText, text);
        this.check(native, arena, status, () => source);
        return this.loadedNodes(native, arena)[0] ?? "";
      }),
    );
  }

  /**
   * The node of a source as a text in the format of the node files, with the further members of its
   * header. The compiler's nodes stay as they are.
   * @param file what faults call the text, such as a path
   * @param name the name of the node, unless the header says one
   * @throws {@link MorlError} `nodes-refused`
   */
  sourceToNodes(file: string, name: string, source: string): string {
    return this.call((native) =>
      native.with((arena) => {
        const [fileText, nameText, text] = [file, name, source].map((each) =>
          arena.put(arena.text(each)),
        ) as [number, number, number];
        const nodes = arena.words(2);
        const { handle } = this;
        const status = native.calls.morl_source_to_nodes(handle, fileText, nameText, text, nodes);
        this.check(native, arena, status, () => source);
        return new Reader(native, nodes).text();
      }),
    );
  }

  /**
   * The way back: the only node of a text in the format of the node files as a source.
   * @param file what faults call the text, such as a path
   * @param withName whether the header says the name; otherwise the name of the file has to
   * @throws {@link MorlError} `nodes-refused`: the text has faults, or not one node
   */
  nodesToSource(file: string, nodes: string, withName = false): string {
    return this.call((native) =>
      native.with((arena) => {
        const [fileText, text] = [file, nodes].map((each) => arena.put(arena.text(each))) as [
          number,
          number,
        ];
        const source = arena.words(2);
        const name = withName ? 1 : 0;
        const status = native.calls.morl_nodes_to_source(this.handle, fileText, text, name, source);
        this.check(native, arena, status, () => nodes);
        return new Reader(native, source).text();
      }),
    );
  }

  /**
   * A node as a source, if there is such a node.
   * @param withName whether the header says the name; otherwise the name of the file has to
   */
  getSource(name: string, withName = false): string | undefined {
    return this.call((native) =>
      native.with((arena) => {
        const text = arena.words(2);
        const status = native.calls.morl_get_source(
          this.handle,
          arena.put(arena.text(name)),
          withName ? 1 : 0,
          text,
        );
        if (kindOfStatus(status) === "not-found") {
          return undefined;
        }
        this.check(native, arena, status);
        return new Reader(native, text).text();
      }),
    );
  }

  /** Adds a node, or replaces the one of the same name. The next request parses it if it changed. */
  setNode(node: Pick<MorlNode, "name" | "content"> & Partial<MorlNode>): void {
    this.call((native) =>
      native.with((arena) => {
        const references = node.references ?? [];
        const address = arena.put([
          sizes.node * 4,
          ...arena.text(node.name),
          ...arena.text(node.content),
          arena.put(references.flatMap((name) => arena.text(name))),
          references.length,
          0,
          0,
        ]);
        native.data().setFloat32(address + 28, node.x ?? 0, true);
        native.data().setFloat32(address + 32, node.y ?? 0, true);
        this.check(native, arena, native.calls.morl_set_node(this.handle, address));
      }),
    );
  }

  /** Removes a node. Returns whether there was one of this name. */
  removeNode(name: string): boolean {
    return this.call((native) =>
      native.with((arena) => {
        const status = native.calls.morl_remove_node(this.handle, arena.put(arena.text(name)));
        if (kindOfStatus(status) === "not-found") {
          return false;
        }
        this.check(native, arena, status);
        return true;
      }),
    );
  }

  /** The node of a name, if there is one. */
  getNode(name: string): MorlNode | undefined {
    return this.call((native) =>
      native.with((arena) => {
        const address = arena.structure(sizes.node);
        const status = native.calls.morl_get_node(this.handle, arena.put(arena.text(name)), address);
        if (kindOfStatus(status) === "not-found") {
          return undefined;
        }
        this.check(native, arena, status);
        const reader = new Reader(native, address + 4);
        return {
          name: reader.text(),
          content: reader.text(),
          references: reader.list((element) => element.text()),
          x: reader.float(),
          y: reader.float(),
        };
      }),
    );
  }

  /** The names of all nodes, in ascending order of their bytes. */
  getNodeNames(): string[] {
    return this.call((native) =>
      native.with((arena) => {
        const list = arena.words(2);
        this.check(native, arena, native.calls.morl_get_node_names(this.handle, list, list + 4));
        return new Reader(native, list).list((element) => element.text());
      }),
    );
  }

  /**
   * Runs a request. Faults in the nodes do not stop it: the result lists them, and the code is
   * written from what remains.
   * @throws {@link MorlError} `request-refused` for an unknown node or target, `limit-reached`
   */
  compile(request: Request): Result {
    return this.call((native) =>
      native.with((arena) => {
        const handle = this.run(native, arena, request);
        try {
          return this.read(native, arena, handle);
        } finally {
          native.calls.morl_result_destroy(handle);
        }
      }),
    );
  }

  /**
   * Runs the requests of both passes of a shader, and puts them together.
   * @throws {@link MorlError} as {@link compile}
   */
  compileProgram(request: ProgramRequest): Program {
    return this.call((native) =>
      native.with((arena) => {
        const handles: number[] = [];
        const pass = (stage: "vertex" | "fragment", semantics: Record<string, string>): Result => {
          handles.push(this.run(native, arena, { ...request, stage, nodes: request[stage], semantics }));
          return this.read(native, arena, handles[handles.length - 1] as number);
        };
        try {
          const vertex = pass("vertex", {});
          const fragment = pass("fragment", vertex.semantics);
          return { vertex, fragment, ...this.link(native, arena, handles) };
        } finally {
          handles.forEach((handle) => native.calls.morl_result_destroy(handle));
        }
      }),
    );
  }

  /** Gives the memory back. Every other method throws `disposed` from here on. */
  dispose(): void {
    // The instance and its memory go with the last reference.
    this.native = undefined;
  }

  /** Runs a request. Returns its result, which the caller destroys. */
  private run(native: Native, arena: Arena, request: Request): number {
    const result = arena.words(1);
    const address = putRequest(arena, request);
    this.check(native, arena, native.calls.morl_compile(this.handle, address, result));
    return native.word(result);
  }

  private read(native: Native, arena: Arena, handle: number): Result {
    const output = arena.structure(sizes.output);
    this.check(native, arena, native.calls.morl_get_output(handle, output));
    return readResult(native, arena, handle, new Reader(native, output + 4), this.columns(native));
  }

  private link(native: Native, arena: Arena, handles: number[]): Omit<Program, "vertex" | "fragment"> {
    const { calls } = native;
    const [vertex, fragment] = handles as [number, number];
    const address = arena.words(1);
    this.check(native, arena, calls.morl_link(vertex, fragment, address));
    const program = native.word(address);
    const columns = this.columns(native);
    try {
      return {
        uniforms: readElements(
          native,
          arena,
          sizes.uniform,
          (index, element) => calls.morl_get_program_uniform(program, index, element),
          (element) => ({ name: element.text(), vertex: element.word(), fragment: element.word() }),
        ),
        varyings: readElements(
          native,
          arena,
          sizes.varying,
          (index, element) => calls.morl_get_varying(program, index, element),
          (element) => ({ name: element.text(), output: element.word(), input: element.word() }),
        ),
        warnings: readElements(
          native,
          arena,
          sizes.warning,
          (index, element) => calls.morl_get_program_warning(program, index, element),
          (element) => readWarning(element, columns),
        ),
      };
    } finally {
      calls.morl_program_destroy(program);
    }
  }

  private columns(native: Native): ColumnReader {
    return columnReader((node) => this.content(native, node));
  }

  private content(native: Native, node: string): string {
    return native.with((arena) => {
      const address = arena.structure(sizes.node);
      const status = native.calls.morl_get_node(this.handle, arena.put(arena.text(node)), address);
      return status === 0 ? new Reader(native, address + 12).text() : "";
    });
  }

  /** Runs a call. What ends the module (a trap) also ends this compiler. */
  private call<Value>(run: (native: Native) => Value): Value {
    if (!this.native) {
      throw new MorlError("disposed", "this compiler was disposed of");
    }
    try {
      return run(this.native);
    } catch (error) {
      if (error instanceof MorlError) {
        throw error;
      }
      if (error instanceof NoMemory) {
        throw new MorlError("out-of-memory", "there is no memory for this text");
      }
      const isTrap = error instanceof WebAssembly.RuntimeError || error instanceof RangeError;
      if (isTrap || error instanceof Trap) {
        this.dispose();
        throw new MorlError("failed", `the compiler has failed and was disposed of: ${String(error)}`);
      }
      throw new MorlError("invalid-argument", `not a valid argument: ${String(error)}`);
    }
  }

  private loadedNodes(native: Native, arena: Arena): string[] {
    const list = arena.words(2);
    this.check(native, arena, native.calls.morl_get_loaded_nodes(this.handle, list, list + 4));
    return new Reader(native, list).list((element) => element.text());
  }

  /** @param text the text that faults without a node have their places in */
  private check(native: Native, arena: Arena, status: number, text = (): string => ""): void {
    if (status === 0) {
      return;
    }
    const kind = kindOfStatus(status);
    const message = arena.words(2);
    native.calls.morl_message(message, this.handle);
    const words = new Reader(native, message).text();
    const columns = columnReader(text);
    const faults = readElements(
      native,
      arena,
      sizes.fault,
      (index, element) => native.calls.morl_get_call_fault(this.handle, index, element),
      (element) => readFault(element, columns),
    );
    throw new MorlError(
      kind,
      words || native.terminatedText(native.calls.morl_status_text(status)),
      faults,
    );
  }
}

function putValues(arena: Arena, values: Readonly<Record<string, number>> = {}): [number, number] {
  const entries = Object.entries(values);
  for (const [name, value] of entries) {
    if (!Number.isInteger(value) || value !== (value | 0)) {
      throw new MorlError("invalid-argument", `'${name}' is not a 32-bit integer: ${value}`);
    }
  }
  const words = entries.flatMap(([name, value]) => [...arena.text(name), value, 0]);
  return [arena.put(words), entries.length];
}

function putLimit(value = 0): number {
  if (!Number.isInteger(value) || value < 0 || value > 0xffffffff) {
    throw new MorlError("invalid-argument", `not a limit: ${value}`);
  }
  return value;
}

function putRequest(arena: Arena, request: Request): number {
  if (request.stage !== "vertex" && request.stage !== "fragment") {
    throw new MorlError("invalid-argument", `there is no stage '${String(request.stage)}'`);
  }
  const semantics = Object.entries(request.semantics ?? {});
  return arena.put([
    sizes.request * 4,
    arena.put(request.nodes.flatMap((name) => arena.text(name))),
    request.nodes.length,
    ...putValues(arena, request.macros),
    arena.put(semantics.flatMap(([name, semantic]) => [...arena.text(name), ...arena.text(semantic)])),
    semantics.length,
    ...putValues(arena, request.samplers),
    ...arena.text(request.target),
    request.stage === "vertex" ? 0 : 1,
    1,
    request.warnings ? 1 : 0,
    0,
    putLimit(request.mostLoopWork),
    putLimit(request.mostTextBytes),
    0,
  ]);
}

function readFault(reader: Reader, columns: ColumnReader): Fault {
  const level = reader.word() === 1 ? "error" : "info";
  const line = reader.word();
  const column = reader.word();
  reader.word();
  const file = reader.text();
  const node = reader.text();
  const text = reader.text();
  const hint = reader.text();
  return { level, file, node, text, hint, line, column: columns(node, line, column) };
}

function readWarning(reader: Reader, columns: ColumnReader): Warning {
  const check = reader.text();
  const node = reader.text();
  const text = reader.text();
  const line = reader.word();
  const column = reader.word();
  const isRefused = reader.word() !== 0;
  return { check, node, text, line, column: columns(node, line, column), isRefused };
}

/** In the order of the C interface's numbers. */
const baseTypes: readonly BaseType[] = [
  "unknown",
  "float",
  "int",
  "boneIndex",
  "sampler1D",
  "sampler1DArray",
  "sampler2D",
  "sampler2DArray",
  "sampler3D",
  "sampler3DArray",
  "samplerCUBE",
];

/** Likewise. */
const semanticKinds: readonly SemanticKind[] = [
  "none",
  "position",
  "normal",
  "tangent",
  "binormal",
  "blendIndices",
  "blendWeight",
  "texcoord",
  "screenPosition",
  "color",
  "sampler",
  "other",
];

function readDeclare(reader: Reader, nodeAt: (index: number) => string, columns: ColumnReader): Declare {
  const texts = {
    name: reader.text(),
    type: reader.text(),
    writtenType: reader.text(),
    arraySize: reader.text(),
    semantic: reader.text(),
  };
  const numbers = {
    baseType: baseTypes[reader.word()] ?? "unknown",
    rows: reader.word(),
    columns: reader.word(),
    elements: reader.word(),
    bytes: reader.word(),
    offset: reader.word(),
    semanticKind: semanticKinds[reader.word()] ?? "other",
    semanticIndex: reader.word(),
    number: reader.word(),
    isUsed: reader.word() !== 0,
  };
  const node = nodeAt(reader.word());
  const line = reader.word();
  const column = columns(node, line, reader.word());
  reader.word();
  const repeatedBy = reader.list((element) => nodeAt(element.word()));
  return { ...texts, ...numbers, node, line, column, repeatedBy };
}

function readResult(
  native: Native,
  arena: Arena,
  handle: number,
  output: Reader,
  columns: ColumnReader,
): Result {
  const { calls } = native;
  const code = output.text();
  const semantics = output.list((element): [string, string] => [element.text(), element.text()]);
  output.list((element) => element.text()); // the names of the uniforms, which come below
  const nodes = output.list((element) => element.text());
  const nodeAt = (index: number): string => nodes[index] ?? "";
  const lines = output.list((element) => ({ node: nodeAt(element.word()), line: element.word() }));
  const unusedMacros = output.list((element) => element.text());
  for (let counts = 0; counts < 6; ++counts) {
    output.word(); // the lists below end by themselves
  }
  const declares = (list: number): Declare[] =>
    readElements(
      native,
      arena,
      sizes.declare,
      (index, element) => calls.morl_get_declare(handle, list, index, element),
      (element) => readDeclare(element, nodeAt, columns),
    );
  return {
    code,
    semantics: Object.fromEntries(semantics),
    faults: readElements(
      native,
      arena,
      sizes.fault,
      (index, element) => calls.morl_get_fault(handle, index, element),
      (element) => readFault(element, columns),
    ),
    nodes,
    lines,
    uniforms: declares(0),
    inputs: declares(1),
    outputs: declares(2),
    macros: readElements(
      native,
      arena,
      sizes.macro,
      (index, element) => calls.morl_get_macro(handle, index, element),
      (element) => ({ name: element.text(), value: element.word(), isSet: element.word() !== 0 }),
    ),
    unusedMacros,
    warnings: readElements(
      native,
      arena,
      sizes.warning,
      (index, element) => calls.morl_get_warning(handle, index, element),
      (element) => readWarning(element, columns),
    ),
    constantBytes: output.word(),
  };
}
