// SPDX-License-Identifier: MIT
//! An editor's loop in Rust: a node is changed, a pass that uses it is compiled in all targets, and
//! the faults are shown, or the texts with the place that each line is from, and what is to be bound.
//!
//!     rustc --edition 2021 edit_loop.rs -L /where/morl/is/installed/lib
//!     edit_loop DIRECTORY (the one with the folder morl/)
//!
//! The structures are those of morl/c/morl.h.

use std::ffi::c_void;
use std::mem::{size_of, zeroed};
use std::ptr::{null, null_mut};
use std::{env, process, slice};

#[repr(C)]
#[derive(Clone, Copy)]
struct Text {
    data: *const u8,
    size: usize,
}

impl Text {
    fn of(text: &str) -> Text {
        Text { data: text.as_ptr(), size: text.len() }
    }

    /// The pointer of an empty text may be null, which a slice's must not be.
    fn show(&self) -> String {
        if self.size == 0 {
            return String::new();
        }
        let bytes = unsafe { slice::from_raw_parts(self.data, self.size) };
        String::from_utf8_lossy(bytes).into_owned()
    }
}

/// A list of the library; its pointer may be null as well.
unsafe fn list<'a, Element>(first: *const Element, count: usize) -> &'a [Element] {
    if count == 0 {
        &[]
    } else {
        slice::from_raw_parts(first, count)
    }
}

#[repr(C)]
struct Value {
    name: Text,
    value: i32,
    reserved: i32,
}

#[repr(C)]
struct Semantic {
    name: Text,
    semantic: Text,
}

#[repr(C)]
struct Fault {
    size: usize,
    level: i32,
    line: i32,
    column: i32,
    reserved: i32,
    file: Text,
    node: Text,
    text: Text,
    hint: Text,
}

#[repr(C)]
struct Node {
    size: usize,
    name: Text,
    content: Text,
    references: *const Text,
    reference_count: usize,
    x: f32,
    y: f32,
}

#[repr(C)]
struct Request {
    size: usize,
    nodes: *const Text,
    node_count: usize,
    macros: *const Value,
    macro_count: usize,
    semantics: *const Semantic,
    semantic_count: usize,
    samplers: *const Value,
    sampler_count: usize,
    target: Text,
    stage: i32,
    wants_report: i32,
    wants_warnings: i32,
    reserved: i32,
    most_loop_work: usize,
    most_text_bytes: usize,
    cancel: *const i32,
}

#[repr(C)]
struct Line {
    node: i32,
    line: i32,
}

#[repr(C)]
struct Declare {
    size: usize,
    name: Text,
    kind: Text,
    written_type: Text,
    array_size: Text,
    semantic: Text,
    base_type: i32,
    rows: i32,
    columns: i32,
    elements: i32,
    bytes: i32,
    offset: i32,
    semantic_kind: i32,
    semantic_index: i32,
    number: i32,
    is_used: i32,
    node: i32,
    line: i32,
    column: i32,
    reserved: i32,
    repeated_by: *const i32,
    repeated_by_count: usize,
}

#[repr(C)]
struct Output {
    size: usize,
    code: Text,
    semantics: *const Semantic,
    semantic_count: usize,
    uniforms: *const Text,
    uniform_count: usize,
    nodes: *const Text,
    node_count: usize,
    lines: *const Line,
    line_count: usize,
    unused_macros: *const Text,
    unused_macro_count: usize,
    fault_count: usize,
    uniform_declare_count: usize,
    input_count: usize,
    output_count: usize,
    macro_count: usize,
    warning_count: usize,
    constant_bytes: usize,
}

// What morl/c/morl.h gives them where pointers have 8 bytes.
#[cfg(target_pointer_width = "64")]
const _: () = {
    assert!(size_of::<Value>() == 24 && size_of::<Fault>() == 88 && size_of::<Node>() == 64);
    assert!(size_of::<Request>() == 128 && size_of::<Declare>() == 160);
    assert!(size_of::<Output>() == 160);
};

const OK: i32 = 0;
const FRAGMENT: i32 = 1;
const UNIFORMS: i32 = 0;

type Log = extern "C" fn(*mut c_void, *const c_void);

#[link(name = "morl")]
extern "C" {
    fn morl_targets(count: *mut usize) -> *const Text;
    fn morl_compiler_create() -> *mut c_void;
    fn morl_compiler_destroy(compiler: *mut c_void) -> i32;
    fn morl_message(compiler: *const c_void) -> Text;
    fn morl_load_node_file(compiler: *mut c_void, path: Text) -> i32;
    fn morl_set_node(compiler: *mut c_void, node: *const Node) -> i32;
    fn morl_compile(compiler: *mut c_void, request: *const Request, result: *mut *mut c_void) -> i32;
    fn morl_get_output(result: *const c_void, output: *mut Output) -> i32;
    fn morl_get_fault(result: *const c_void, index: usize, fault: *mut Fault) -> i32;
    fn morl_get_declare(result: *const c_void, list: i32, index: usize, declare: *mut Declare) -> i32;
    fn morl_result_destroy(result: *mut c_void);
    fn morl_set_log(log: Log, host: *mut c_void, log_before: *mut c_void, host_before: *mut c_void) -> i32;
}

/// The log of the process: the report has all that this host shows.
extern "C" fn ignore(_host: *mut c_void, _line: *const c_void) {}

/// A compiler with its nodes.
struct Compiler(*mut c_void);

impl Drop for Compiler {
    fn drop(&mut self) {
        unsafe { morl_compiler_destroy(self.0) };
    }
}

/// The result of a request.
struct Outcome(*mut c_void);

impl Drop for Outcome {
    fn drop(&mut self) {
        unsafe { morl_result_destroy(self.0) };
    }
}

impl Compiler {
    fn check(&self, status: i32) -> Result<(), String> {
        if status == OK {
            return Ok(());
        }
        Err(unsafe { morl_message(self.0) }.show())
    }

    fn load_file(&self, path: &str) -> Result<(), String> {
        self.check(unsafe { morl_load_node_file(self.0, Text::of(path)) })
    }

    fn set_node(&self, name: &str, content: &str, references: &[&str]) -> Result<(), String> {
        let names: Vec<Text> = references.iter().map(|name| Text::of(name)).collect();
        let node = Node {
            size: size_of::<Node>(),
            name: Text::of(name),
            content: Text::of(content),
            references: names.as_ptr(),
            reference_count: names.len(),
            x: 0.0,
            y: 0.0,
        };
        self.check(unsafe { morl_set_node(self.0, &node) })
    }

    fn compile(&self, target: Text, nodes: &[&str]) -> Result<Outcome, String> {
        let names: Vec<Text> = nodes.iter().map(|name| Text::of(name)).collect();
        let semantics = [Semantic { name: Text::of("oUV"), semantic: Text::of("TEXCOORD0") }];
        let samplers = [Value { name: Text::of("albedoMap"), value: 3, reserved: 0 }];
        let mut request: Request = unsafe { zeroed() };
        request.size = size_of::<Request>();
        request.nodes = names.as_ptr();
        request.node_count = names.len();
        request.semantics = semantics.as_ptr();
        request.semantic_count = semantics.len();
        request.samplers = samplers.as_ptr();
        request.sampler_count = samplers.len();
        request.target = target;
        request.stage = FRAGMENT;
        request.wants_report = 1;
        request.cancel = null();
        let mut result = null_mut();
        self.check(unsafe { morl_compile(self.0, &request, &mut result) })?;
        Ok(Outcome(result))
    }
}

unsafe fn show(outcome: &Outcome) {
    let mut output: Output = zeroed();
    output.size = size_of::<Output>();
    morl_get_output(outcome.0, &mut output);
    let mut fault: Fault = zeroed();
    fault.size = size_of::<Fault>();
    for index in 0..output.fault_count {
        morl_get_fault(outcome.0, index, &mut fault);
        println!("{}:{}:{}: {}", fault.node.show(), fault.line, fault.column, fault.text.show());
    }
    let nodes = list(output.nodes, output.node_count);
    let code = output.code.show();
    for (line, text) in list(output.lines, output.line_count).iter().zip(code.split('\n')) {
        let place = match usize::try_from(line.node) {
            Ok(node) => format!("{}:{}", nodes[node].show(), line.line),
            Err(_) => String::new(),
        };
        println!("{place:18}| {text}");
    }
    let mut uniform: Declare = zeroed();
    uniform.size = size_of::<Declare>();
    for index in 0..output.uniform_declare_count {
        morl_get_declare(outcome.0, UNIFORMS, index, &mut uniform);
        let register = match uniform.number {
            number if number >= 0 => format!(" to register {number}"),
            _ => String::new(),
        };
        println!("bind {} ({}){register}", uniform.name.show(), uniform.kind.show());
    }
}

/// What somebody types into the node "unlit": first without a semicolon, then with it.
const EDITS: [&str; 2] = [
    "uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint\n}",
    "uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint;\n}",
];

fn run(directory: &str) -> Result<(), String> {
    let compiler = Compiler(unsafe { morl_compiler_create() });
    for name in ["vertex_shader", "fragment_shader", "post_effect", "special_output"] {
        compiler.load_file(&format!("{directory}/morl/{name}.morl"))?;
    }
    let mut count = 0;
    let targets = unsafe { list(morl_targets(&mut count), count) };
    for (number, content) in EDITS.iter().enumerate() {
        println!("=== edit {}", number + 1);
        compiler.set_node("unlit", content, &["surface_texture", "surface_color"])?;
        for target in targets {
            println!("== {}", target.show());
            let outcome = compiler.compile(*target, &["surface_texture", "unlit", "surface_out"])?;
            unsafe { show(&outcome) };
        }
    }
    Ok(())
}

fn main() {
    let arguments: Vec<String> = env::args().collect();
    if arguments.len() != 2 {
        eprintln!("usage: edit_loop DIRECTORY (the one with the folder morl/)");
        process::exit(1);
    }
    unsafe { morl_set_log(ignore, null_mut(), null_mut(), null_mut()) };
    if let Err(error) = run(&arguments[1]) {
        eprintln!("edit_loop: {error}");
        process::exit(1);
    }
}
