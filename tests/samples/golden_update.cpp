// SPDX-License-Identifier: MIT
// Regenerates the golden files of the sample shaders, the tables of the documents, the word lists
// and the outcomes of all cases. Review the changes before committing them.
#include "docs/language_tables.h"
#include "pictures/probes.h"
#include "samples/golden_files.h"
#include "support/cases.h"
#include "support/document.h"
#include "support/graph.h"
#include "support/log_capture.h"

#include <iostream>

int main()
{
    const morl_test::LogCapture log;
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t count = 0;
    std::filesystem::remove_all(std::filesystem::path(MORL_SOURCE_DIR) / "tests/golden");
    for (const morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        const morl_test::SampleTexts texts = morl_test::CompileSample(*compiler, request);
        morl_test::WriteText(morl_test::GoldenPath(request, ".vert"), texts.vertex);
        morl_test::WriteText(morl_test::GoldenPath(request, ".frag"), texts.fragment);
        count += 2;
    }
    std::string language =
        morl_test::WithLanguageTables(morl_test::ReadText(morl_test::Document("language")));
    morl_test::ReplaceTable(language, "rules", morl_test::RuleTable());
    morl_test::WriteText(morl_test::Document("language"), language);
    std::string targets = morl_test::ReadText(morl_test::Document("targets"));
    morl_test::ReplaceTable(targets, "probes", morl_test::ProbeTable());
    morl_test::WriteText(morl_test::Document("targets"), targets);
    const std::filesystem::path tool = morl_test::Document("morlc");
    morl_test::WriteText(tool, morl_test::WithCheckTable(morl_test::ReadText(tool)));
    const std::string grammar = morl_test::ReadText(morl_test::kGrammar);
    morl_test::WriteText(morl_test::kGrammar, morl_test::WithWordLists(grammar));
    morl_test::WriteText(morl_test::kTargetList, morl_test::TargetList());
    for (const auto& file : morl_test::CaseFiles()) {
        std::string text;
        for (const morl_test::Case& one : morl_test::RunCases(file)) {
            text += one.rendered;
        }
        morl_test::WriteText(file, text);
        ++count;
    }
    std::cout << "wrote " << count << " files\n";
}
