// SPDX-License-Identifier: MIT
// morl_sheets DIRECTORY: draws all sample shaders, one sheet per target: DIRECTORY/TARGET.png.
#include "pictures/draw.h"
#include "support/graph.h"
#include "support/log_capture.h"

#include <filesystem>
#include <iostream>
#include <map>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: morl_sheets DIRECTORY\n";
        return 2;
    }
    const morl_test::LogCapture log;
    const auto compiler = morl_test::MakeSampleCompiler();
    pictures::Painter painter;
    std::map<std::string, std::vector<pictures::Image>> drawn;
    for (const morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        drawn[request.target].push_back(
            painter.Draw(request.target, morl_test::CompileSample(*compiler, request)));
    }
    for (const auto& [target, images] : drawn) {
        constexpr std::size_t kColumns = 4;
        const std::size_t size = images[0].width;
        pictures::Image sheet(size * kColumns, size * ((images.size() + kColumns - 1) / kColumns));
        for (std::size_t i = 0; i < images.size(); ++i) {
            sheet.Put(images[i], size * (i % kColumns), size * (i / kColumns));
        }
        const auto path = std::filesystem::path(argv[1]) / (target + ".png");
        pictures::WritePng(path, sheet);
        std::cout << path.string() << "\n";
    }
}
