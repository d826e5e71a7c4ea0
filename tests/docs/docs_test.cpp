// SPDX-License-Identifier: MIT
// What documents say about the code, compared with the code. (The commands and code blocks in them
// are run by run_blocks.py.)
#include "docs/language_tables.h"
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/process.h"

#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace {

using morl_test::ReadText;
using morl_test::RunProcess;
using morl_test::RunShell;

const std::filesystem::path kSource = MORL_SOURCE_DIR;

TEST(Docs, LanguageTablesAreThoseOfTheCompiler)
{
    const morl_test::LogCapture log;
    const std::string document = ReadText(morl_test::LanguageDocument());
    EXPECT_EQ(morl_test::WithLanguageTables(document), document)
        << "\"./dev golden\" writes the tables anew";
}

TEST(Docs, ExplainEveryMessage)
{
    const std::string document = ReadText(morl_test::LanguageDocument());
    const std::string table = document.substr(document.find("| message |"));
    std::set<std::string> messages;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kSource)) {
        const std::string folder = entry.path().parent_path().filename().string();
        if (folder != "parser" && folder != "linker" && folder != "translator" &&
            folder != "compiler") {
            continue;
        }
        if (entry.path().parent_path().parent_path() != kSource) {
            continue;
        }
        const std::string text = ReadText(entry.path());
        const bool isList = entry.path().filename() == "messages.h";
        const std::regex literal(isList ? "= \"([^\"]+)\""
                                        : "(?:LogGraphicsError\\(|message =)\\s*\"([^\"]+)\"");
        for (std::sregex_iterator match(text.begin(), text.end(), literal), end; match != end;
             ++match) {
            messages.insert((*match)[1].str());
        }
    }
    EXPECT_GE(messages.size(), 28U);
    for (std::string message : messages) {
        if (message.find("Compiler Start") != std::string::npos ||
            message.find("Compiler End") != std::string::npos) {
            continue;
        }
        message.erase(message.find_last_not_of(' ') + 1);
        EXPECT_NE(table.find("`" + message), std::string::npos) << message;
    }
}

/// The long options that a help text explains.
std::set<std::string> OptionsOf(const std::vector<std::string>& command)
{
    const std::string help = RunProcess(command).out;
    std::set<std::string> options;
    const std::regex option("\n  (?:-\\w,)?(--[a-z-]+)");
    for (std::sregex_iterator match(help.begin(), help.end(), option), end; match != end; ++match) {
        options.insert((*match)[1].str());
    }
    return options;
}

TEST(Docs, NameEveryOption)
{
    std::set<std::string> options = OptionsOf({MORLC, "--help"});
    options.merge(OptionsOf({MORLC, "build", "--help"}));
    EXPECT_GE(options.size(), 20U);
    std::string manual = ReadText(kSource / "man/morlc.1.in");
    manual.erase(std::remove(manual.begin(), manual.end(), '\\'), manual.end());
    const std::pair<const char*, std::string> documents[] = {
        {"man/morlc.1.in", manual},
        {"docs/morlc.md", ReadText(kSource / "docs/morlc.md")},
        {"morlc.bash", ReadText(kSource / "tools/completion/morlc.bash")},
    };
    for (const auto& [name, text] : documents) {
        for (const std::string& option : options) {
            EXPECT_TRUE(std::regex_search(text, std::regex(option + "(?![a-z-])")))
                << name << " lacks " << option;
        }
    }
}

TEST(Docs, ManualPageIsWellFormed)
{
    const morl_test::ProcessResult result =
        RunShell("groff -man -ww -z " + (kSource / "man/morlc.1.in").string());
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
}

TEST(Completion, OffersWhatFits)
{
    const std::string examples = (kSource / "examples").string();
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"morlc", "-t", "hl"}, "hlsl hlsl10"},
        {{"morlc", "-s", ""}, "vertex fragment"},
        {{"morlc", "--sem"}, "--semantics-in --semantics-out"},
        {{"morlc", "bui"}, "build"},
        {{"morlc", "build", "--sh"}, "--shader --shard"},
        {{"morlc", "-C", examples, "lig"}, "lighting"},
        {{"morlc", "-C", examples, "--vertex", "transform,texc"}, "transform,texcoord"},
        {{"morlc", "build", "-C", examples, examples + "/sh"}, examples + "/shaders.json"},
        {{"morlc", "--graph", ""}, "svg dot"},
    };
    const std::string directory = std::filesystem::path(MORLC).parent_path().string();
    for (const auto& [words, expected] : rows) {
        std::string array;
        for (const std::string& word : words) {
            array += " '" + word + "'";
        }
        const std::string script = "PATH=" + directory + ":$PATH; . " +
                                   (kSource / "tools/completion/morlc.bash").string() +
                                   "; COMP_WORDS=(" + array +
                                   "); COMP_CWORD=" + std::to_string(words.size() - 1) +
                                   "; _morlc; echo \"${COMPREPLY[*]}\"";
        const morl_test::ProcessResult result = RunProcess({"bash", "-c", script});
        EXPECT_EQ(result.out, expected + "\n") << array << result.err;
    }
}

}  // namespace
