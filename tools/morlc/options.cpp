// SPDX-License-Identifier: MIT
#include "options.h"

#include "option_declarations.h"
#include "platform.h"
#include "text.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>

namespace morlc {
namespace {

constexpr const char* kCommandFirst =
    " (give the options of a command after its name, and a node of this name after '--')";

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
