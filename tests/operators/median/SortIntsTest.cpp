// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "operators/median/SortInts.h"

namespace vastrelline {
namespace {

constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();

std::vector<int32_t> Sorted(std::vector<int32_t> values) {
    SortInts(values.data(), static_cast<int32_t>(values.size()));
    return values;
}

struct SortCase {
    const char* name;
    std::vector<int32_t> values;
    std::vector<int32_t> sorted;
};

class SortIntsTest : public testing::TestWithParam<SortCase> {};

TEST_P(SortIntsTest, GivesAscendingOrder) { EXPECT_EQ(Sorted(GetParam().values), GetParam().sorted); }

INSTANTIATE_TEST_SUITE_P(Edges, SortIntsTest,
                         testing::Values(SortCase{"NothingToSort", {}, {}},
                                         SortCase{"OneStaysAsItIs", {42}, {42}},
                                         SortCase{"TwoInOrder", {1, 2}, {1, 2}},
                                         SortCase{"TwoSwapped", {2, 1}, {1, 2}},
                                         SortCase{"AlreadySorted", {1, 2, 3, 4, 5}, {1, 2, 3, 4, 5}},
                                         SortCase{"Reversed", {5, 4, 3, 2, 1}, {1, 2, 3, 4, 5}},
                                         SortCase{"AllEqual", {7, 7, 7, 7}, {7, 7, 7, 7}},
                                         SortCase{"PivotIsSmallest", {1, 9, 5, 7}, {1, 5, 7, 9}},
                                         SortCase{"PivotIsLargest", {9, 1, 5, 7}, {1, 5, 7, 9}},
                                         SortCase{"PivotStandsTwice", {5, 9, 5, 1, 5}, {1, 5, 5, 5, 9}},
                                         SortCase{"SignsCount", {3, -1, 0, -65536}, {-65536, -1, 0, 3}},
                                         SortCase{"Limits", {kHighest, 0, kLowest}, {kLowest, 0, kHighest}}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(SortInts, CountBelowOneTouchesNothing) {
    std::vector<int32_t> values{3, 1, 2};
    for (const int32_t count : {1, 0, -1, kLowest}) SortInts(values.data(), count);
    EXPECT_EQ(values, (std::vector<int32_t>{3, 1, 2}));
}

TEST(SortInts, SortsOnlyTheFirstCountValues) {
    std::vector<int32_t> values{3, 2, 1, 0};
    SortInts(values.data(), 3);
    EXPECT_EQ(values, (std::vector<int32_t>{1, 2, 3, 0}));
}

TEST(SortInts, BothEndsOfTheRangeAreInclusive) {
    std::vector<int32_t> values{9, 4, 3, 2, 1};
    SortIntRange(values.data(), 1, 3);
    EXPECT_EQ(values, (std::vector<int32_t>{9, 2, 3, 4, 1}));
}

TEST(SortInts, SortsEveryOrderOfAWindowWithTies) {
    std::vector<int32_t> window{1, 2, 2, 3, 4, 5, 5};
    const std::vector<int32_t> sorted = window;
    do ASSERT_EQ(Sorted(window), sorted);
    while (std::next_permutation(window.begin(), window.end()));
}

TEST(SortInts, AgreesWithTheStandardSortOnLargeWindows) {
    std::mt19937 random(20240501);
    for (const size_t side : {3U, 5U, 9U, 21U}) {
        std::vector<int32_t> window(side * side);
        for (int32_t& value : window) value = static_cast<int32_t>(random() % 4096);
        std::vector<int32_t> expected = window;
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(Sorted(window), expected);
    }
}

}  // namespace
}  // namespace vastrelline
