// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <regex>
#include <string>

#include "TreeFiles.h"
#include "support/SourceTree.h"

namespace vastrelline {

namespace {

// Letters in brackets keep these lines from naming what they look for.
bool NamesUnfinishedWork(const std::string& line) {
    static const std::regex words(R"(\b(TO[D]O|FIX[M]E|XX[X]|HA[C]K)\b)", std::regex::optimize);
    return std::regex_search(line, words);
}

}  // namespace

TEST(OwnWords, LeaveNoWorkUnfinished) {
    for (const auto& [path, text] : ReadTreeFiles(SourceTreeFolder()))
        EXPECT_FALSE(NamesUnfinishedWork(text)) << path;
}

TEST(OwnWords, FilesStayShort) {
    constexpr std::ptrdiff_t kMostLines = 400;
    for (const char* folder : {"src", "tools", "include"}) {
        for (const auto& [path, text] : ReadTreeFiles(SourceTreeFolder() / folder))
            EXPECT_LE(std::count(text.begin(), text.end(), '\n'), kMostLines) << path;
    }
}

// What a run leaves where it was started from is not committed.
TEST(TopFolder, HoldsNoFrameAndNoCurve) {
    for (const auto& entry : std::filesystem::directory_iterator(SourceTreeFolder())) {
        EXPECT_NE(entry.path().extension(), ".raw") << entry.path();
        EXPECT_TRUE(entry.path().extension() != ".txt" || entry.path().filename() == "CMakeLists.txt")
            << entry.path();
    }
}

TEST(UnfinishedWork, IsFound) {
    EXPECT_TRUE(NamesUnfinishedWork(std::string("// TO") + "DO: more"));
    EXPECT_FALSE(NamesUnfinishedWork("a method of hacking"));
}

}  // namespace vastrelline
