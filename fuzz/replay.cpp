// SPDX-License-Identifier: MIT
// Runs a fuzzer's function once over every file of the directories named: a test without a fuzzing
// engine. Needs at least one file.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
{
    // Absolute, as fuzzers may change the current directory.
    std::vector<std::filesystem::path> directories;
    for (int i = 1; i < argc; ++i) {
        directories.push_back(std::filesystem::absolute(argv[i]));
    }
    std::size_t count = 0;
    for (const std::filesystem::path& directory : directories) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
            if (!entry.is_regular_file()) {
                continue;
            }
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string bytes((std::istreambuf_iterator<char>(file)), {});
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                   bytes.size());
            ++count;
        }
    }
    std::cout << "replayed " << count << " inputs\n";
    return count > 0 ? 0 : 1;
}
