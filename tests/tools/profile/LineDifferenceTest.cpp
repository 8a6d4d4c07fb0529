// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>

#include "profile/LineDifference.h"

namespace vastrelline {
namespace {

using Lines = std::vector<std::string_view>;

TEST(LineDifference, SplitsTextsIntoLines) {
    EXPECT_EQ(SplitLines(""), Lines{});
    EXPECT_EQ(SplitLines("\n"), (Lines{""}));
    EXPECT_EQ(SplitLines("a\n\nb"), (Lines{"a", "", "b"}));
    EXPECT_EQ(SplitLines("a\nb\n"), (Lines{"a", "b"}));
}

TEST(LineDifference, FindsTheShortestWay) {
    const auto diff = [](const Lines& old, const Lines& now) { return DiffLines(old, now); };
    EXPECT_EQ(diff({"a", "b"}, {"a", "b"}), std::vector<LineRun>{});
    EXPECT_EQ(diff({}, {}), std::vector<LineRun>{});
    EXPECT_EQ(diff({}, {"a"}), (std::vector<LineRun>{{0, 0, 0, 1}}));
    EXPECT_EQ(diff({"a", "b", "c"}, {"a", "c"}), (std::vector<LineRun>{{1, 2, 1, 1}}));
    EXPECT_EQ(diff({"a", "b", "c"}, {"a", "x", "c", "d"}),
              (std::vector<LineRun>{{1, 2, 1, 2}, {3, 3, 3, 4}}));
    // Of both ways to keep one line of two that changed places the first to be found counts; either has one
    // gone and one new.
    EXPECT_EQ(diff({"a", "b"}, {"b", "a"}), (std::vector<LineRun>{{0, 1, 0, 0}, {2, 2, 1, 2}}));
}

// The number of lines that a longest common subsequence leaves out, by the table of all beginnings.
size_t LeastDifference(const Lines& old, const Lines& now) {
    std::vector<std::vector<size_t>> table(old.size() + 1, std::vector<size_t>(now.size() + 1));
    for (size_t y = 0; y < old.size(); ++y)
        for (size_t x = 0; x < now.size(); ++x)
            table[y + 1][x + 1] =
                old[y] == now[x] ? table[y][x] + 1 : std::max(table[y][x + 1], table[y + 1][x]);
    return old.size() + now.size() - 2 * table[old.size()][now.size()];
}

TEST(LineDifference, IsRightAndShortestForRandomTexts) {
    std::mt19937 random(1);
    constexpr std::string_view kLetters = "abc";
    for (int round = 0; round < 2000; ++round) {
        Lines texts[2];
        for (Lines& text : texts)
            for (size_t count = random() % 12; count > 0; --count)
                text.push_back(kLetters.substr(random() % 3, 1));
        Lines made;
        size_t at = 0;
        size_t difference = 0;
        for (const LineRun& run : DiffLines(texts[0], texts[1])) {
            ASSERT_GE(run.oldBegin, at);
            for (; at < run.oldBegin; ++at) made.push_back(texts[0][at]);
            ASSERT_EQ(made.size(), run.nowBegin);
            for (size_t i = run.nowBegin; i < run.nowEnd; ++i) made.push_back(texts[1][i]);
            at = run.oldEnd;
            difference += run.oldEnd - run.oldBegin + run.nowEnd - run.nowBegin;
        }
        for (; at < texts[0].size(); ++at) made.push_back(texts[0][at]);
        ASSERT_EQ(made, texts[1]);
        ASSERT_EQ(difference, LeastDifference(texts[0], texts[1]));
    }
}

TEST(LineDifference, ReplacesTheMiddleOfTextsThatShareNothing) {
    std::string texts[2];
    for (int side = 0; side < 2; ++side) {
        texts[side] = "head\n";
        for (int i = 0; i < 100'000; ++i) texts[side].append(std::to_string(2 * i + side)).append("\n");
        texts[side].append("tail\n");
    }
    const std::vector<LineRun> runs = DiffLines(SplitLines(texts[0]), SplitLines(texts[1]));
    EXPECT_EQ(runs, (std::vector<LineRun>{{1, 100'001, 1, 100'001}}));
}

TEST(LineDifference, TellsLinesThatChangedCameAndWent) {
    EXPECT_EQ(FindLineChanges("a\nb\nc\nd\n", "a\nB\nc\n"),
              (std::vector<LineChange>{{2, "b", "B"}, {4, "d", std::nullopt}}));
    EXPECT_EQ(FindLineChanges("a\nz\n", "a\nx\ny\nz\n"),
              (std::vector<LineChange>{{2, std::nullopt, "x"}, {3, std::nullopt, "y"}}));
    EXPECT_EQ(FindLineChanges("1\n2\n3\n", "x\n"),
              (std::vector<LineChange>{{1, "1", "x"}, {2, "2", std::nullopt}, {2, "3", std::nullopt}}));
}

TEST(LineDifference, WritesWhatOtherProgramsRead) {
    EXPECT_EQ(UnifiedDifference("a\n", "a\n", "one", "two"), "");
    EXPECT_EQ(
        UnifiedDifference("1\n2\n3\n4\n5\n6\n7\n8\n9\n", "1\n2\n3\n4\nfive\n6\n7\n8\n9\n", "one", "two"),
        "--- one\n+++ two\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+five\n 6\n 7\n 8\n");
    EXPECT_EQ(UnifiedDifference("", "a\n", "one", "two"), "--- one\n+++ two\n@@ -0,0 +1 @@\n+a\n");
    EXPECT_EQ(UnifiedDifference("a\nb\n", "", "one", "two"), "--- one\n+++ two\n@@ -1,2 +0,0 @@\n-a\n-b\n");
    // Seven lines lie between the differences: each has a piece of its own. With six they share one.
    EXPECT_EQ(UnifiedDifference("a\n1\n2\n3\n4\n5\n6\n7\nb\n", "1\n2\n3\n4\n5\n6\n7\n", "one", "two"),
              "--- one\n+++ two\n@@ -1,4 +1,3 @@\n-a\n 1\n 2\n 3\n@@ -6,4 +5,3 @@\n 5\n 6\n 7\n-b\n");
    EXPECT_EQ(UnifiedDifference("a\n1\n2\n3\n4\n5\n6\nb\n", "1\n2\n3\n4\n5\n6\n", "one", "two"),
              "--- one\n+++ two\n@@ -1,8 +1,6 @@\n-a\n 1\n 2\n 3\n 4\n 5\n 6\n-b\n");
}

}  // namespace
}  // namespace vastrelline
