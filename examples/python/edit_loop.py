# SPDX-License-Identifier: MIT
"""An editor's loop in Python: a node is changed, a pass that uses it is compiled in all targets, and
the faults are shown, or the texts with the place that each line is from, and what is to be bound.

    python3 edit_loop.py LIBRARY DIRECTORY

LIBRARY is libmorl.so, DIRECTORY the one with the folder morl/. The structures are those of
morl/c/morl.h.
"""

import ctypes
import functools
import itertools
import sys
from ctypes import POINTER, c_char_p, c_float, c_int32, c_size_t, c_void_p


class Text(ctypes.Structure):
    _fields_ = [("data", c_char_p), ("size", c_size_t)]

    @staticmethod
    def of(string):
        data = string.encode()
        return Text(data, len(data))

    def __str__(self):
        # The field `data` itself would be read up to a NUL, which need not be there.
        address = c_void_p.from_buffer(self).value
        return ctypes.string_at(address, self.size).decode(errors="replace") if self.size else ""


class Value(ctypes.Structure):
    _fields_ = [("name", Text), ("value", c_int32), ("reserved", c_int32)]


class Semantic(ctypes.Structure):
    _fields_ = [("name", Text), ("semantic", Text)]


class Fault(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("level", c_int32), ("line", c_int32),
                ("column", c_int32), ("reserved", c_int32), ("file", Text), ("node", Text),
                ("text", Text), ("hint", Text)]


class Node(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("name", Text), ("content", Text),
                ("references", POINTER(Text)), ("reference_count", c_size_t), ("x", c_float),
                ("y", c_float)]


class Request(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("nodes", POINTER(Text)), ("node_count", c_size_t),
                ("macros", POINTER(Value)), ("macro_count", c_size_t),
                ("semantics", POINTER(Semantic)), ("semantic_count", c_size_t),
                ("samplers", POINTER(Value)), ("sampler_count", c_size_t), ("target", Text),
                ("stage", c_int32), ("wants_report", c_int32), ("wants_warnings", c_int32),
                ("reserved", c_int32), ("most_loop_work", c_size_t), ("most_text_bytes", c_size_t),
                ("cancel", POINTER(c_int32))]


class Line(ctypes.Structure):
    _fields_ = [("node", c_int32), ("line", c_int32)]


class Declare(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("name", Text), ("type", Text), ("written_type", Text),
                ("array_size", Text), ("semantic", Text), ("base_type", c_int32),
                ("rows", c_int32), ("columns", c_int32), ("elements", c_int32), ("bytes", c_int32),
                ("offset", c_int32), ("semantic_kind", c_int32), ("semantic_index", c_int32),
                ("number", c_int32), ("is_used", c_int32), ("node", c_int32), ("line", c_int32),
                ("column", c_int32), ("reserved", c_int32), ("repeated_by", POINTER(c_int32)),
                ("repeated_by_count", c_size_t)]


class Output(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("code", Text),
                ("semantics", POINTER(Semantic)), ("semantic_count", c_size_t),
                ("uniforms", POINTER(Text)), ("uniform_count", c_size_t),
                ("nodes", POINTER(Text)), ("node_count", c_size_t),
                ("lines", POINTER(Line)), ("line_count", c_size_t),
                ("unused_macros", POINTER(Text)), ("unused_macro_count", c_size_t),
                ("fault_count", c_size_t), ("uniform_declare_count", c_size_t),
                ("input_count", c_size_t), ("output_count", c_size_t), ("macro_count", c_size_t),
                ("warning_count", c_size_t), ("constant_bytes", c_size_t)]


if ctypes.sizeof(c_void_p) == 8:  # what morl/c/morl.h gives them where pointers have 8 bytes
    assert list(map(ctypes.sizeof, (Text, Value, Semantic, Fault, Node, Request, Line, Declare,
                                    Output))) == [16, 24, 32, 88, 64, 128, 8, 160, 160]

UNIFORMS = 0
OK = 0
FRAGMENT = 1
LOG = ctypes.CFUNCTYPE(None, c_void_p, c_void_p)


class MorlError(Exception):
    """A call that has failed, with the compiler's message."""


class Compiler:
    """A compiler with its nodes."""

    def __init__(self, library):
        self.library = library
        self.handle = library.morl_compiler_create()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.library.morl_compiler_destroy(self.handle)

    def check(self, status):
        if status != OK:
            raise MorlError(str(self.library.morl_message(self.handle)))

    def load_file(self, path):
        self.check(self.library.morl_load_node_file(self.handle, Text.of(path)))

    def set_node(self, name, content, references):
        names = (Text * len(references))(*map(Text.of, references))
        node = Node(ctypes.sizeof(Node), Text.of(name), Text.of(content), names, len(references))
        self.check(self.library.morl_set_node(self.handle, ctypes.byref(node)))

    def compile(self, target, nodes, semantics, samplers):
        """Runs a request for the fragment stage and shows its output."""
        request = Request(ctypes.sizeof(Request))
        request.nodes = (Text * len(nodes))(*map(Text.of, nodes))
        request.node_count = len(nodes)
        request.semantics = (Semantic * len(semantics))(
            *((Text.of(name), Text.of(value)) for name, value in semantics.items()))
        request.semantic_count = len(semantics)
        request.samplers = (Value * len(samplers))(
            *((Text.of(name), value) for name, value in samplers.items()))
        request.sampler_count = len(samplers)
        request.target = Text.of(target)
        request.stage = FRAGMENT
        request.wants_report = 1
        result = c_void_p()
        self.check(self.library.morl_compile(self.handle, ctypes.byref(request),
                                             ctypes.byref(result)))
        try:
            output = Output(ctypes.sizeof(Output))
            self.check(self.library.morl_get_output(result, ctypes.byref(output)))
            show(self.library, result, output)
        finally:
            self.library.morl_result_destroy(result)


def open_library(path):
    library = ctypes.CDLL(path)
    library.morl_targets.restype = POINTER(Text)
    library.morl_compiler_create.restype = c_void_p
    library.morl_message.restype = Text
    library.morl_message.argtypes = [c_void_p]
    library.morl_compiler_destroy.argtypes = [c_void_p]
    library.morl_load_node_file.argtypes = [c_void_p, Text]
    library.morl_set_node.argtypes = [c_void_p, POINTER(Node)]
    library.morl_compile.argtypes = [c_void_p, POINTER(Request), POINTER(c_void_p)]
    library.morl_get_output.argtypes = [c_void_p, POINTER(Output)]
    library.morl_get_fault.argtypes = [c_void_p, c_size_t, POINTER(Fault)]
    library.morl_get_declare.argtypes = [c_void_p, c_int32, c_size_t, POINTER(Declare)]
    library.morl_result_destroy.argtypes = [c_void_p]
    library.morl_set_log.argtypes = [LOG, c_void_p, c_void_p, c_void_p]
    return library


def elements(get, kind):
    """The elements of a list of a result, which are got one by one."""
    for index in itertools.count():
        element = kind(ctypes.sizeof(kind))
        if get(index, ctypes.byref(element)) != OK:
            return
        yield element


def show(library, result, output):
    for fault in elements(functools.partial(library.morl_get_fault, result), Fault):
        print(f"{fault.node}:{fault.line}:{fault.column}: {fault.text}")
    code = str(output.code).split("\n")
    for line, text in zip(output.lines[:output.line_count], code):
        place = f"{output.nodes[line.node]}:{line.line}" if line.node >= 0 else ""
        print(f"{place:18}| {text}")
    get_uniform = functools.partial(library.morl_get_declare, result, UNIFORMS)
    for uniform in elements(get_uniform, Declare):
        register = f" to register {uniform.number}" if uniform.number >= 0 else ""
        print(f"bind {uniform.name} ({uniform.type}){register}")


# What somebody types into the node "unlit": first without a semicolon, then with it.
EDITS = [
    "uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint\n}",
    "uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint;\n}",
]


def run(library, directory):
    count = c_size_t()
    targets = [str(name) for name in
               library.morl_targets(ctypes.byref(count))[:count.value]]
    with Compiler(library) as compiler:
        for name in ["vertex_shader", "fragment_shader", "post_effect", "special_output"]:
            compiler.load_file(f"{directory}/morl/{name}.morl")
        for number, content in enumerate(EDITS, 1):
            print(f"=== edit {number}")
            compiler.set_node("unlit", content, ["surface_texture", "surface_color"])
            for target in targets:
                print(f"== {target}")
                compiler.compile(target, ["surface_texture", "unlit", "surface_out"],
                                 {"oUV": "TEXCOORD0"}, {"albedoMap": 3})


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    library = open_library(sys.argv[1])
    # The log of the process: the report has all that this host shows.
    ignore = LOG(lambda *_: None)
    library.morl_set_log(ignore, None, None, None)
    try:
        run(library, sys.argv[2])
    except MorlError as error:
        sys.exit(f"edit_loop: {error}")


main()
