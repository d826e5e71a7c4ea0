// SPDX-License-Identifier: MIT
// The options of each command, with their help.
#include "option_declarations.h"

#include "completion.h"
#include "text.h"

#include <morl/morl.h>
#include <algorithm>
#include <charconv>
#include <unordered_map>
#include <utility>

namespace morlc {
namespace {

/// Accepts one of these values.
CLI::Validator OneOf(const std::vector<std::string>& values)
{
    const auto check = [values](const std::string& value) -> std::string {
        if (std::find(values.begin(), values.end(), value) != values.end()) {
            return {};
        }
        return "'" + value + "' is none of " + CLI::detail::join(values, ", ") +
               Suggestion(values, value);
    };
    return {check, "{" + CLI::detail::join(values) + "}"};
}

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
        ->check(OneOf(names));
}

/// An option with a list of names, separated by commas or given one by one.
CLI::Option* DeclareList(CLI::App& app, const std::string& name, std::vector<std::string>& list,
                         const char* type, const char* help)
{
    return TakesMany(app.add_option(name, list, help)->type_name(type)->delimiter(','));
}

/// The nodes that are named without an option, likewise.
CLI::Option* DeclareNodes(CLI::App& app, std::vector<std::string>& nodes, const char* help)
{
    return app.add_option("NODE", nodes, help)->type_name("")->delimiter(',');
}

/// Declares the options for the nodes of both passes.
std::pair<CLI::Option*, CLI::Option*> DeclareBothPasses(CLI::App& app, PassOptions& options)
{
    CLI::Option* const vertex = DeclareList(app, "--vertex", options.vertexNodes, "NODE,...",
                                            "Both passes: the nodes of the vertex pass")
                                    ->allow_extra_args();
    CLI::Option* const fragment = DeclareList(app, "--fragment", options.fragmentNodes, "NODE,...",
                                              "Both passes: the nodes of the fragment pass")
                                      ->allow_extra_args();
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

void DeclareJobs(CLI::App& app, std::size_t& jobs)
{
    const auto check = [](const std::string& text) -> std::string {
        constexpr unsigned kMaxJobs = 256;
        unsigned number = 0;
        const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
        const bool isValid = result.ec == std::errc() && result.ptr == text.data() + text.size() &&
                             number <= kMaxJobs;
        return isValid ? ""
                       : "'" + text + "' is not a number from 0 to " + std::to_string(kMaxJobs);
    };
    app.add_option("-j,--jobs", jobs, "Use N threads (0, the default: one per processor)")
        ->type_name("N")
        ->check(check);
}

CLI::Option* DeclareWatch(CLI::App& app, bool& watches)
{
    return app.add_flag("--watch", watches, "Go on, and do it again whenever a file changes");
}

void DeclareQuiet(CLI::App& app, bool& quiet, const char* help)
{
    app.add_flag("-q,--quiet", quiet, help);
}

CLI::Option* DeclareDepfile(CLI::App& app, std::string& depfile)
{
    return app
        .add_option("--depfile", depfile,
                    "Write which files the outputs depend on, in a format for Ninja and Make")
        ->type_name("FILE");
}

CLI::Option* DeclareOutput(CLI::App& app, std::string& output, const char* type, const char* help)
{
    return app.add_option("-o,--output", output, help)->type_name(type);
}

/// Declares the options of one pass or of both.
void DeclareCompile(CLI::App& app, Options& all)
{
    PassOptions& options = all.pass;
    std::vector<std::string> targets = ns_ruke::MorlTargets();
    targets.emplace_back("all");
    CLI::Option* const output =
        DeclareOutput(app, all.output, "FILE",
                      "The file to write (\"-\": standard output); with both passes, a directory");
    app.add_option("-t,--target", options.target, "The target language, or all of them")
        ->type_name("TARGET")
        ->check(OneOf(targets));
    CLI::Option* const stage = DeclareStage(app, options.stage, "The stage of the pass");
    CLI::Option* const nodes = DeclareNodes(app, options.nodes, "The nodes of the pass");
    CLI::Option* const vertex = DeclareBothPasses(app, options).first;
    DeclareValues(app, options);
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
}

/// Checks for the options that a pass needs. They are not declared as required, because both passes
/// together need other ones.
void FinishCompile(const CLI::App& app, Options& options)
{
    const bool bothPasses = options.pass.BothPasses();
    for (const char* const name : {"--target", "--stage", "NODE"}) {
        const bool isNeeded = !bothPasses || std::string(name) == "--target";
        if (isNeeded && app.count(name) == 0) {
            throw CLI::RequiredError(name);
        }
    }
    if (options.output != "-" && options.output == options.pass.semanticsOut) {
        throw CLI::ValidationError("--semantics-out", "names the same file as --output");
    }
    if (options.pass.target == "all" && !bothPasses) {
        throw CLI::ValidationError("--target", "'all' needs --vertex and --fragment");
    }
    if (bothPasses && options.output == "-") {
        throw CLI::ValidationError("--output", "both passes need a directory");
    }
}

constexpr const char* kCompileFooter =
    "Writes one pass, from the nodes named, to standard output or FILE; or, with --vertex\n"
    "and --fragment, both passes of the target (or of all targets) as DIR/TARGET.vert and\n"
    "DIR/TARGET.frag.";

void DeclareBuild(CLI::App& app, Options& all)
{
    BuildOptions& options = all.build;
    app.add_option("FILE", options.manifest, "The manifest, a JSON file")
        ->type_name("")
        ->required();
    DeclareOutput(app, options.output, "DIR", "The directory to write to")->required();
    DeclareJobs(app, options.jobs);
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
    CLI::Option* const depfile = DeclareDepfile(app, options.depfile);
    CLI::Option* const watch = DeclareWatch(app, all.watches);
    DeclareQuiet(app, options.quiet, "No progress, and no summary");
    index->excludes(ninja);
    index->excludes(watch);
    ninja->excludes(watch);
    for (CLI::Option* const option : {shader, noIndex, depfile}) {
        index->excludes(option);
        ninja->excludes(option);
    }
}

constexpr const char* kBuildFooter =
    "Writes DIR/SHADER/TARGET/VARIANT.vert and .frag (identical texts only once),\n"
    "DIR/SHADER.json with what the engine must know about each text, and DIR/index.json,\n"
    "which lists the files of each shader, target and variant. Unchanged files are left\n"
    "alone.";

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

void DeclareCheck(CLI::App& app, Options& all)
{
    CheckOptions& options = all.check;
    app.add_option("FILE", options.pass.nodes, "The manifest; with --stage, the nodes of the pass")
        ->type_name("")
        ->delimiter(',');
    std::vector<std::string> targets = ns_ruke::MorlTargets();
    targets.emplace_back("all");
    DeclareList(app, "-t,--target", options.targets, "TARGET,...", "Check only these targets")
        ->check(OneOf(targets));
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
    app.add_option("--d3dcompiler", options.direct3dCompiler,
                   "On Windows: the d3dcompiler_47.dll that judges HLSL, in place of the system's")
        ->type_name("FILE");
    DeclareJobs(app, options.jobs);
    DeclareWatch(app, all.watches);
    DeclareQuiet(app, options.quiet, "No progress");
}

/// Sorts out what the arguments of a check name.
void FinishCheck(const CLI::App& app, Options& all)
{
    CheckOptions& options = all.check;
    auto& targets = options.targets;
    if (std::find(targets.begin(), targets.end(), "all") != targets.end()) {
        targets.clear();
    }
    const bool isOnePass = app.count("--stage") > 0;
    if (isOnePass && options.pass.nodes.empty()) {
        throw CLI::RequiredError("NODE");
    }
    if (isOnePass || (options.pass.BothPasses() && options.pass.nodes.empty())) {
        return;
    }
    if (options.pass.BothPasses() || options.pass.nodes.size() > 1) {
        throw CLI::ValidationError(
            "FILE",
            "name one manifest, or --stage and nodes, or --vertex and --fragment; a list of "
            "names is written with commas");
    }
    if (options.pass.nodes.empty()) {
        throw CLI::RequiredError("FILE");
    }
    if (!options.pass.macros.empty() || !options.pass.samplers.empty()) {
        throw CLI::ValidationError("FILE", "a manifest has its own macros and samplers");
    }
    options.manifest = options.pass.nodes.front();
}

constexpr const char* kCheckFooter =
    "Looks for mistakes in all shaders of a manifest, in both passes of a shader, or in one\n"
    "pass, in all targets, and shows them at their places in the nodes. Writes nothing. Exit\n"
    "status 1 after any warning, too.";

void DeclareShow(CLI::App& app, Options& options)
{
    DeclareOutput(app, options.output, "FILE", "The file to write (\"-\": standard output)");
}

constexpr const char* kListFooter =
    "Each node with its file, its references, and what it declares: inputs, outputs, uniforms.";

constexpr const char* kGraphFooter = "In the language of Graphviz: morlc graph | neato -n2 -Tsvg";

void DeclareForce(CLI::App& app, bool& isForced)
{
    app.add_flag("--force", isForced,
                 "Also where comments of a node file, or values without effect, will be lost");
}

void DeclarePack(CLI::App& app, Options& options)
{
    CLI::Option* const output = DeclareOutput(app, options.pack.output, "DIR",
                                              "Write DIR/morl/, and leave the sources alone");
    DeclareDepfile(app, options.pack.depfile)->needs(output);
    DeclareForce(app, options.pack.isForced);
}

constexpr const char* kPackFooter =
    "Puts the node sources into the node files that they belong to, and removes the sources;\n"
    "or writes all four node files for an engine elsewhere. The same nodes give the same bytes.";

void DeclareUnpack(CLI::App& app, Options& options)
{
    DeclareNodes(app, options.unpack.nodes, "Only these nodes; otherwise all");
    DeclareForce(app, options.unpack.isForced);
}

constexpr const char* kUnpackFooter =
    "Turns nodes of the node files into sources, one text file each: a node of\n"
    "morl/post_effect.morl becomes morl/post_effect/NODE.morlsource.";

void DeclareText(CLI::App& app, Options& options)
{
    app.add_option("FILE", options.files.file, "A node file")->type_name("")->required();
}

constexpr const char* kTextFooter =
    "Shows the nodes of a node file as sources, one after another: for git's textconv.";

void DeclareMerge(CLI::App& app, Options& options)
{
    FileOptions& files = options.files;
    app.add_option("BASE", files.base, "The node file that both began with")
        ->type_name("")
        ->required();
    app.add_option("OURS", files.ours, "One edit of it; the result is written here")
        ->type_name("")
        ->required();
    app.add_option("THEIRS", files.theirs, "The other edit")->type_name("")->required();
    app.add_option("--path", files.path, "What messages call the file, as git does with %P")
        ->type_name("PATH");
}

constexpr const char* kMergeFooter =
    "Merges two edits of a node file node by node, and inside of a node line by line: a merge\n"
    "driver for git. Conflicts leave their marks inside of a node's content, and exit status 1.";

void DeclareCompletion(CLI::App& app, Options& options)
{
    app.add_option("SHELL", options.completion, "What to write it for")
        ->type_name("")
        ->required()
        ->check(OneOf(CompletionForms()));
}

constexpr const char* kCompletionFooter =
    "Writes a script that completes the commands, options and names of this tool; for \"man\",\n"
    "what the manual page says of them.";

}  // namespace

const std::vector<CommandInfo>& Commands()
{
    using C = Command;
    static const std::vector<CommandInfo> commands = {
        // clang-format off
        {C::Compile, "compile", "Compile one pass, or both passes of a shader", kCompileFooter, DeclareCompile, FinishCompile},
        {C::Check, "check", "Look for mistakes in shaders", kCheckFooter, DeclareCheck, FinishCheck},
        {C::Build, "build", "Build the shaders of a manifest", kBuildFooter, DeclareBuild, nullptr},
        {C::List, "list", "List the nodes", kListFooter, DeclareShow, nullptr},
        {C::Graph, "graph", "Draw the nodes and their references", kGraphFooter, DeclareShow, nullptr},
        {C::Pack, "pack", "Turn node sources into node files", kPackFooter, DeclarePack, nullptr},
        {C::Unpack, "unpack", "Turn nodes into sources, text files that people edit", kUnpackFooter, DeclareUnpack, nullptr},
        {C::Text, "text", "Show a node file as sources", kTextFooter, DeclareText, nullptr},
        {C::Merge, "merge", "Merge two edits of a node file", kMergeFooter, DeclareMerge, nullptr},
        {C::Completion, "completion", "Write the completion for a shell", kCompletionFooter, DeclareCompletion, nullptr},
        // clang-format on
    };
    return commands;
}

void DeclareCommon(CLI::App& app, CommonOptions& options)
{
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::Throw);
    app.add_option("-C,--directory", options.directory,
                   "Enter DIR first; its folder morl/ holds the nodes")
        ->type_name("DIR");
    app.add_option("--diagnostics", options.diagnostics,
                   "How problems are written: text, or json (one object a line)")
        ->type_name("FORMAT")
        ->check(OneOf({"text", "json"}));
    app.add_option("--color", options.color, "When messages are coloured: auto, on a terminal")
        ->type_name("WHEN")
        ->check(OneOf({"auto", "always", "never"}));
    app.add_flag("--all", options.showAll, "Show every message of a line, not only the first");
    app.add_flag("--verbose", options.verbose, "Also report which nodes are parsed");
    app.set_version_flag("--version", std::string("morlc ") + MORL_VERSION,
                         "Print the version and exit");
}

}  // namespace morlc
