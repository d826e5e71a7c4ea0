// SPDX-License-Identifier: MIT
#include "command_line.h"

#include "nearest.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <system_error>

namespace morlc {
namespace {

/// The long names of all options, with their dashes.
std::vector<std::string> OptionNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    return names;
}

/// What is said of arguments that nothing takes.
std::string DescribeExtras(const CLI::App& app)
{
    const std::vector<std::string> extras = app.remaining();
    for (const std::string& extra : extras) {
        if (extra.size() > 1 && extra[0] == '-') {
            const std::string name = extra.substr(0, extra.find('='));
            const bool isLong = name.compare(0, 2, "--") == 0;
            return "unknown option " + name +
                   (isLong ? Suggestion(OptionNames(app), name) : std::string());
        }
    }
    return "unexpected argument '" + (extras.empty() ? "" : extras.front()) + "'";
}

/// An empty value is a slip, such as a variable of a script that is not set.
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

bool Refuse(const CLI::App& app, const std::string& reason, ExitStatus& status)
{
    std::fprintf(stderr, "morlc: error: %s\nSee '%s --help'.\n", reason.c_str(),
                 app.get_name().c_str());
    status = kUsage;
    return false;
}

}  // namespace

void DeclareCommon(CLI::App& app, CommonOptions& options)
{
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::Throw);
    app.set_version_flag("--version", std::string("morlc ") + MORL_VERSION);
    app.add_option("-C,--directory", options.directory,
                   "Enter DIR first; its folder morl/ holds the node files")
        ->type_name("DIR");
    app.add_option("--diagnostics", options.diagnostics,
                   "How problems are written: text, or json (one object a line)")
        ->type_name("FORMAT")
        ->check(OneOf({"text", "json"}));
    app.add_flag("--verbose", options.verbose, "Also report which nodes are parsed");
}

bool ParseCommandLine(CLI::App& app, int argc, char** argv, const std::function<void()>& check,
                      ExitStatus& status)
{
    try {
        app.parse(argc, argv);
        RefuseEmpty(app);
        check();
        return true;
    } catch (const CLI::ExtrasError&) {
        return Refuse(app, DescribeExtras(app), status);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) {
            return Refuse(app, error.what(), status);
        }
        app.exit(error);
        status = kSuccess;
        return false;
    }
}

CLI::Validator OneOf(const std::vector<std::string>& values)
{
    std::string list;
    for (const std::string& value : values) {
        list += (list.empty() ? "" : ",") + value;
    }
    const auto check = [values, list](const std::string& value) {
        const bool isKnown = std::find(values.begin(), values.end(), value) != values.end();
        return isKnown ? "" : value + " not in {" + list + "}" + Suggestion(values, value);
    };
    return {check, "{" + list + "}"};
}

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

}  // namespace morlc
