#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "TreeFiles.h"
#include "support/SourceTree.h"

namespace vastrelline {

namespace {

using testing::IsEmpty;
using testing::SizeIs;

// Documents and comments explain themselves: they point at no paper, chapter or ticket that a reader of the
// tree does not have, and name no folder of the machine that they were written on. Letters in brackets keep
// these lines from naming what they look for.
std::vector<std::string> FindForeignWords(const std::string& path, const std::string& text) {
    static const std::regex papers(
        R"(\b([s]pecs?|[s]pecification|[p]arts? [0-9]+(\.[0-9]+)?|[i]ssues? #?[0-9]+)\b)",
        std::regex::icase | std::regex::optimize);
    static const std::regex folders(R"((^|[^A-Za-z0-9_.-])/([w]ork|[f]arm)/|/[t]mp/[p]rompts)",
                                    std::regex::optimize);
    std::vector<std::string> found;
    std::istringstream lines(text);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (std::regex_search(line, papers) || std::regex_search(line, folders))
            found.push_back(path + ":" + std::to_string(number) + ": " + line);
    }
    return found;
}

bool NamesUnfinishedWork(const std::string& line) {
    static const std::regex words(R"(\b(TO[D]O|FIX[M]E|XX[X]|HA[C]K)\b)", std::regex::optimize);
    return std::regex_search(line, words);
}

}  // namespace

TEST(OwnWords, PointAtNothingOutsideTheTree) {
    for (const auto& [path, text] : ReadTreeFiles(SourceTreeFolder()))
        EXPECT_THAT(FindForeignWords(path, text), IsEmpty());
}

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

TEST(ForeignWords, AreFoundWithTheirLine) {
    for (const std::string word : {"sp"
                                   "ec",
                                   "Sp"
                                   "ecification",
                                   "pa"
                                   "rt 3",
                                   "Pa"
                                   "rts 3.1",
                                   "is"
                                   "sue #4"}) {
        EXPECT_THAT(FindForeignWords("a.md", "first\nsee " + word + ".\n"),
                    testing::ElementsAre("a.md:2: see " + word + "."));
    }
    EXPECT_THAT(FindForeignWords("a.md", std::string("in /wo") + "rk/main\n"), SizeIs(1));
}

TEST(ForeignWords, AreWholeWords) {
    EXPECT_THAT(FindForeignWords("a.md", "special inspection of part one, issued at network/path\n"),
                IsEmpty());
}

TEST(UnfinishedWork, IsFound) {
    EXPECT_TRUE(NamesUnfinishedWork(std::string("// TO") + "DO: more"));
    EXPECT_FALSE(NamesUnfinishedWork("a method of hacking"));
}

}  // namespace vastrelline
