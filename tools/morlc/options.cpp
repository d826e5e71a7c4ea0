// SPDX-License-Identifier: MIT
#include "options.h"

#include <morl/morl.h>
#include <CLI/CLI.hpp>
#include <charconv>

namespace morlc {
namespace {

/// The options as CLI11 reads them, before they are checked against each other.
struct RawOptions {
    std::string stage;
    std::vector<std::string> macros;
    std::vector<std::string> samplers;
};

int ReadInteger(const std::string& option, const std::string& text)
{
    int value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec == std::errc::result_out_of_range) {
        throw CLI::ValidationError(option, text + " is outside of the 32-bit range");
    }
    if (result.ec != std::errc() || result.ptr != end) {
        throw CLI::ValidationError(option, "'" + text + "' is not an integer");
    }
    return value;
}

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

void Declare(CLI::App& app, Options& options, RawOptions& raw)
{
    std::vector<std::string> targets = ns_ruke::MorlTargets();
    targets.emplace_back("all");

    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::Throw);
    app.add_option("-C,--directory", options.directory,
                   "Enter DIR first; its folder morl/ holds the node files")
        ->type_name("DIR");
    app.add_option("-t,--target", options.target, "The target language, or all of them")
        ->required()
        ->check(CLI::IsMember(targets));
    app.add_option("-s,--stage", raw.stage, "The stage of the pass")
        ->check(CLI::IsMember({"vertex", "fragment"}));
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
    app.add_option("-o,--output", options.output,
                   "The file to write (\"-\": standard output); for both passes the directory")
        ->type_name("FILE");
    app.add_flag("--verbose", options.verbose, "Also report the start and end of every parse");
    app.footer(
        "Writes one pass, from the nodes named, to standard output or FILE; or, with --vertex and\n"
        "--fragment, both passes of the target (or of all targets) as DIR/TARGET.vert and\n"
        "DIR/TARGET.frag. Paths are relative to the directory given with -C.\n"
        "Exit status: 0 without errors, 1 after any error, 2 for wrong usage.");
}

void CheckPasses(Options& options, const RawOptions& raw)
{
    const bool both = !options.vertexNodes.empty() || !options.fragmentNodes.empty();
    if (!both) {
        if (options.target == "all") {
            throw CLI::ValidationError("--target", "'all' needs --vertex, --fragment and -o DIR");
        }
        if (raw.stage.empty()) {
            throw CLI::ValidationError("--stage", "say -s vertex or -s fragment");
        }
        if (options.nodes.empty()) {
            throw CLI::ValidationError("nodes", "name at least one node");
        }
        options.stage = raw.stage == "vertex" ? 0 : 1;
        return;
    }
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

}  // namespace

bool ReadOptions(int argc, char** argv, Options& options, ExitStatus& status)
{
    CLI::App app("Compiles shader graphs to HLSL and GLSL.", "morlc");
    RawOptions raw;
    Declare(app, options, raw);
    app.set_version_flag("--version", std::string("morlc ") + MORL_VERSION);
    try {
        app.parse(argc, argv);
        options.macros = ReadAssignments("--define", raw.macros);
        options.samplers = ReadAssignments("--sampler", raw.samplers);
        CheckPasses(options, raw);
        return true;
    } catch (const CLI::ParseError& error) {
        status = app.exit(error) == 0 ? kSuccess : kUsage;
        return false;
    }
}

}  // namespace morlc
