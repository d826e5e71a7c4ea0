// SPDX-License-Identifier: MIT
// The options of each command, with their help.
#include "option_declarations.h"

#include "text.h"

#include <morl/morl.h>
#include <algorithm>
#include <charconv>
#include <unordered_map>
#include <utility>

namespace morlc {
namespace {

constexpr const char* kExitStatus =
    "Exit status: 0 without errors, 1 after any error, 2 for wrong usage.";

/// Makes repeated uses of the option extend one list of values.
CLI::Option* TakesMany(CLI::Option* option)
{
    return option->allow_extra_args(false)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

/// Reads one NAME=INTEGER.
void ReadAssignment(const std::string& option, const std::string& text,
                    std::unordered_map<std::string, int>& values)
{
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos || sign == 0) {
        throw CLI::ValidationError(option, "'" + text + "' should read NAME=INTEGER");
    }
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data() + sign + 1, end, values[text.substr(0, sign)]);
    if (result.ec == std::errc::result_out_of_range) {
        throw CLI::ValidationError(option, "'" + text + "' is outside the 32-bit range");
    }
    if (result.ec != std::errc() || result.ptr != end) {
        throw CLI::ValidationError(option, "'" + text + "' should read NAME=INTEGER");
    }
}

CLI::Option* AddAssignments(CLI::App& app, const std::string& name,
                            std::unordered_map<std::string, int>& values, const std::string& help)
{
    const std::string longName = name.substr(name.rfind("--"));
    return TakesMany(app.add_option_function<std::vector<std::string>>(
                            name,
                            [longName, &values](const std::vector<std::string>& texts) {
                                for (const std::string& text : texts) {
                                    ReadAssignment(longName, text, values);
                                }
                            },
                            help)
                         ->type_name("NAME=INT"));
}

CLI::Option* DeclareStage(CLI::App& app, Stage& stage, const char* help)
{
    std::vector<std::string> names;
    for (const StageName& one : kStages) {
        names.emplace_back(one.name);
    }
    const auto take = [&stage](const std::string& name) {
        for (const StageName& one : kStages) {
            stage = name == one.name ? one.stage : stage;
        }
    };
    return app.add_option_function<std::string>("-s,--stage", take, help)
        ->type_name("STAGE")
        ->check(CLI::IsMember(names));
}

/// An option with a list of names, separated by commas or given one by one.
CLI::Option* DeclareList(CLI::App& app, const std::string& name, std::vector<std::string>& list,
                         const char* type, const char* help)
{
    return TakesMany(app.add_option(name, list, help)->type_name(type)->delimiter(','));
}

/// Declares the options for the nodes of both passes.
std::pair<CLI::Option*, CLI::Option*> DeclareBothPasses(CLI::App& app, PassOptions& options)
{
    CLI::Option* const vertex = DeclareList(app, "--vertex", options.vertexNodes, "NODE,...",
                                            "Both passes: the nodes of the vertex pass");
    CLI::Option* const fragment = DeclareList(app, "--fragment", options.fragmentNodes, "NODE,...",
                                              "Both passes: the nodes of the fragment pass");
    vertex->needs(fragment);
    fragment->needs(vertex);
    return {vertex, fragment};
}

/// Declares the options for macros and samplers.
std::pair<CLI::Option*, CLI::Option*> DeclareValues(CLI::App& app, PassOptions& options)
{
    return {AddAssignments(app, "-D,--define", options.macros, "Give a macro a value"),
            AddAssignments(app, "--sampler", options.samplers,
                           "Give a sampler bound to SAUTO a register")};
}

void DeclareJobs(CLI::App& app, std::size_t& jobs, const char* help)
{
    constexpr unsigned kMaxJobs = 256;
    app.add_option("-j,--jobs", jobs, help)->type_name("N")->check(CLI::Range(0U, kMaxJobs));
}

/// Declares what every command understands.
void DeclareCommon(CLI::App& app, CommonOptions& options)
{
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::Throw);
    app.add_option("-C,--directory", options.directory,
                   "Enter DIR first; its folder morl/ holds the node files")
        ->type_name("DIR");
    app.add_option("--diagnostics", options.diagnostics,
                   "How problems are written: text, or json (one object a line)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(std::vector<std::string>{"text", "json"}));
    app.add_flag("--all", options.showAll, "Show every message of a line, not only the first");
    app.add_flag("--verbose", options.verbose, "Also report which nodes are parsed");
}

/// Declares the options of one pass or of both, and returns them.
std::vector<CLI::Option*> DeclarePasses(CLI::App& app, PassOptions& options)
{
    std::vector<std::string> targets = ns_ruke::MorlTargets();
    targets.emplace_back("all");
    CLI::Option* const output = app.get_option("--output");
    CLI::Option* const target =
        app.add_option("-t,--target", options.target, "The target language, or all of them")
            ->type_name("TARGET")
            ->check(CLI::IsMember(targets));
    CLI::Option* const stage = DeclareStage(app, options.stage, "The stage of the pass");
    CLI::Option* const nodes =
        app.add_option("NODE", options.nodes, "The nodes of the pass")->type_name("");
    const auto [vertex, fragment] = DeclareBothPasses(app, options);
    const auto [define, sampler] = DeclareValues(app, options);
    CLI::Option* const in =
        app.add_option("--semantics-in", options.semanticsIn,
                       "Read the table of automatic texture coordinates that a vertex pass wrote")
            ->type_name("FILE");
    CLI::Option* const out =
        app.add_option("--semantics-out", options.semanticsOut,
                       "Write the table of automatic texture coordinates, a JSON object")
            ->type_name("FILE");
    vertex->needs(output);
    // With both passes, stages and nodes are given already, and the table is passed on
    // automatically.
    for (CLI::Option* const option : {stage, nodes, in, out}) {
        vertex->excludes(option);
    }
    return {target, stage, nodes, vertex, fragment, define, sampler, in, out};
}

}  // namespace

std::vector<CLI::Option*> DeclareMain(CLI::App& app, Options& options)
{
    DeclareCommon(app, options.common);
    app.set_version_flag("--version", std::string("morlc ") + MORL_VERSION);
    CLI::Option* const output =
        app.add_option("-o,--output", options.output,
                       "The file to write (\"-\": standard output); with both passes, a directory")
            ->type_name("FILE");
    CLI::Option* const list = app.add_flag_callback(
        "--list", [&options] { options.command = Command::List; },
        "List the nodes: file, references, inputs, outputs, uniforms");
    CLI::Option* const graph =
        app.add_option_function<std::string>(
               "--graph", [&options](const std::string&) { options.command = Command::Graph; },
               "Write the node graph for Graphviz")
            ->type_name("FORMAT")
            ->check(CLI::IsMember(std::vector<std::string>{"dot"}));
    list->excludes(graph);
    std::vector<CLI::Option*> own = DeclarePasses(app, options.pass);
    for (CLI::Option* const option : own) {
        list->excludes(option);
        graph->excludes(option);
    }
    app.footer(
        std::string(
            "Writes one pass, from the nodes named, to standard output or FILE; or, with --vertex\n"
            "and --fragment, both passes of the target (or of all targets) as DIR/TARGET.vert and\n"
            "DIR/TARGET.frag. Paths are relative to the directory given with -C.\n\n") +
        kExitStatus);
    own.insert(own.end(), {output, list, graph});
    return own;
}

void DeclareBuild(CLI::App& app, CommonOptions& common, BuildOptions& options)
{
    DeclareCommon(app, common);
    app.add_option("FILE", options.manifest, "The manifest, a JSON file")
        ->type_name("")
        ->required();
    app.add_option("-o,--output", options.output, "The directory to write to")
        ->type_name("DIR")
        ->required();
    DeclareJobs(app, options.jobs, "Use N threads (0: one per processor)");
    CLI::Option* const shader =
        DeclareList(app, "--shader", options.shaders, "NAME,...", "Build only these shaders");
    CLI::Option* const noIndex =
        app.add_flag("--no-index", options.noIndex, "Do not touch the index");
    CLI::Option* const index = app.add_flag("--index", options.indexOnly,
                                            "Only write the index of the shaders built before");
    CLI::Option* const ninja = app.add_option("--ninja", options.ninjaFile,
                                              "Only write a Ninja file, with one edge per shader")
                                   ->type_name("FILE");
    app.add_option("--launcher", options.launcher,
                   "In the Ninja file, put COMMAND in front of every compilation")
        ->type_name("COMMAND")
        ->check([](const std::string& command) {
            return command.find('\n') == std::string::npos ? "" : "the command must be on one line";
        })
        ->needs(ninja);
    CLI::Option* const depfile =
        app.add_option("--depfile", options.depfile,
                       "Write which files the shaders depend on, in a format for Ninja and Make")
            ->type_name("FILE");
    app.add_flag("-q,--quiet", options.quiet, "No progress, and no summary");
    index->excludes(ninja);
    for (CLI::Option* const option : {shader, noIndex, depfile}) {
        index->excludes(option);
        ninja->excludes(option);
    }
    app.footer(
        std::string(
            "Writes DIR/SHADER/TARGET/VARIANT.vert and .frag (identical texts only once),\n"
            "DIR/SHADER.json with what the engine must know about each text, and DIR/index.json,\n"
            "which lists the files of each shader, target and variant. Unchanged files are left\n"
            "alone. Paths are relative to the directory given with -C.\n\n") +
        kExitStatus);
}

namespace {

/// Refuses a name that "-W" does not know.
std::string CheckWarningName(const std::string& name)
{
    std::vector<std::string> names = {"verdict"};
    for (const ns_ruke::CheckInfo& check : ns_ruke::MorlChecks()) {
        names.emplace_back(check.name);
        names.emplace_back(check.group);
    }
    const std::string plain = name.compare(0, 3, "no-") == 0 ? name.substr(3) : name;
    const bool isKnown = std::find(names.begin(), names.end(), plain) != names.end();
    return isKnown ? "" : "unknown check '" + plain + "'" + Suggestion(names, plain);
}

}  // namespace

void DeclareCheck(CLI::App& app, CommonOptions& common, CheckOptions& options)
{
    DeclareCommon(app, common);
    app.add_option("FILE", options.pass.nodes, "The manifest; with --stage, the nodes of the pass")
        ->type_name("");
    DeclareList(app, "-t,--target", options.targets, "TARGET,...", "Check only these targets")
        ->check(CLI::IsMember(ns_ruke::MorlTargets()));
    CLI::Option* const stage = DeclareStage(app, options.pass.stage, "One pass: its stage");
    DeclareBothPasses(app, options.pass).first->excludes(stage);
    DeclareValues(app, options.pass);
    DeclareList(app, "--shader", options.shaders, "NAME,...", "Check only these shaders");
    TakesMany(
        app.add_option("-W", options.warnings,
                       "Look for NAME, a check or a group of checks; or no longer, with no-NAME")
            ->type_name("NAME")
            ->check(CheckWarningName));
    app.add_flag("--werror", options.warningsAsErrors, "Warnings are errors");
    app.add_flag("--show-generated", options.showGenerated,
                 "Also show the generated line that a compiler complains about");
    DeclareJobs(app, options.jobs, "Use N threads (0, the default: one per processor)");
    app.add_flag("-q,--quiet", options.quiet, "No progress");
    app.footer(
        "Looks for mistakes in all shaders of a manifest, in both passes of a shader, or in one\n"
        "pass, in all targets, and shows them at their places in the nodes. Writes nothing.\n\n"
        "Exit status: 0 if nothing was found, 1 after any warning or error, 2 for wrong usage.");
}

}  // namespace morlc
