// SPDX-License-Identifier: MIT
// Runs a fuzzer's function once over every file of the directories named: a test without a fuzzing
// engine. Needs at least one file.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
{
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        // Fuzzers may change the current directory.
        const auto directory = std::filesystem::absolute(argv[i]);
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
