// SPDX-License-Identifier: MIT
#include "options.h"

#include "platform.h"
#include "text.h"

#include <morl/morl.h>
#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <memory>
#include <utility>

namespace morlc {
namespace {

constexpr unsigned kMaxJobs = 256;
constexpr const char* kCommandFirst =
    " (give the options of a command behind its name, and a node of this name behind '--')";
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

/// Help without the "Needs" and "Excludes" lists; error messages say this when it matters.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option_opts(const CLI::Option* option) const override
    {
        const std::string text = CLI::Formatter::make_option_opts(option);
        const std::string own =
            text.substr(0, std::min(text.find(" Needs:"), text.find(" Excludes:")));
        // "NODE,... ..." says it twice.
        const std::size_t twice = own.find(",... ...");
        return twice == std::string::npos ? own : own.substr(0, twice + 4);
    }
};

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
    CLI::Option* const stage =
        app.add_option_function<std::string>(
               "-s,--stage",
               [&options](const std::string& name) {
                   options.stage =
                       name == "vertex" ? ns_ruke::kVertexStage : ns_ruke::kFragmentStage;
               },
               "The stage of the pass")
            ->type_name("STAGE")
            ->check(CLI::IsMember(std::vector<std::string>{"vertex", "fragment"}));
    CLI::Option* const nodes =
        app.add_option("NODE", options.nodes, "The nodes of the pass")->type_name("");
    CLI::Option* const vertex = TakesMany(
        app.add_option("--vertex", options.vertexNodes, "Both passes: the nodes of the vertex pass")
            ->type_name("NODE,...")
            ->delimiter(','));
    CLI::Option* const fragment =
        TakesMany(app.add_option("--fragment", options.fragmentNodes,
                                 "Both passes: the nodes of the fragment pass")
                      ->type_name("NODE,...")
                      ->delimiter(','));
    CLI::Option* const define =
        AddAssignments(app, "-D,--define", options.macros, "Give a macro a value");
    CLI::Option* const sampler = AddAssignments(app, "--sampler", options.samplers,
                                                "Give a sampler bound to SAUTO a register");
    CLI::Option* const in =
        app.add_option("--semantics-in", options.semanticsIn,
                       "Read the table of automatic texture coordinates that a vertex pass wrote")
            ->type_name("FILE");
    CLI::Option* const out =
        app.add_option("--semantics-out", options.semanticsOut,
                       "Write the table of automatic texture coordinates, a JSON object")
            ->type_name("FILE");
    vertex->needs(fragment)->needs(output);
    fragment->needs(vertex);
    // With both passes, stages and nodes are given already, and the table is passed on
    // automatically.
    for (CLI::Option* const option : {stage, nodes, in, out}) {
        vertex->excludes(option);
    }
    return {target, stage, nodes, vertex, fragment, define, sampler, in, out};
}

/// Declares the options for use without a subcommand, and returns those that no subcommand accepts.
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
    app.add_option("-j,--jobs", options.jobs, "Use N threads (0: one per processor)")
        ->type_name("N")
        ->check(CLI::Range(0U, kMaxJobs));
    CLI::Option* const shader =
        TakesMany(app.add_option("--shader", options.shaders, "Build only these shaders")
                      ->type_name("NAME,...")
                      ->delimiter(','));
    CLI::Option* const noIndex =
        app.add_flag("--no-index", options.noIndex, "Leave the index as it is");
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

void DeclareCheck(CLI::App& app, CommonOptions& common, CheckOptions& options)
{
    DeclareCommon(app, common);
    app.add_option("FILE", options.pass.nodes, "The manifest; with --stage, the nodes of the pass")
        ->type_name("");
    TakesMany(app.add_option("-t,--target", options.targets, "Check only these targets")
                  ->type_name("TARGET,...")
                  ->delimiter(',')
                  ->check(CLI::IsMember(ns_ruke::MorlTargets())));
    CLI::Option* const stage =
        app.add_option_function<std::string>(
               "-s,--stage",
               [&options](const std::string& name) {
                   options.pass.stage =
                       name == "vertex" ? ns_ruke::kVertexStage : ns_ruke::kFragmentStage;
               },
               "One pass: its stage")
            ->type_name("STAGE")
            ->check(CLI::IsMember(std::vector<std::string>{"vertex", "fragment"}));
    CLI::Option* const vertex =
        TakesMany(app.add_option("--vertex", options.pass.vertexNodes,
                                 "Both passes: the nodes of the vertex pass")
                      ->type_name("NODE,...")
                      ->delimiter(','));
    CLI::Option* const fragment =
        TakesMany(app.add_option("--fragment", options.pass.fragmentNodes,
                                 "Both passes: the nodes of the fragment pass")
                      ->type_name("NODE,...")
                      ->delimiter(','));
    vertex->needs(fragment)->excludes(stage);
    fragment->needs(vertex);
    AddAssignments(app, "-D,--define", options.pass.macros, "Give a macro a value");
    AddAssignments(app, "--sampler", options.pass.samplers,
                   "Give a sampler bound to SAUTO a register");
    TakesMany(app.add_option("--shader", options.shaders, "Check only these shaders")
                  ->type_name("NAME,...")
                  ->delimiter(','));
    TakesMany(
        app.add_option("-W", options.warnings,
                       "Look for NAME, a check or a group of checks; or no longer, with no-NAME")
            ->type_name("NAME")
            ->check(CheckWarningName));
    app.add_flag("--werror", options.warningsAsErrors, "Warnings are errors");
    app.add_flag("--show-generated", options.showGenerated,
                 "Also show the generated line that a compiler complains about");
    app.add_option("-j,--jobs", options.jobs, "Use N threads (0, the default: one per processor)")
        ->type_name("N")
        ->check(CLI::Range(0U, kMaxJobs));
    app.add_flag("-q,--quiet", options.quiet, "No progress");
    app.footer(
        "Looks for mistakes in all shaders of a manifest, in both passes of a shader, or in one\n"
        "pass, in all targets, and shows them at their places in the nodes. Writes nothing.\n\n"
        "Exit status: 0 if nothing was found, 1 after any warning or error, 2 for wrong usage.");
}

/// Sorts out what the arguments of a check name.
void ReadCheckSubject(const CLI::App& app, CheckOptions& options)
{
    const bool isOnePass = app.count("--stage") > 0;
    if (isOnePass && options.pass.nodes.empty()) {
        throw CLI::RequiredError("NODE");
    }
    if (isOnePass || (options.pass.BothPasses() && options.pass.nodes.empty())) {
        return;
    }
    if (options.pass.BothPasses() || options.pass.nodes.size() > 1) {
        throw CLI::ValidationError(
            "FILE", "name one manifest, or --stage and nodes, or --vertex and --fragment");
    }
    if (options.pass.nodes.empty()) {
        throw CLI::RequiredError("FILE");
    }
    if (!options.pass.macros.empty() || !options.pass.samplers.empty()) {
        throw CLI::ValidationError("FILE", "a manifest has its own macros and samplers");
    }
    options.manifest = options.pass.nodes.front();
}

/// Checks for the options that a pass needs. They are not declared as required, because both passes
/// together and lists need other ones.
void CheckPass(const CLI::App& app, const Options& options)
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

/// Refuses empty values, which are mistakes, such as an unset variable in a script.
void RefuseEmpty(const CLI::App& app)
{
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& value : option->results()) {
            if (value.empty()) {
                throw CLI::ValidationError(option->get_name(), "has an empty value");
            }
        }
    }
}

/// What is said of arguments that the command does not take: about the first option among them, if
/// there is one.
std::string DescribeExtras(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    const std::vector<std::string> extras = app.remaining();
    const auto unknown = std::find_if(extras.begin(), extras.end(), [](const std::string& extra) {
        return extra.size() > 1 && extra[0] == '-';
    });
    if (unknown == extras.end()) {
        return "unexpected argument '" + (extras.empty() ? "" : extras.front()) + "'";
    }
    const std::string name = unknown->substr(0, unknown->find('='));
    return "unknown option " + name + Suggestion(names, name);
}

ExitStatus Refuse(const CLI::App& command, const std::string& reason)
{
    const std::string name =
        command.get_parent() == nullptr ? "morlc" : "morlc " + command.get_name();
    std::fprintf(stderr, "morlc: error: %s\nSee '%s --help'.\n", Printable(reason).c_str(),
                 name.c_str());
    return kUsage;
}

}  // namespace

bool ReadOptions(std::vector<std::string> arguments, Options& options, ExitStatus& status)
{
    options.program = ProgramPath();
    CLI::App app("Compiles shader graphs to HLSL and GLSL.", "morlc");
    app.formatter(std::make_shared<HelpFormatter>());
    const std::vector<CLI::Option*> own = DeclareMain(app, options);
    CLI::App* const build = app.add_subcommand("build", "Build the shaders of a manifest");
    DeclareBuild(*build, options.common, options.build);
    CLI::App* const check = app.add_subcommand("check", "Look for mistakes in shaders");
    DeclareCheck(*check, options.common, options.check);
    for (CLI::Option* const option : own) {
        build->excludes(option);
        check->excludes(option);
    }
    const auto parsed = [&]() -> const CLI::App* {
        return build->parsed() ? build : check->parsed() ? check : &app;
    };
    const CLI::App* command = &app;
    try {
        // The parser takes them from the end.
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
        command = parsed();
        RefuseEmpty(app);
        RefuseEmpty(*command);
        if (command == build) {
            options.command = Command::Build;
        } else if (command == check) {
            options.command = Command::Check;
            ReadCheckSubject(*check, options.check);
        } else if (options.command == Command::Pass) {
            CheckPass(app, options);
        }
        return true;
    } catch (const CLI::ExtrasError&) {
        command = parsed();
        status = Refuse(*command, DescribeExtras(*command));
    } catch (const CLI::ExcludesError& error) {
        const std::string text = error.what();
        const bool isMixed = text.compare(0, 6, "build ") == 0 || text.compare(0, 6, "check ") == 0;
        status = Refuse(*parsed(), text + (isMixed ? kCommandFirst : ""));
    } catch (const CLI::ParseError& error) {
        command = parsed();
        status = error.get_exit_code() == 0 ? kSuccess : Refuse(*command, error.what());
        if (status == kSuccess) {
            app.exit(error);
        }
    }
    return false;
}

}  // namespace morlc
