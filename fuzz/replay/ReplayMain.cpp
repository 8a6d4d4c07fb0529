// SPDX-License-Identifier: Apache-2.0

// Stands in for the fuzzer: runs the target once on every file of the folders it is called with.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

// The bytes in a block of exactly their size, so that a sanitizer sees a read past the end.
std::vector<uint8_t> ReadInput(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return {bytes.begin(), bytes.end()};
}

int ReplayFolders(int count, char** folders) {
    int replayed = 0;
    for (int i = 0; i < count; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(folders[i])) {
            const std::vector<uint8_t> input = ReadInput(entry.path());
            LLVMFuzzerTestOneInput(input.data(), input.size());
            ++replayed;
        }
    }
    std::printf("%d inputs replayed\n", replayed);
    return replayed > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return ReplayFolders(argc - 1, argv + 1);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return 1;
    }
}
