// SPDX-License-Identifier: MIT
// Compares what the documents say about the code with the code. (run_blocks.py runs the commands
// and code blocks in them.)
#include "docs/language_tables.h"
#include "support/document.h"
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/process.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <regex>
#include <set>
#include <sstream>

namespace {

using morl_test::ReadText;
using morl_test::RunProcess;
using morl_test::RunShell;

const std::filesystem::path kSource = MORL_SOURCE_DIR;

TEST(Docs, TablesAreThoseOfTheCompiler)
{
    const morl_test::LogCapture log;
    const std::string document = ReadText(morl_test::Document("language"));
    EXPECT_EQ(morl_test::WithLanguageTables(document), document)
        << "\"./dev golden\" writes the tables anew";
    const std::string tool = morl_test::ReadText(morl_test::Document("morlc"));
    EXPECT_EQ(morl_test::WithCheckTable(tool), tool) << "\"./dev golden\" writes the table";
    const std::string grammar = ReadText(morl_test::kGrammar);
    EXPECT_EQ(morl_test::WithWordLists(grammar), grammar) << "\"./dev golden\" writes the words";
    EXPECT_EQ(morl_test::TargetList(), ReadText(morl_test::kTargetList));
}

/// The texts that the library logs, except the marks of a parse, mere parts of texts, and those
/// that only a host's own translator or linker can cause.
std::set<std::string> Messages()
{
    const std::set<std::string> left = {"kCompilerStart",  "kCompilerEnd", "kLocationLine",
                                        "kLocationColumn", "kLocationEnd", "kMissEnd",
                                        "kParameterCount", "kDeclare",     "kConflicts"};
    const std::string start = "constexpr char ";
    std::set<std::string> messages;
    std::istringstream header(ReadText(kSource / "morl/core/messages.h"));
    for (std::string line; std::getline(header, line);) {
        const std::size_t quote = line.find('"');
        if (line.compare(0, start.size(), start) != 0 || quote == std::string::npos) {
            continue;
        }
        const std::string name = line.substr(start.size(), line.find('[') - start.size());
        if (left.count(name) == 0) {
            std::string text = line.substr(quote + 1, line.rfind('"') - quote - 1);
            text.erase(std::remove(text.begin(), text.end(), '\\'), text.end());
            messages.insert(text);
        }
    }
    return messages;
}

TEST(Docs, ExplainEveryMessage)
{
    const std::string document = ReadText(morl_test::Document("language"));
    const std::string table = document.substr(document.find("| message |"));
    const std::set<std::string> messages = Messages();
    EXPECT_GE(messages.size(), 30U);
    for (std::string message : messages) {
        message.erase(message.find_last_not_of(' ') + 1);
        EXPECT_NE(table.find("`" + message), std::string::npos) << message;
    }
}

/// The hints for authors: the long literals of their source, in which literals side by side are
/// one.
std::set<std::string> Hints()
{
    const std::string file = ReadText(kSource / "morl/check/internal/hint_words.cpp") +
                             ReadText(kSource / "morl/check/hints.cpp");
    const std::string code =
        std::regex_replace(file, std::regex("(#include|static_assert)[^\n]*\n"), "");
    const std::string source = std::regex_replace(code, std::regex("\"\\s+\""), "");
    const std::regex literal("\"[^\"\n]*\"");
    std::set<std::string> hints;
    for (std::sregex_iterator i(source.begin(), source.end(), literal), end; i != end; ++i) {
        const std::string text = i->str();
        if (text.size() > 25) {
            hints.insert(text.substr(1, text.size() - 2));
        }
    }
    return hints;
}

/// All that the tests expect: the outcomes of the cases, and the texts in the tests' own sources.
std::string Expectations()
{
    std::string all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kSource / "tests")) {
        const std::string extension = entry.path().extension().string();
        if ((extension == ".txt" || extension == ".cpp") &&
            entry.path().filename() != "docs_test.cpp") {
            all += ReadText(entry.path());
        }
    }
    return all;
}

TEST(Tests, ExpectEveryMessageCheckAndHint)
{
    const std::string expected = Expectations();
    std::set<std::string> wanted = Messages();
    wanted.merge(Hints());
    EXPECT_GE(wanted.size(), 110U);
    wanted.erase("source too long:");  // it would take 2 GiB
    // A check is expected by a case, or by a probe, whose outcome is a row of docs/targets.md.
    const std::string probes = ReadText(kSource / "tests/pictures/probes.json");
    for (const ns_ruke::CheckInfo& check : ns_ruke::MorlChecks()) {
        const std::string name(check.name);
        if (probes.find("\"check\": \"" + name + "\"") == std::string::npos) {
            wanted.insert("[-W " + name + "]");
        }
    }
    for (const std::string& text : wanted) {
        EXPECT_NE(expected.find(text), std::string::npos) << text;
    }
}

/// The long options that a help text explains: one per line, after two spaces.
void AddOptions(const std::vector<std::string>& command, std::set<std::string>& options)
{
    std::istringstream help(RunProcess(command).out);
    for (std::string line; std::getline(help, line);) {
        const std::size_t option = line.find("--");
        if (line.substr(0, 3) == "  -" && option != std::string::npos) {
            options.insert(line.substr(option, line.find_first_of(" ,", option) - option));
        }
    }
}

/// Whether a text mentions an option, other than as part of a longer one.
bool HasOption(const std::string& text, const std::string& option)
{
    for (std::size_t found = text.find(option); found != std::string::npos;
         found = text.find(option, found + 1)) {
        const char next = text[found + option.size()];
        if (next != '-' && (next < 'a' || next > 'z')) {
            return true;
        }
    }
    return false;
}

TEST(Docs, NameEveryOption)
{
    std::set<std::string> options;
    const std::string overview = RunProcess({MORLC, "--help"}).out;
    std::istringstream commands(overview.substr(overview.find("\nCommands:\n") + 11));
    for (std::string line; std::getline(commands, line) && !line.empty();) {
        AddOptions({MORLC, line.substr(2, line.find(' ', 2) - 2), "--help"}, options);
    }
    EXPECT_GE(options.size(), 25U);
    const std::filesystem::path made = std::filesystem::path(MORL_BINARY_DIR) / "man";
    const std::string manual =
        std::regex_replace(ReadText(made / "morlc.1"), std::regex("\\\\(f.)?"), "");
    const std::pair<const char*, std::string> documents[] = {
        {"morlc.1", manual},
        {"docs/morlc.md", ReadText(kSource / "docs/morlc.md")},
        {"morlc.bash", ReadText(made / "morlc.bash")},
        {"morlc.zsh", ReadText(made / "morlc.zsh")},
    };
    for (const auto& [name, text] : documents) {
        for (const std::string& option : options) {
            EXPECT_TRUE(HasOption(text, option)) << name << " lacks " << option;
        }
    }
}

TEST(Docs, ManualPageIsWellFormed)
{
    const morl_test::ProcessResult result =
        RunShell("groff -man -ww -z '" MORL_BINARY_DIR "/man/morlc.1'");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
}

/// What bash offers for the last of some words.
std::string Complete(const std::vector<std::string>& words)
{
    const std::string directory = std::filesystem::path(MORLC).parent_path().string();
    std::string array;
    for (const std::string& word : words) {
        array += " '" + word + "'";
    }
    const std::string script = "PATH='" + directory + "':$PATH; . '" +
                               MORL_BINARY_DIR "/man/morlc.bash'; COMP_WORDS=(" + array +
                               "); COMP_CWORD=" + std::to_string(words.size() - 1) +
                               "; _morlc; echo \"${COMPREPLY[*]}\"";
    const morl_test::ProcessResult result = RunProcess({"bash", "-c", script});
    return result.out + result.err;
}

TEST(Completion, OffersWhatFits)
{
    const std::string examples = (kSource / "examples").string();
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"morlc", "-t", "hl"}, "hlsl hlsl10"},
        {{"morlc", "-s", ""}, "vertex fragment"},
        {{"morlc", "--target", "=", "hl"}, "hlsl hlsl10"},
        {{"morlc", "--stage", "="}, "vertex fragment"},
        {{"morlc", "merge", examples + "/morl", examples + "/sh"}, examples + "/shaders.json"},
        {{"morlc", "--sem"}, "--semantics-in --semantics-out"},
        {{"morlc", "bui"}, "build"},
        {{"morlc", "che"}, "check"},
        {{"morlc", "check", "-s", "vertex", "-C", examples, "lig"}, "lighting"},
        {{"morlc", "build", "--sh"}, "--shader"},
        {{"morlc", "-C", examples, "lig"}, "lighting"},
        {{"morlc", "-C", examples, "--vertex", "transform,texc"}, "transform,texcoord"},
        {{"morlc", "build", "-C", examples, examples + "/sh"}, examples + "/shaders.json"},
        {{"morlc", "graph", "--out"}, "--output"},
        {{"morlc", "-C", examples, "unpack", "unlit,lig"}, "unlit,lighting"},
        {{"morlc", "check", "-W", "no-verd"}, "no-verdict"},
    };
    for (const auto& [words, expected] : rows) {
        EXPECT_EQ(Complete(words), expected + "\n") << words.back();
    }
}

TEST(Completion, QuotesNamesForTheShell)
{
    const morl_test::TemporaryDirectory directory;
    morl_test::WriteNodeFiles(directory.path, R"([{"name": "x$(touch${IFS}y);z", "content": ""}])");
    EXPECT_EQ(Complete({"morlc", "-C", directory.path.string(), "unpack", "x"}),
              "x\\$\\(touch\\$\\{IFS\\}y\\)\\;z\n");
}

}  // namespace
