// SPDX-License-Identifier: MIT
#pragma once

#include <morl/ast/stage.h>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace morlc {

/// What the process reports to its caller.
enum ExitStatus {
    kSuccess = 0,  ///< no error was logged
    kErrors = 1,   ///< an error was logged, or a file could not be read or written
    kUsage = 2     ///< the command line is wrong
};

/// What is asked for.
enum class Command { Compile, Check, Build, List, Graph, Pack, Unpack, Text, Merge, Completion };

enum class Stage { Vertex = ns_ruke::kVertexStage, Fragment = ns_ruke::kFragmentStage };

/// What a stage is called, and the end of the names of its files.
struct StageName {
    Stage stage;
    const char* name;
    const char* extension;
};

constexpr StageName kStages[] = {{Stage::Vertex, "vertex", ".vert"},
                                 {Stage::Fragment, "fragment", ".frag"}};
constexpr std::size_t kStageCount = 2;

/// What every command understands.
struct CommonOptions {
    std::string directory = ".";       ///< entered before anything else
    std::string diagnostics = "text";  ///< how problems are written: "text" or "json"
    std::string color = "auto";        ///< of messages: "auto", "always" or "never"
    bool verbose = false;
    bool showAll = false;  ///< also the further messages of a line
};

/// One pass, or both passes of a shader.
struct PassOptions {
    std::string target;  ///< a target, or "all"
    Stage stage = Stage::Vertex;
    std::vector<std::string> nodes;          ///< of the one pass of `stage`
    std::vector<std::string> vertexNodes;    ///< of the vertex pass, when both passes are asked for
    std::vector<std::string> fragmentNodes;  ///< of the fragment pass, likewise
    std::unordered_map<std::string, int> macros;
    std::unordered_map<std::string, int> samplers;
    std::string semanticsIn;   ///< empty: none
    std::string semanticsOut;  ///< empty: none

    bool BothPasses() const { return !vertexNodes.empty(); }
};

/// The shaders of a manifest.
struct BuildOptions {
    std::string manifest;
    std::string output;                ///< the directory that is written to
    std::vector<std::string> shaders;  ///< the only ones to be built; empty: all of them
    std::size_t jobs = 0;              ///< threads; 0: one per processor
    bool noIndex = false;
    bool indexOnly = false;  ///< only write the index of what was built before
    std::string ninjaFile;   ///< empty: none; otherwise nothing else is written
    std::string launcher;    ///< a shell command that starts each compilation of the Ninja file
    std::string depfile;     ///< empty: none
    bool quiet = false;
};

/// What to look for mistakes in: the shaders of a manifest, or one pass or both of a shader.
struct CheckOptions {
    std::string manifest;  ///< empty: the passes
    PassOptions pass;
    std::vector<std::string> targets;   ///< empty: all of them
    std::vector<std::string> shaders;   ///< of the manifest; empty: all of them
    std::vector<std::string> warnings;  ///< names of checks, with "no-" those that are off
    bool warningsAsErrors = false;
    bool showGenerated = false;
    std::string direct3dCompiler;  ///< a file; empty: the system's
    std::size_t jobs = 0;          ///< threads; 0: one per processor
    bool quiet = false;
};

/// Node sources that become node files.
struct PackOptions {
    std::string output;     ///< the directory to write below; empty: beside the sources
    std::string depfile;    ///< empty: none
    bool isForced = false;  ///< whether what node files cannot keep may be lost
};

/// Nodes of node files that become sources.
struct UnpackOptions {
    std::vector<std::string> nodes;  ///< empty: all
    bool isForced = false;           ///< as above
};

/// Node files as such, for git.
struct FileOptions {
    std::string file;  ///< for "text"
    std::string base;  ///< for "merge"
    std::string ours;
    std::string theirs;
    std::string path;  ///< what messages of "merge" call the file; empty: as `ours`
};

struct Options {
    Command command = Command::Compile;
    std::string program;  ///< the path of this tool
    CommonOptions common;
    bool watches = false;      ///< "build" and "check" go on after the first round
    std::string output = "-";  ///< a file ("-": standard output); a directory for both passes
    PassOptions pass;
    BuildOptions build;
    CheckOptions check;
    PackOptions pack;
    UnpackOptions unpack;
    FileOptions files;
    std::string completion;  ///< what to complete for
};

/// Reads the command line, without the program's name, into `options`. Returns true to continue.
/// Otherwise the process must end with `status`; the help or the error has been printed.
bool ReadOptions(std::vector<std::string> arguments, Options& options, ExitStatus& status);

}  // namespace morlc
