// SPDX-License-Identifier: MIT
#include "options.h"

#include "command_line.h"

#include <morl/morl.h>
#include <filesystem>
#include <string_view>

namespace morlc {
namespace {

/// The options as CLI11 reads them, before they are checked against each other.
struct RawOptions {
    std::string stage;
    std::vector<std::string> macros;
    std::vector<std::string> samplers;
    std::string output = "-";
    bool list = false;
};

std::unordered_map<std::string, int> ReadAssignments(const std::string& option,
                                                     const std::vector<std::string>& texts)
{
    std::unordered_map<std::string, int> values;
    for (const std::string& text : texts) {
        const std::size_t sign = text.find('=');
        if (sign == std::string::npos || sign == 0) {
            throw CLI::ValidationError(option, "'" + text + "' should read NAME=INTEGER");
        }
        values[text.substr(0, sign)] = ReadInteger(option, text.substr(sign + 1));
    }
    return values;
}

std::vector<std::string> TargetNames()
{
    std::vector<std::string> targets = ns_ruke::MorlTargets();
    targets.emplace_back("all");
    return targets;
}

void DeclarePasses(CLI::App& app, PassOptions& options, RawOptions& raw)
{
    app.add_option("-t,--target", options.target, "The target language, or all of them")
        ->type_name("TARGET")
        ->check(OneOf(TargetNames()));
    app.add_option("-s,--stage", raw.stage, "The stage of the pass")
        ->type_name("STAGE")
        ->check(OneOf({"vertex", "fragment"}));
    app.add_option("nodes", options.nodes, "The nodes of the pass")->type_name("NODE");
    app.add_option("--vertex", options.vertexNodes, "Both passes: the nodes of the vertex pass")
        ->type_name("NODE,...")
        ->delimiter(',')
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--fragment", options.fragmentNodes,
                   "Both passes: the nodes of the fragment pass")
        ->type_name("NODE,...")
        ->delimiter(',')
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("-D,--define", raw.macros, "Give a macro a value")
        ->type_name("NAME=INT")
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--sampler", raw.samplers, "Give a sampler bound to SAUTO a register")
        ->type_name("NAME=INT")
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--semantics-in", options.semanticsIn,
                   "Read the table of automatic texture coordinates that a vertex pass wrote")
        ->type_name("FILE");
    app.add_option("--semantics-out", options.semanticsOut,
                   "Write the table of automatic texture coordinates, a JSON object")
        ->type_name("FILE");
}

void Declare(CLI::App& app, Options& options, RawOptions& raw)
{
    DeclareCommon(app, options.common);
    DeclarePasses(app, options.pass, raw);
    app.add_option("-o,--output", raw.output,
                   "The file to write (\"-\": standard output); for both passes the directory")
        ->type_name("FILE");
    app.add_flag("--list", raw.list, "List the nodes: file, references, inputs, outputs, uniforms");
    app.add_option("--graph", options.graph.format, "Write the node graph for Graphviz")
        ->type_name("FORMAT")
        ->check(OneOf({"dot"}));
    app.footer(
        "Writes one pass, from the nodes named, to standard output or FILE; or, with --vertex and\n"
        "--fragment, both passes of the target (or of all targets) as DIR/TARGET.vert and\n"
        "DIR/TARGET.frag. Paths are relative to the directory given with -C.\n"
        "\n"
        "'morlc build FILE.json -o DIR' builds all shaders of a manifest: see 'morlc build "
        "--help'.\n"
        "\n"
        "Exit status: 0 without errors, 1 after any error, 2 for wrong usage.");
}

std::string TargetHelp()
{
    std::string names;
    for (const std::string& target : ns_ruke::MorlTargets()) {
        names += (names.empty() ? "" : ", ") + target;
    }
    return "say -t with one of " + names;
}

void CheckOnePass(PassOptions& options, const RawOptions& raw)
{
    if (options.target == "all") {
        throw CLI::ValidationError("--target", "'all' needs --vertex, --fragment and -o DIR");
    }
    if (raw.stage.empty()) {
        throw CLI::ValidationError("--stage", "say -s vertex or -s fragment");
    }
    if (options.nodes.empty()) {
        throw CLI::ValidationError("NODE", "name at least one node (--list shows them)");
    }
    options.stage = raw.stage == "vertex" ? 0 : 1;
}

void CheckBothPasses(const PassOptions& options, const RawOptions& raw)
{
    if (options.vertexNodes.empty() || options.fragmentNodes.empty()) {
        throw CLI::ValidationError("--vertex", "--vertex and --fragment go together");
    }
    if (!options.nodes.empty() || !raw.stage.empty()) {
        throw CLI::ValidationError("--vertex", "takes the place of --stage and of the node names");
    }
    if (!options.semanticsIn.empty() || !options.semanticsOut.empty()) {
        throw CLI::ValidationError("--vertex",
                                   "hands the table to the fragment pass by itself: "
                                   "leave --semantics-in and --semantics-out out");
    }
    if (options.output == "-") {
        throw CLI::ValidationError("--output", "both passes need a directory: -o DIR");
    }
}

void CheckPasses(PassOptions& options, const RawOptions& raw)
{
    if (options.target.empty() && !options.nodes.empty() && options.nodes.front() == "build") {
        throw CLI::ValidationError("build", "comes first: morlc build ...");
    }
    if (options.target.empty()) {
        throw CLI::ValidationError("--target", TargetHelp());
    }
    options.macros = ReadAssignments("--define", raw.macros);
    options.samplers = ReadAssignments("--sampler", raw.samplers);
    options.output = raw.output;
    if (options.vertexNodes.empty() && options.fragmentNodes.empty()) {
        CheckOnePass(options, raw);
    } else {
        CheckBothPasses(options, raw);
    }
}

/// The first option of a pass that was given; empty: none.
std::string PassOption(const CLI::App& app)
{
    for (const char* name : {"--target", "--stage", "--vertex", "--fragment", "--define",
                             "--sampler", "--semantics-in", "--semantics-out"}) {
        if (app.count(name) > 0) {
            return name;
        }
    }
    return app.count("nodes") > 0 ? "NODE" : "";
}

void Check(const CLI::App& app, Options& options, const RawOptions& raw)
{
    const bool wantsGraph = !options.graph.format.empty();
    if (!raw.list && !wantsGraph) {
        CheckPasses(options.pass, raw);
        return;
    }
    const std::string asked = raw.list ? "--list" : "--graph";
    const std::string other = raw.list && wantsGraph ? "--graph" : PassOption(app);
    if (!other.empty()) {
        throw CLI::ValidationError(asked, "compiles nothing: leave " + other + " out");
    }
    options.command = raw.list ? Command::List : Command::Graph;
    options.graph.output = raw.output;
}

bool ReadPassOptions(int argc, char** argv, Options& options, ExitStatus& status)
{
    CLI::App app("Compiles shader graphs to HLSL and GLSL.", "morlc");
    RawOptions raw;
    Declare(app, options, raw);
    return ParseCommandLine(
        app, argc, argv, [&] { Check(app, options, raw); }, status);
}

}  // namespace

bool ReadOptions(int argc, char** argv, Options& options, ExitStatus& status)
{
    std::error_code ignored;
    options.program = std::filesystem::read_symlink("/proc/self/exe", ignored).string();
    if (argc > 1 && std::string_view(argv[1]) == "build") {
        options.command = Command::Build;
        return ReadBuildOptions(argc - 1, argv + 1, options, status);
    }
    return ReadPassOptions(argc, argv, options, status);
}

}  // namespace morlc
