// SPDX-License-Identifier: MIT
// One graph, one picture: the richest variant of every sample shader is drawn in every target.
#include "pictures/draw.h"
#include "pictures/probes.h"
#include "pictures/words.h"
#include "support/document.h"
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <map>

namespace {

using pictures::Image;

/// All pictures of a shader, and below each its difference from the first.
Image Sheet(const std::vector<Image>& pictures)
{
    const std::size_t size = pictures[0].width;
    Image sheet(size * pictures.size(), size * 2);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        sheet.Put(pictures[i], size * i, 0);
        sheet.Put(Difference(pictures[0], pictures[i]), size * i, size);
    }
    return sheet;
}

bool IsPlain(const Image& image)
{
    return std::all_of(image.pixels.begin(), image.pixels.end(),
                       [&](const auto& pixel) { return pixel == image.pixels[0]; });
}

TEST(Pictures, AreTheSameInEveryTarget)
{
    const morl_test::LogCapture log;
    const std::filesystem::path directory = std::filesystem::path(MORL_BINARY_DIR) / "pictures";
    std::filesystem::remove_all(directory);
    const auto compiler = morl_test::MakeSampleCompiler();
    pictures::Painter painter;
    std::map<std::string, std::vector<Image>> drawn;
    for (const morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        drawn[request.shader].push_back(
            painter.Draw(request.target, morl_test::CompileSample(*compiler, request)));
    }
    EXPECT_EQ(log.errors, std::vector<std::string>{});
    EXPECT_GE(drawn.size(), 16U);
    for (const auto& [shader, images] : drawn) {
        EXPECT_FALSE(IsPlain(images[0])) << shader;
        ASSERT_EQ(images.size(), ns_ruke::MorlTargets().size()) << shader;
        for (std::size_t i = 0; i < images.size(); ++i) {
            if (!LooksSame(images[0], images[i])) {
                const auto sheet = directory / (shader + ".png");
                pictures::WritePng(sheet, Sheet(images));
                ADD_FAILURE() << shader << ": " << CountDifferent(images[0], images[i])
                              << " pixels of " << ns_ruke::MorlTargets()[i]
                              << " differ from those of " << ns_ruke::MorlTargets()[0] << "; see "
                              << sheet << " (" << painter.Names() << ")";
            }
        }
    }
}

TEST(Words, ThatAreTakenSilentlyAreTakenByEveryCompilerHere)
{
    pictures::Painter painter;
    for (const morl_test::WordShader& shader : morl_test::WordShaders()) {
        // Of HLSL, direct3d_test.py asks Microsoft's compiler.
        if (ns_ruke::FindTargetInfo(shader.target)->Has(ns_ruke::kHlsl)) {
            continue;
        }
        try {
            painter.Link(shader.target, morl_test::TextsOf(shader));
        } catch (const pictures::Refused& refusal) {
            ADD_FAILURE() << shader.name << ", " << shader.words.front() << ": " << refusal.what();
        }
    }
}

TEST(Pictures, OfProbesAreWhatTheDocumentsSay)
{
    const std::string targets = morl_test::ReadText(morl_test::Document("targets"));
    std::string measured = targets;
    morl_test::ReplaceTable(measured, "probes", morl_test::ProbeTable());
    EXPECT_EQ(measured, targets) << "\"./dev golden\" writes the table";
    const std::string language = morl_test::ReadText(morl_test::Document("language"));
    std::string ruled = language;
    morl_test::ReplaceTable(ruled, "rules", morl_test::RuleTable());
    EXPECT_EQ(ruled, language) << "\"./dev golden\" writes the table";
}

}  // namespace
