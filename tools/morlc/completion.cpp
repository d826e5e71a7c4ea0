// SPDX-License-Identifier: MIT
#include "completion.h"

#include "option_declarations.h"

#include <morl/morl.h>
#include <algorithm>
#include <iterator>
#include <sstream>
#include <string_view>
#include <utility>

namespace morlc {
namespace {

/// What a value is, so that a shell can offer some.
enum class ValueKind { None, Other, Directory, File, Nodes, FileOrNodes, Words };

/// An option, or what stands without one.
struct DescribedOption {
    std::vector<std::string> names;  ///< with their hyphens; none: it stands without one
    std::string type;                ///< what its value is called
    std::string help;
    ValueKind kind = ValueKind::None;
    bool isList = false;             ///< whether several may stand without an option
    std::vector<std::string> words;  ///< its possible values
};

struct DescribedCommand {
    const CommandInfo* info = nullptr;
    std::vector<DescribedOption> options;
};

std::vector<std::string> CheckWords()
{
    std::vector<std::string> words = {"verdict", "no-verdict"};
    for (const ns_ruke::CheckInfo& check : ns_ruke::MorlChecks()) {
        for (const std::string& name : {std::string(check.name), std::string(check.group)}) {
            if (std::find(words.begin(), words.end(), name) == words.end()) {
                words.push_back(name);
                words.push_back("no-" + name);
            }
        }
    }
    return words;
}

/// The values between braces behind the name of a type.
std::vector<std::string> WordsOf(const std::string& type)
{
    std::vector<std::string> words;
    const std::size_t brace = type.find('{');
    if (brace != std::string::npos) {
        std::istringstream list(type.substr(brace + 1, type.rfind('}') - brace - 1));
        for (std::string word; std::getline(list, word, ',');) {
            words.push_back(word);
        }
    }
    return words;
}

ValueKind KindOf(const DescribedOption& option)
{
    const std::string& type = option.type;
    if (!option.words.empty()) {
        return ValueKind::Words;
    }
    if (type.compare(0, 4, "NODE") == 0) {
        return ValueKind::Nodes;
    }
    constexpr const char* kFiles[] = {"FILE", "BASE", "OURS", "THEIRS"};
    const bool isFile = std::find(std::begin(kFiles), std::end(kFiles), type) != std::end(kFiles);
    return type == "DIR" ? ValueKind::Directory : isFile ? ValueKind::File : ValueKind::Other;
}

DescribedOption Describe(const CLI::Option& option)
{
    DescribedOption described;
    for (const std::string& name : option.get_snames()) {
        described.names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        described.names.push_back("--" + name);
    }
    described.help = option.get_description();
    const bool isPositional = described.names.empty();
    described.isList = isPositional && option.get_items_expected_max() > 1;
    const bool hasValue = isPositional || option.get_items_expected_max() > 0;
    if (hasValue) {
        const std::string type = isPositional ? option.get_name() : option.get_type_name();
        described.words = WordsOf(type);
        described.type = type.substr(0, type.find(":{"));
        if (described.names == std::vector<std::string>{"-W"}) {
            described.words = CheckWords();
        }
        described.kind = KindOf(described);
    }
    return described;
}

std::vector<DescribedCommand> DescribeAll()
{
    std::vector<DescribedCommand> commands;
    for (const CommandInfo& info : Commands()) {
        CLI::App app;
        Options options;
        DeclareCommon(app, options.common);
        info.declare(app, options);
        DescribedCommand& command = commands.emplace_back();
        command.info = &info;
        for (const CLI::Option* option : app.get_options()) {
            DescribedOption& described = command.options.emplace_back(Describe(*option));
            if (info.command == Command::Check && described.names.empty()) {
                described.kind = ValueKind::FileOrNodes;
            }
        }
    }
    return commands;
}

std::string Joined(const std::vector<std::string>& words, const char* separator)
{
    return CLI::detail::join(words, separator);
}

std::string NamesOf(const std::vector<DescribedCommand>& commands, const char* separator)
{
    std::vector<std::string> names;
    names.reserve(commands.size());
    for (const DescribedCommand& command : commands) {
        names.emplace_back(command.info->name);
    }
    return Joined(names, separator);
}

constexpr const char* kBashStart = R"sh(# SPDX-License-Identifier: MIT
# Completion of morlc for bash. Written by "morlc completion bash".

# The names of the nodes in the directory that the command line selects.
_morlc_nodes() {
    local directory=. i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
        -C | --directory) directory=${COMP_WORDS[i + 1]} ;;
        esac
    done
    "${COMP_WORDS[0]}" -C "$directory" list 2>/dev/null | sed -n 's/^\([^ ][^ ]*\)  .*/\1/p'
}

# Offers values of a kind. Only the last name of a list is completed.
_morlc_values() {
    local before="" name
    case $1 in
    directory) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
    file) mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
    nodes)
        [[ $word == *,* ]] && before=${word%,*},
        # Names are no shell code: "compgen -W" would run what is in them, and so would the command line.
        while IFS= read -r name; do
            [[ $name == "${word##*,}"* ]] && COMPREPLY+=("$before$(printf %q "$name")")
        done < <(_morlc_nodes)
        ;;
    words) mapfile -t COMPREPLY < <(compgen -W "$2" -- "$word") ;;
    file-or-nodes)
        case " ${COMP_WORDS[*]} " in
        *" -s "* | *" --stage "*) _morlc_values nodes ;;
        *) _morlc_values file ;;
        esac
        ;;
    esac
}

_morlc() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command="" i
    COMPREPLY=()
    # The shell splits "--target=glsl" into three words.
    if [[ $word == = ]]; then
        word=""
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
        @COMMANDS@)
            command=${COMP_WORDS[i]}
            break
            ;;
        -C | --directory | --diagnostics | --color) ((++i)) ;;
        -*) ;;
        *) break ;;
        esac
    done
    case "${command:-compile} $previous" in
)sh";

constexpr const char* kBashMiddle = R"sh(    esac
    if [[ $word == -* ]]; then
        case ${command:-compile} in
)sh";

constexpr const char* kBashEnd = R"sh(        esac
        return
    fi
    case ${command:-compile} in
@VALUES@    esac
    if [[ -z $command && $word != "" ]]; then
        local commands
        mapfile -t commands < <(compgen -W "@WORDS@" -- "$word")
        COMPREPLY+=("${commands[@]}")
    fi
}

complete -F _morlc morlc
)sh";

std::string Replaced(std::string text, const std::string& word, const std::string& by)
{
    return text.replace(text.find(word), word.size(), by);
}

/// How the functions of the scripts call a kind.
std::string BashValues(const DescribedOption& option)
{
    switch (option.kind) {
    case ValueKind::Directory:
        return "_morlc_values directory";
    case ValueKind::File:
        return "_morlc_values file";
    case ValueKind::Nodes:
        return "_morlc_values nodes";
    case ValueKind::FileOrNodes:
        return "_morlc_values file-or-nodes";
    case ValueKind::Words:
        return "_morlc_values words \"" + Joined(option.words, " ") + "\"";
    default:
        return ":";
    }
}

std::string FormatBash(const std::vector<DescribedCommand>& commands)
{
    std::string text = Replaced(kBashStart, "@COMMANDS@", NamesOf(commands, " | "));
    std::string options;
    std::string values;
    for (const DescribedCommand& command : commands) {
        const std::string name = command.info->name;
        std::vector<std::string> words;
        for (const DescribedOption& option : command.options) {
            if (option.names.empty()) {
                // What follows the first argument is of its kind.
                const std::string start = "    " + name + ") ";
                values += values.find(start) == std::string::npos
                              ? start + BashValues(option) + " ;;\n"
                              : "";
                continue;
            }
            words.push_back(option.names.back());
            if (option.kind != ValueKind::None) {
                std::vector<std::string> patterns;
                for (const std::string& word : option.names) {
                    std::string pattern = "\"";
                    pattern.append(name).append(" ").append(word).append("\"");
                    patterns.push_back(std::move(pattern));
                }
                text +=
                    "    " + Joined(patterns, " | ") + ") " + BashValues(option) + "; return ;;\n";
            }
        }
        options += "        " + name + ") _morlc_values words \"" + Joined(words, " ") + "\" ;;\n";
    }
    return text + kBashMiddle + options +
           Replaced(Replaced(kBashEnd, "@VALUES@", values), "@WORDS@", NamesOf(commands, " "));
}

/// A text between single quotes, for zsh and fish.
std::string Quoted(const std::string& text, const char* quote)
{
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? quote : std::string(1, c);
    }
    return quoted + "'";
}

/// What a shell makes of a kind: its words for directories, files, nodes and words.
std::string ShellValues(const DescribedOption& option, const char* directory, const char* file,
                        const char* nodes, const std::string& words)
{
    switch (option.kind) {
    case ValueKind::Directory:
        return directory;
    case ValueKind::File:
    case ValueKind::FileOrNodes:
        return file;
    case ValueKind::Nodes:
        return nodes;
    case ValueKind::Words:
        return words;
    default:
        return "";
    }
}

/// @param position among the arguments without an option, from 1
std::string ZshArgument(const DescribedOption& option, int position)
{
    std::string help = option.help;
    for (std::size_t i = help.find_first_of("[]:"); i != std::string::npos;
         i = help.find_first_of("[]:", i + 2)) {
        help.insert(i, "\\");
    }
    const std::string action = ShellValues(option, "_files -/", "_files", "_morlc_nodes",
                                           "(" + Joined(option.words, " ") + ")");
    const std::string value =
        option.kind == ValueKind::None ? "" : ":" + option.type + ":" + action;
    if (option.names.empty()) {
        const std::string place = option.isList ? "*" : std::to_string(position);
        return "        " + Quoted(place + ":" + option.type + ":" + action, "'\\''") + " \\\n";
    }
    std::string text;
    for (const std::string& name : option.names) {
        const bool isLong = name.size() > 2 && !value.empty();
        std::string word = "*";
        word.append(name).append(isLong ? "=[" : "[").append(help).append("]");
        text += "        " + Quoted(word.append(value), "'\\''") + " \\\n";
    }
    return text;
}

std::string FormatZsh(const std::vector<DescribedCommand>& commands)
{
    std::string text = R"sh(#compdef morlc
# SPDX-License-Identifier: MIT
# Completion of morlc for zsh. Written by "morlc completion zsh".

_morlc_nodes() {
    local directory=${opt_args[-C]:-${opt_args[--directory]:-.}}
    local -a nodes=(${(f)"$(morlc -C $directory list 2>/dev/null | sed -n 's/^\([^ ][^ ]*\)  .*/\1/p')"})
    _sequence compadd -a nodes
}

local command=compile i
for ((i = 2; i < CURRENT; ++i)); do
    case ${words[i]} in
    )sh" + NamesOf(commands, " | ") +
                       R"sh()
        command=${words[i]}
        words[i]=()
        ((--CURRENT))
        break
        ;;
    -C | --directory | --diagnostics | --color) ((++i)) ;;
    -*) ;;
    *) break ;;
    esac
done
if ((CURRENT == 2)) && [[ ${words[2]} != -* && $command == compile ]]; then
    local -a commands=(
)sh";
    for (const DescribedCommand& command : commands) {
        text += "        " +
                Quoted(command.info->name + std::string(":") + command.info->summary, "'\\''") +
                "\n";
    }
    text += "    )\n    _describe command commands\nfi\ncase $command in\n";
    for (const DescribedCommand& command : commands) {
        text += command.info->name + std::string(")\n    _arguments -s \\\n");
        int arguments = 0;
        for (const DescribedOption& option : command.options) {
            arguments += option.names.empty() ? 1 : 0;
            text += ZshArgument(option, arguments);
        }
        text += "        && return\n    ;;\n";
    }
    return text + "esac\n";
}

std::string FormatFish(const std::vector<DescribedCommand>& commands)
{
    const std::string names = NamesOf(commands, " ");
    std::string text = R"sh(# SPDX-License-Identifier: MIT
# Completion of morlc for fish. Written by "morlc completion fish".

function __morlc_nodes
    set -l directory .
    set -l words (commandline -opc)
    for i in (seq (count $words))
        if contains -- $words[$i] -C --directory
            set directory $words[(math $i + 1)]
        end
    end
    morlc -C $directory list 2>/dev/null | string match -rg '^(\S+)  '
end

function __morlc_is
    for word in (commandline -opc)
        if contains -- $word )sh" +
                       names + R"sh(
            test $word = $argv[1]
            return
        end
    end
    test $argv[1] = compile
end

complete -c morlc -f
)sh";
    for (const DescribedCommand& command : commands) {
        text += "complete -c morlc -n '__fish_is_first_token' -a " +
                std::string(command.info->name) + " -d " + Quoted(command.info->summary, "\\'") +
                "\n";
    }
    for (const DescribedCommand& command : commands) {
        for (const DescribedOption& option : command.options) {
            text += "complete -c morlc -n '__morlc_is " + std::string(command.info->name) + "'";
            for (const std::string& name : option.names) {
                text += name.size() == 2 ? " -s " + name.substr(1) : " -l " + name.substr(2);
            }
            const bool takesValue = option.kind != ValueKind::None && !option.names.empty();
            const std::string words = "-a '" + Joined(option.words, " ") + "'";
            const std::string values = ShellValues(option, "-a '(__fish_complete_directories)'",
                                                   "-F", "-a '(__morlc_nodes)'", words);
            text += (takesValue ? " -r" : "") + (values.empty() ? "" : " " + values) + " -d " +
                    Quoted(option.help, "\\'") + "\n";
        }
    }
    return text;
}

/// A text for the manual page's language, which takes a point or a quote at the beginning of a line
/// for a request.
std::string Roff(const std::string& text)
{
    std::string escaped = text.find_first_of(".'") == 0 ? "\\&" : "";
    for (const char c : text) {
        escaped += c == '-' ? "\\-" : c == '\\' ? "\\e" : std::string(1, c);
    }
    return escaped;
}

/// The text of a check, without a name.
std::string Filled(std::string_view check)
{
    std::string text(check);
    for (std::size_t i = text.find("{}"); i != std::string::npos; i = text.find("{}", i)) {
        text.replace(i, 2, "...");
    }
    return text;
}

std::string FormatManual(const std::vector<DescribedCommand>& commands)
{
    // What every command takes stands once.
    const std::vector<std::string> kCommon = {"-h",    "-C",        "--diagnostics", "--color",
                                              "--all", "--verbose", "--version"};
    const auto isCommon = [&](const DescribedOption& option) {
        return !option.names.empty() &&
               std::find(kCommon.begin(), kCommon.end(), option.names.front()) != kCommon.end();
    };
    std::string text;
    const auto add = [&text](const DescribedOption& option) {
        std::vector<std::string> names;
        for (const std::string& name : option.names) {
            names.push_back("\\fB" + Roff(name) + "\\fR");
        }
        const std::string value = option.type.empty() ? "" : "\\fI" + Roff(option.type) + "\\fR";
        text += ".TP\n" + Joined(names, ", ") + (names.empty() || value.empty() ? "" : " ") +
                value + "\n" + Roff(option.help) + ".\n";
        if (option.names != std::vector<std::string>{"-W"} && !option.words.empty()) {
            text += "One of " + Roff(Joined(option.words, ", ")) + ".\n";
        }
    };
    text += ".SH COMMON OPTIONS\n";
    for (const DescribedOption& option : commands.front().options) {
        if (isCommon(option)) {
            add(option);
        }
    }
    for (const DescribedCommand& command : commands) {
        text +=
            ".SH OPTIONS OF " + Roff(command.info->name) + "\n" + Roff(command.info->footer) + "\n";
        for (const DescribedOption& option : command.options) {
            if (!isCommon(option)) {
                add(option);
            }
        }
    }
    text += ".SH CHECKS\n";
    for (const ns_ruke::CheckInfo& check : ns_ruke::MorlChecks()) {
        text += ".TP\n\\fB" + Roff(std::string(check.name)) + "\\fR (" +
                Roff(std::string(check.group)) + ")\n" + Roff(Filled(check.text)) + ".\n";
    }
    return text;
}

/// A form and what writes it.
struct Form {
    const char* name;
    std::string (*format)(const std::vector<DescribedCommand>&);
};

constexpr Form kForms[] = {
    {"bash", FormatBash},
    {"zsh", FormatZsh},
    {"fish", FormatFish},
    {"man", FormatManual},
};

}  // namespace

std::vector<std::string> CompletionForms()
{
    std::vector<std::string> names;
    for (const Form& form : kForms) {
        names.emplace_back(form.name);
    }
    return names;
}

std::string FormatCompletion(const std::string& form)
{
    for (const Form& known : kForms) {
        if (form == known.name) {
            return known.format(DescribeAll());
        }
    }
    return {};
}

}  // namespace morlc
