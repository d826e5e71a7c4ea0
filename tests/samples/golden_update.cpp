// SPDX-License-Identifier: MIT
// Writes the golden files of the sample shaders and the tables of the language's document anew.
// Look at what changed before committing it.
#include "docs/language_tables.h"
#include "samples/golden_files.h"
#include "support/graph.h"

#include <iostream>

int main()
{
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t count = 0;
    for (const morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        const morl_test::SampleTexts texts = morl_test::CompileSample(*compiler, request);
        morl_test::WriteText(morl_test::GoldenPath(request, ".vert"), texts.vertex);
        morl_test::WriteText(morl_test::GoldenPath(request, ".frag"), texts.fragment);
        count += 2;
    }
    const auto document = morl_test::LanguageDocument();
    morl_test::WriteText(document, morl_test::WithLanguageTables(morl_test::ReadText(document)));
    std::cout << "wrote " << count << " golden files\n";
}
