// SPDX-License-Identifier: MIT
// The C interface of the module, and its memory.

/** An address or a size in the module's memory, in bytes. */
type Address = number;

/** The functions of morl/c/morl.h that the module exports. */
interface Exports {
  memory: WebAssembly.Memory;
  malloc(size: number): Address;
  free(address: Address): void;
  _initialize(): void;
  morl_js_start(): void;
  morl_version(): Address;
  morl_status_text(status: number): Address;
  morl_compiler_create(): Address;
  morl_message(result: Address, compiler: Address): void;
  morl_get_call_fault(compiler: Address, index: number, fault: Address): number;
  morl_load_nodes(compiler: Address, name: Address, text: Address): number;
  morl_get_loaded_nodes(compiler: Address, names: Address, count: Address): number;
  morl_load_source(compiler: Address, file: Address, name: Address, source: Address): number;
  morl_source_to_nodes(
    compiler: Address,
    file: Address,
    name: Address,
    source: Address,
    nodes: Address,
  ): number;
  morl_nodes_to_source(
    compiler: Address,
    file: Address,
    nodes: Address,
    withName: number,
    source: Address,
  ): number;
  morl_set_node(compiler: Address, node: Address): number;
  morl_remove_node(compiler: Address, name: Address): number;
  morl_get_node(compiler: Address, name: Address, node: Address): number;
  morl_get_source(compiler: Address, name: Address, withName: number, source: Address): number;
  morl_get_node_names(compiler: Address, names: Address, count: Address): number;
  morl_compile(compiler: Address, request: Address, result: Address): number;
  morl_get_output(result: Address, output: Address): number;
  morl_get_fault(result: Address, index: number, fault: Address): number;
  morl_get_declare(result: Address, list: number, index: number, declare: Address): number;
  morl_get_macro(result: Address, index: number, macro: Address): number;
  morl_get_warning(result: Address, index: number, warning: Address): number;
  morl_result_destroy(result: Address): void;
  morl_link(vertex: Address, fragment: Address, program: Address): number;
  morl_get_program_uniform(program: Address, index: number, uniform: Address): number;
  morl_get_varying(program: Address, index: number, varying: Address): number;
  morl_get_program_warning(program: Address, index: number, warning: Address): number;
  morl_program_destroy(program: Address): void;
}

const decoder = new TextDecoder("utf-8", { ignoreBOM: true });
const encoder = new TextEncoder();

/** Words of four bytes: what all structures of the C interface consist of here. */
const wordSize = 4;

/** The words of the structures that begin with their size; native.c compares them. */
export const sizes = {
  fault: 13,
  node: 9,
  request: 18,
  declare: 27,
  macro: 5,
  warning: 10,
  output: 20,
  uniform: 5,
  varying: 5,
} as const;

/** One instance of the module. */
export class Native {
  readonly calls: Exports;
  private view: DataView;

  constructor(module: WebAssembly.Module) {
    const refuse = (): number => 8; // "bad file number": there are no files
    const instance = new WebAssembly.Instance(module, {
      env: { emscripten_notify_memory_growth: () => undefined },
      wasi_snapshot_preview1: {
        proc_exit: (status: number) => {
          throw new Trap(`the compiler has ended with status ${status}`);
        },
        fd_write: refuse,
        fd_close: refuse,
        fd_seek: refuse,
        environ_sizes_get: (count: Address, size: Address) => {
          const view = new DataView(this.calls.memory.buffer);
          view.setUint32(count, 0, true);
          view.setUint32(size, 0, true);
          return 0;
        },
        environ_get: () => 0,
      },
    });
    this.calls = instance.exports as unknown as Exports;
    this.view = new DataView(this.calls.memory.buffer);
    this.calls._initialize();
    this.calls.morl_js_start();
  }

  /** The size of the memory, in bytes. */
  get memorySize(): number {
    return this.calls.memory.buffer.byteLength;
  }

  word(address: Address): number {
    return this.data().getInt32(address, true);
  }

  float(address: Address): number {
    return this.data().getFloat32(address, true);
  }

  /** A text that ends with a NUL. */
  terminatedText(address: Address): string {
    const bytes = new Uint8Array(this.calls.memory.buffer);
    return decoder.decode(bytes.subarray(address, bytes.indexOf(0, address)));
  }

  /** The text of `size` bytes at an address. */
  text(address: Address, size: number): string {
    return decoder.decode(new Uint8Array(this.calls.memory.buffer, address >>> 0, size));
  }

  /** Runs a function with memory that is freed when it returns. */
  with<Value>(run: (memory: Arena) => Value): Value {
    const arena = new Arena(this);
    try {
      return run(arena);
    } finally {
      arena.free();
    }
  }

  /** A view of the memory, which is another one after it has grown. */
  data(): DataView {
    if (this.view.buffer !== this.calls.memory.buffer) {
      this.view = new DataView(this.calls.memory.buffer);
    }
    return this.view;
  }
}

/** Thrown when the module has ended itself. */
export class Trap extends Error {}

/** Thrown when the module has no memory for what a host passes. */
export class NoMemory extends Error {}

/** What one call passes: words, texts, and lists of them. */
export class Arena {
  private readonly blocks: Address[] = [];

  constructor(private readonly native: Native) {}

  /** Room for this many words, all 0. */
  words(count: number): Address {
    const address = this.allocate(count * wordSize);
    new Uint8Array(this.native.calls.memory.buffer, address, count * wordSize).fill(0);
    return address;
  }

  /** Words with these values. */
  put(values: readonly number[]): Address {
    const address = this.allocate(values.length * wordSize);
    const view = this.native.data();
    values.forEach((value, i) => view.setInt32(address + i * wordSize, value, true));
    return address;
  }

  /** The two words of a `morl_text`. */
  text(text: string): [Address, number] {
    const bytes = encoder.encode(text);
    const address = this.allocate(bytes.length);
    new Uint8Array(this.native.calls.memory.buffer, address, bytes.length).set(bytes);
    return [address, bytes.length];
  }

  /** Room for a structure of this many words, which begins with its size in bytes. */
  structure(count: number): Address {
    const address = this.words(count);
    this.native.data().setInt32(address, count * wordSize, true);
    return address;
  }

  free(): void {
    this.blocks.forEach((block) => this.native.calls.free(block));
    this.blocks.length = 0;
  }

  private allocate(size: number): Address {
    const address = this.native.calls.malloc(Math.max(size, 1)) >>> 0;
    if (address === 0) {
      throw new NoMemory();
    }
    this.blocks.push(address);
    return address;
  }
}

/** Reads the members of a structure in their order. */
export class Reader {
  constructor(
    private readonly native: Native,
    private position: Address,
  ) {}

  word(): number {
    const value = this.native.word(this.position);
    this.position += wordSize;
    return value;
  }

  float(): number {
    const value = this.native.float(this.position);
    this.position += wordSize;
    return value;
  }

  text(): string {
    const address = this.word();
    return this.native.text(address, this.word());
  }

  /** A list: its address and the number of its elements, which `read` reads one by one. */
  list<Value>(read: (element: Reader) => Value): Value[] {
    const elements = new Reader(this.native, this.word() >>> 0);
    const count = this.word();
    return Array.from({ length: count }, () => read(elements));
  }
}

/**
 * Reads the elements of a list, which the C interface gives one by one.
 * @param size the words of an element
 * @param get gives the element of an index, or another status than 0 after the last one
 */
export function readElements<Value>(
  native: Native,
  arena: Arena,
  size: number,
  get: (index: number, element: Address) => number,
  read: (element: Reader) => Value,
): Value[] {
  const element = arena.structure(size);
  const values: Value[] = [];
  while (get(values.length, element) === 0) {
    values.push(read(new Reader(native, element + wordSize)));
  }
  return values;
}
