// SPDX-License-Identifier: MIT
// An editor's loop in C#: a node is changed, a pass that uses it is compiled in all targets, and the
// faults are shown, or the texts with the place that each line is from, and what is to be bound.
//
//     mcs EditLoop.cs
//     mono EditLoop.exe DIRECTORY (the one with the folder morl/)
//
// The structures are those of morl/c/morl.h. The loader finds libmorl.so or morl.dll.
using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Runtime.InteropServices;
using System.Text;

// What the native library writes to.
#pragma warning disable 649

[StructLayout(LayoutKind.Sequential)]
struct MorlText
{
    public IntPtr Data;
    public UIntPtr Size;

    // The pointer of an empty text may be null.
    public override string ToString()
    {
        var bytes = new byte[(int)Size];
        if (bytes.Length > 0)
            Marshal.Copy(Data, bytes, 0, bytes.Length);
        return Encoding.UTF8.GetString(bytes);
    }
}

[StructLayout(LayoutKind.Sequential)]
struct MorlValue
{
    public MorlText Name;
    public int Value;
    public int Reserved;
}

[StructLayout(LayoutKind.Sequential)]
struct MorlSemantic
{
    public MorlText Name;
    public MorlText Semantic;
}

[StructLayout(LayoutKind.Sequential)]
struct MorlFault
{
    public UIntPtr Size;
    public int Level, Line, Column, Reserved;
    public MorlText File, Node, Text, Hint;
}

[StructLayout(LayoutKind.Sequential)]
struct MorlNode
{
    public UIntPtr Size;
    public MorlText Name, Content;
    public IntPtr References;
    public UIntPtr ReferenceCount;
    public float X, Y;
}

[StructLayout(LayoutKind.Sequential)]
struct MorlRequest
{
    public UIntPtr Size;
    public IntPtr Nodes;
    public UIntPtr NodeCount;
    public IntPtr Macros;
    public UIntPtr MacroCount;
    public IntPtr Semantics;
    public UIntPtr SemanticCount;
    public IntPtr Samplers;
    public UIntPtr SamplerCount;
    public MorlText Target;
    public int Stage, WantsReport, WantsWarnings, Reserved;
    public UIntPtr MostLoopWork, MostTextBytes;
    public IntPtr Cancel;
}

[StructLayout(LayoutKind.Sequential)]
struct MorlLine
{
    public int Node, Line;
}

[StructLayout(LayoutKind.Sequential)]
struct MorlDeclare
{
    public UIntPtr Size;
    public MorlText Name, Type, WrittenType, ArraySize, Semantic;
    public int BaseType, Rows, Columns, Elements, Bytes, Offset, SemanticKind, SemanticIndex;
    public int Number, IsUsed, Node, Line, Column, Reserved;
    public IntPtr RepeatedBy;
    public UIntPtr RepeatedByCount;
}

[StructLayout(LayoutKind.Sequential)]
struct MorlOutput
{
    public UIntPtr Size;
    public MorlText Code;
    public IntPtr Semantics;
    public UIntPtr SemanticCount;
    public IntPtr Uniforms;
    public UIntPtr UniformCount;
    public IntPtr Nodes;
    public UIntPtr NodeCount;
    public IntPtr Lines;
    public UIntPtr LineCount;
    public IntPtr UnusedMacros;
    public UIntPtr UnusedMacroCount;
    public UIntPtr FaultCount, UniformDeclareCount, InputCount, OutputCount, MacroCount;
    public UIntPtr WarningCount, ConstantBytes;
}

static class Native
{
    public const int Ok = 0, Fragment = 1, Uniforms = 0;

    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate void Log(IntPtr host, IntPtr line);

    const string Library = "morl";
    const CallingConvention C = CallingConvention.Cdecl;

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr morl_targets(out UIntPtr count);
    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr morl_compiler_create();
    [DllImport(Library, CallingConvention = C)]
    public static extern int morl_compiler_destroy(IntPtr compiler);
    [DllImport(Library, CallingConvention = C)]
    public static extern MorlText morl_message(IntPtr compiler);
    [DllImport(Library, CallingConvention = C)]
    public static extern int morl_load_node_file(IntPtr compiler, MorlText path);
    [DllImport(Library, CallingConvention = C)]
    public static extern int morl_set_node(IntPtr compiler, ref MorlNode node);
    [DllImport(Library, CallingConvention = C)]
    public static extern int morl_compile(IntPtr compiler, ref MorlRequest request, out IntPtr result);
    [DllImport(Library, CallingConvention = C)]
    public static extern int morl_get_output(IntPtr result, ref MorlOutput output);
    [DllImport(Library, CallingConvention = C)]
    public static extern int morl_get_fault(IntPtr result, UIntPtr index, ref MorlFault fault);
    [DllImport(Library, CallingConvention = C)]
    public static extern int morl_get_declare(IntPtr result, int list, UIntPtr index, ref MorlDeclare declare);
    [DllImport(Library, CallingConvention = C)]
    public static extern void morl_result_destroy(IntPtr result);
    [DllImport(Library, CallingConvention = C)]
    public static extern int morl_set_log(Log log, IntPtr host, IntPtr logBefore, IntPtr hostBefore);

    public static UIntPtr SizeOf<T>()
    {
        return (UIntPtr)Marshal.SizeOf(typeof(T));
    }

    // The elements of a list of the library.
    public static IEnumerable<T> List<T>(IntPtr first, UIntPtr count)
    {
        for (var i = 0; i < (int)count; ++i)
            yield return (T)Marshal.PtrToStructure(first + i * Marshal.SizeOf(typeof(T)), typeof(T));
    }
}

// What one call passes: texts and lists, until it is disposed of.
sealed class Arena : IDisposable
{
    readonly List<IntPtr> blocks = new List<IntPtr>();

    public MorlText Text(string text)
    {
        var bytes = Encoding.UTF8.GetBytes(text);
        var data = Allocate(bytes.Length);
        Marshal.Copy(bytes, 0, data, bytes.Length);
        return new MorlText { Data = data, Size = (UIntPtr)bytes.Length };
    }

    public IntPtr List<T>(params T[] elements)
    {
        var size = Marshal.SizeOf(typeof(T));
        var first = Allocate(size * elements.Length);
        for (var i = 0; i < elements.Length; ++i)
            Marshal.StructureToPtr(elements[i], first + i * size, false);
        return first;
    }

    public void Dispose()
    {
        blocks.ForEach(Marshal.FreeHGlobal);
    }

    IntPtr Allocate(int bytes)
    {
        var block = Marshal.AllocHGlobal(Math.Max(bytes, 1));
        blocks.Add(block);
        return block;
    }
}

// A call that has failed, with the compiler's message.
sealed class MorlException : Exception
{
    public MorlException(string message) : base(message) { }
}

// A compiler with its nodes.
sealed class Compiler : IDisposable
{
    readonly IntPtr handle = Native.morl_compiler_create();

    public void Dispose()
    {
        Native.morl_compiler_destroy(handle);
    }

    public void LoadFile(string path)
    {
        using (var arena = new Arena())
            Check(Native.morl_load_node_file(handle, arena.Text(path)));
    }

    public void SetNode(string name, string content, params string[] references)
    {
        using (var arena = new Arena())
        {
            var node = new MorlNode
            {
                Size = Native.SizeOf<MorlNode>(),
                Name = arena.Text(name),
                Content = arena.Text(content),
                References = arena.List(references.Select(arena.Text).ToArray()),
                ReferenceCount = (UIntPtr)references.Length,
            };
            Check(Native.morl_set_node(handle, ref node));
        }
    }

    // Runs a request for the fragment stage and shows its output.
    public void Compile(MorlText target, params string[] nodes)
    {
        using (var arena = new Arena())
        {
            var request = new MorlRequest
            {
                Size = Native.SizeOf<MorlRequest>(),
                Nodes = arena.List(nodes.Select(arena.Text).ToArray()),
                NodeCount = (UIntPtr)nodes.Length,
                Semantics = arena.List(
                    new MorlSemantic { Name = arena.Text("oUV"), Semantic = arena.Text("TEXCOORD0") }),
                SemanticCount = (UIntPtr)1,
                Samplers = arena.List(new MorlValue { Name = arena.Text("albedoMap"), Value = 3 }),
                SamplerCount = (UIntPtr)1,
                Target = target,
                Stage = Native.Fragment,
                WantsReport = 1,
            };
            IntPtr result;
            Check(Native.morl_compile(handle, ref request, out result));
            Show(result);
            Native.morl_result_destroy(result);
        }
    }

    static void Show(IntPtr result)
    {
        var output = new MorlOutput { Size = Native.SizeOf<MorlOutput>() };
        Native.morl_get_output(result, ref output);
        var fault = new MorlFault { Size = Native.SizeOf<MorlFault>() };
        for (uint i = 0; Native.morl_get_fault(result, (UIntPtr)i, ref fault) == Native.Ok; ++i)
            EditLoop.Out.Write("{0}:{1}:{2}: {3}\n", fault.Node, fault.Line, fault.Column, fault.Text);
        var nodes = Native.List<MorlText>(output.Nodes, output.NodeCount).ToArray();
        var texts = output.Code.ToString().Split('\n');
        var number = 0;
        foreach (var line in Native.List<MorlLine>(output.Lines, output.LineCount))
        {
            var place = line.Node < 0 ? "" : nodes[line.Node] + ":" + line.Line;
            EditLoop.Out.Write("{0,-18}| {1}\n", place, texts[number++]);
        }
        var uniform = new MorlDeclare { Size = Native.SizeOf<MorlDeclare>() };
        for (uint i = 0; Native.morl_get_declare(result, Native.Uniforms, (UIntPtr)i, ref uniform) == Native.Ok; ++i)
        {
            var register = uniform.Number < 0 ? "" : " to register " + uniform.Number;
            EditLoop.Out.Write("bind {0} ({1}){2}\n", uniform.Name, uniform.Type, register);
        }
    }

    void Check(int status)
    {
        if (status != Native.Ok)
            throw new MorlException(Native.morl_message(handle).ToString());
    }
}

static class EditLoop
{
    public static readonly TextWriter Out = new StreamWriter(Console.OpenStandardOutput());

    // What somebody types into the node "unlit": first without a semicolon, then with it.
    static readonly string[] edits =
    {
        "uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint\n}",
        "uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint;\n}",
    };

    static void CheckLayout()
    {
        var sizes = new[] { typeof(MorlFault), typeof(MorlNode), typeof(MorlRequest), typeof(MorlDeclare),
                            typeof(MorlOutput) }.Select(type => Marshal.SizeOf(type));
        // What morl/c/morl.h gives them where pointers have 8 bytes.
        if (IntPtr.Size == 8 && !sizes.SequenceEqual(new[] { 88, 64, 128, 160, 160 }))
            throw new MorlException("the structures are not those of morl/c/morl.h");
    }

    static void Run(string directory)
    {
        UIntPtr count;
        var targets = Native.morl_targets(out count);
        using (var compiler = new Compiler())
        {
            foreach (var name in new[] { "vertex_shader", "fragment_shader", "post_effect", "special_output" })
                compiler.LoadFile(directory + "/morl/" + name + ".morl");
            for (var i = 0; i < edits.Length; ++i)
            {
                Out.Write("=== edit {0}\n", i + 1);
                compiler.SetNode("unlit", edits[i], "surface_texture", "surface_color");
                foreach (var target in Native.List<MorlText>(targets, count))
                {
                    Out.Write("== {0}\n", target);
                    compiler.Compile(target, "surface_texture", "unlit", "surface_out");
                }
            }
        }
    }

    static int Main(string[] arguments)
    {
        if (arguments.Length != 1)
        {
            Console.Error.WriteLine("usage: EditLoop DIRECTORY (the one with the folder morl/)");
            return 1;
        }
        // The log of the process: the report has all that this host shows.
        Native.Log ignore = (host, line) => { };
        Native.morl_set_log(ignore, IntPtr.Zero, IntPtr.Zero, IntPtr.Zero);
        try
        {
            CheckLayout();
            Run(arguments[0]);
        }
        catch (MorlException error)
        {
            Console.Error.WriteLine("EditLoop: " + error.Message);
            return 1;
        }
        finally
        {
            Out.Flush();
            Native.morl_set_log(null, IntPtr.Zero, IntPtr.Zero, IntPtr.Zero);
            GC.KeepAlive(ignore);
        }
        return 0;
    }
}
