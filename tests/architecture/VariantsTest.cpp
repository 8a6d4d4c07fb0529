// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Variants.h"

namespace vastrelline {

namespace {

using testing::ElementsAre;
using testing::Key;

ParsedTree FuzzTargets() {
    ParsedTree targets = OwnParsedTree("fuzz");
    std::erase_if(targets, [](const auto& file) { return !file.first.ends_with("Fuzz.cpp"); });
    return targets;
}

class EveryVariantList : public testing::Test {
protected:
    static std::vector<std::string> UnwalkedIn(const ParsedTree& tree, const std::string& place) {
        const std::vector<std::string> lists = ListVariantLists(OwnParsedTree("src"));
        EXPECT_GT(lists.size(), 5U);
        return CompareFindings(FindUnwalkedLists(lists, tree, place), {});
    }
};

}  // namespace

TEST_F(EveryVariantList, IsWalkedByATest) {
    EXPECT_TRUE(IsKept(UnwalkedIn(OwnParsedTree("tests"), "tests/")));
}

TEST_F(EveryVariantList, IsWalkedByABenchmark) {
    EXPECT_TRUE(IsKept(UnwalkedIn(OwnParsedTree("bench"), "bench/")));
}

TEST_F(EveryVariantList, IsWalkedByAFuzzTarget) {
    EXPECT_TRUE(IsKept(UnwalkedIn(FuzzTargets(), "the targets of fuzz/")));
}

TEST(ListVariantLists, TakesFunctionsOfHeadersWithoutParameters) {
    const ParsedTree tree = ParseTree({{"a/A.h", "std::span<const int> RowVariants();\nint Pick(int);"},
                                       {"a/B.h", "template <typename T> T AllowedVariants(const T& all) {}"},
                                       {"a/A.cpp", "static int OtherVariants() { return 1; }"}});
    EXPECT_THAT(ListVariantLists(tree), ElementsAre("RowVariants"));
}

TEST(FindUnwalkedLists, ACommentWalksNoList) {
    const ParsedTree tree = ParseTree({{"a/ATest.cpp", "for (auto v : RowVariants()) v.run();"},
                                       {"a/BTest.cpp", "// ColumnVariants()\nauto x = \"ColumnVariants\";"}});
    EXPECT_THAT(FindUnwalkedLists({"ColumnVariants", "RowVariants"}, tree, "tests/"),
                ElementsAre(Key("ColumnVariants")));
}

}  // namespace vastrelline
