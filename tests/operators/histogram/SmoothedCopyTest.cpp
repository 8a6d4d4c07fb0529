// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "operators/histogram/Histogram.h"
#include "operators/histogram/SmoothedCopy.h"

namespace vastrelline {
namespace {

struct SmoothedCopyCase {
    const char* name;
    std::vector<uint32_t> histogram;
    int32_t bins;
    int32_t window;
    std::vector<int32_t> smoothed;
};

const std::vector<SmoothedCopyCase> kTables{
    // Bin i sums i - 1 and i. The first has itself alone, the last both of its range: divided by 1 and 2,
    // all others by 3.
    {"MiddleIsALittleLow", {30, 60, 90, 120, 150}, 5, 3, {30, 30, 50, 70, 135}},
    {"EvenWindowIsRaised", {30, 60, 90, 120, 150}, 5, 2, {30, 30, 50, 70, 135}},
    {"BinsBeyondAreNotRead", {30, 60, 90, 120, 150}, 3, 3, {30, 30, 75}},
    // Window 5 reaches 2 down and 1 up: bins 0 to 1, 0 to 2, 0 to 2.
    {"TableShorterThanTheWindow", {10, 20, 61}, 3, 5, {15, 30, 30}},
    {"OneBin", {7}, 1, 101, {7}},
    {"WindowOfOneSumsNothing", {5, 6}, 2, 1, {0, 0}},
    {"WindowOfZeroIsOne", {5, 6}, 2, 0, {0, 0}},
    {"NoBins", {5, 6}, 0, 3, {}},
    // -2^31 / 3 toward zero.
    {"SumsAreSigned", {0x80000000U, 0, 0, 0}, 4, 3, {std::numeric_limits<int32_t>::min(), -715827882, 0, 0}}};

TEST(SmoothedCopy, AveragesWhatExists) {
    for (const SmoothedCopyCase& c : kTables) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(SmoothedCopy(c.histogram, c.bins, c.window), c.smoothed);
    }
}

TEST(SmoothedCopy, IsTheMovingAverageOfLongTables) {
    std::mt19937 random(20240501);
    std::vector<uint32_t> histogram(500);
    for (uint32_t& count : histogram) count = static_cast<uint32_t>(random() % 5000);
    for (const int32_t window : {3, 20, 101}) {
        std::vector<uint32_t> expected(histogram.size());
        SmoothHistogram(histogram.data(), expected.data(), 500, window);
        EXPECT_EQ(SmoothedCopy(histogram, 500, window),
                  std::vector<int32_t>(expected.begin(), expected.end()))
            << window;
    }
}

}  // namespace
}  // namespace vastrelline
