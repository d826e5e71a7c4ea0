// SPDX-License-Identifier: MIT
#include "options.h"

#include "option_declarations.h"
#include "platform.h"
#include "report/diagnostic.h"
#include "text.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>

namespace morlc {
namespace {

constexpr const char* kExitStatus =
    "Paths are relative to the directory given with -C.\n"
    "Exit status: 0 without errors, 1 after any error, 2 for wrong usage.";

/// Help without the "Needs" and "Excludes" lists; error messages say this when it matters.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter()
    {
        label("Positionals", "Arguments");
        label("SUBCOMMAND", "COMMAND");
    }

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

/// What the arguments ask for, before they are read.
struct CommandWord {
    const CommandInfo* command = nullptr;
    std::string word;      ///< the first word, if it is no option; empty: none
    bool isNamed = false;  ///< whether the word is the command; otherwise it is the first command
    bool wantsJson = false;
};

/// Whether problems are to be written as JSON, wherever the arguments say so.
bool WantsJson(const std::vector<std::string>& arguments)
{
    bool isValue = false;
    for (const std::string& argument : arguments) {
        if (argument == "--diagnostics=json" || (isValue && argument == "json")) {
            return true;
        }
        isValue = argument == "--diagnostics";
    }
    return false;
}

/// Finds the command, the first word behind the common options, and removes it.
CommandWord TakeCommand(std::vector<std::string>& arguments)
{
    CommandWord taken;
    taken.wantsJson = WantsJson(arguments);
    CLI::App probe;
    CommonOptions common;
    DeclareCommon(probe, common);
    probe.prefix_command();
    try {
        // The parser takes them from the end.
        probe.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError&) {
        // It is told when the command reads its options.
    }
    const std::vector<std::string> rest = probe.remaining();
    taken.word = rest.empty() || rest.front().substr(0, 1) == "-" ? "" : rest.front();
    taken.command = &Commands().front();
    for (const CommandInfo& command : Commands()) {
        if (taken.word == command.name) {
            taken.command = &command;
            taken.isNamed = true;
        }
    }
    if (taken.isNamed) {
        arguments.erase(arguments.end() - static_cast<std::ptrdiff_t>(rest.size()));
    }
    return taken;
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

/// What went wrong, in this tool's words.
std::string Describe(const CLI::App& app, const CLI::ParseError& error)
{
    std::string text = error.what();
    const auto replaced = [&text](std::string_view part, const char* own) {
        const std::size_t found = text.find(part);
        return found == std::string::npos
                   ? text
                   : text.substr(0, found) + own + text.substr(found + part.size());
    };
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
        return DescribeExtras(app);
    }
    if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr) {
        return replaced(" excludes ", " cannot be given together with ");
    }
    if (dynamic_cast<const CLI::RequiresError*>(&error) != nullptr) {
        return replaced(" requires ", " needs ");
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        const std::string name = text.substr(0, text.find_first_of(": "));
        const bool isTwice = text.find("At Most") != std::string::npos;
        const bool isFlag = text.find("flag override") != std::string::npos;
        return name + (isTwice  ? " can be given only once"
                       : isFlag ? " takes no value"
                                : " needs a value");
    }
    return text;
}

ExitStatus Refuse(const CommandWord& taken, const std::string& reason)
{
    const std::string help = std::string("'morlc ") +
                             (taken.isNamed ? taken.command->name + std::string(" ") : "") +
                             "--help'";
    if (taken.wantsJson) {
        const std::string line = FormatJson(ErrorAt({}, reason + " (see " + help + ")"));
        std::fputs(line.c_str(), stderr);
    } else {
        std::fprintf(stderr, "morlc: error: %s\nSee %s.\n", Printable(reason).c_str(),
                     help.c_str());
    }
    return kUsage;
}

/// The help for the tool as a whole.
std::string Overview()
{
    CLI::App app("Compiles shader graphs to HLSL and GLSL.", "morlc");
    app.formatter(std::make_shared<HelpFormatter>());
    for (const CommandInfo& command : Commands()) {
        app.add_subcommand(command.name, command.summary)->group("Commands");
    }
    CommonOptions common;
    DeclareCommon(app, common);
    app.footer(
        std::string("'morlc NODE...' is short for 'morlc compile NODE...', and 'morlc COMMAND "
                    "--help' lists the\noptions of a command.\n\n") +
        kExitStatus);
    return app.help();
}

}  // namespace

bool ReadOptions(std::vector<std::string> arguments, Options& options, ExitStatus& status)
{
    options.program = ProgramPath();
    if (!arguments.empty() && arguments.size() <= 2 && arguments.front() == "help") {
        arguments.erase(arguments.begin());
        arguments.emplace_back("--help");
    }
    const CommandWord taken = TakeCommand(arguments);
    options.command = taken.command->command;
    CLI::App app(taken.command->summary, std::string("morlc ") + taken.command->name);
    app.formatter(std::make_shared<HelpFormatter>());
    app.footer(std::string(taken.command->footer) + "\n\n" + kExitStatus);
    DeclareCommon(app, options.common);
    taken.command->declare(app, options);
    try {
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
        RefuseEmpty(app);
        if (taken.command->finish != nullptr) {
            taken.command->finish(app, options);
        }
        return true;
    } catch (const CLI::CallForHelp&) {
        std::fputs(taken.isNamed || !taken.word.empty() ? app.help().c_str() : Overview().c_str(),
                   stdout);
        status = kSuccess;
    } catch (const CLI::CallForVersion& version) {
        std::printf("%s\n", version.what());
        status = kSuccess;
    } catch (const CLI::ParseError& error) {
        std::vector<std::string> names;
        for (const CommandInfo& command : Commands()) {
            names.emplace_back(command.name);
        }
        const bool isCommand = !taken.isNamed && !taken.word.empty() && options.pass.target.empty();
        const std::string near = isCommand ? Suggestion(names, taken.word) : "";
        status = Refuse(taken, near.empty() ? Describe(app, error)
                                            : "unknown command '" + taken.word + "'" + near);
    }
    return false;
}

}  // namespace morlc
