// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "views/LevelHistogram.h"

namespace vastrelline {
namespace {

TEST(LevelHistogram, HasABinALevelFromTheLeastToTheGreatest) {
    const LevelHistogram histogram = CountLevels({5, 1, {7, 4, 7, 5, 7}});
    EXPECT_EQ(histogram.first, 4U);
    EXPECT_EQ(histogram.counts, (std::vector<uint32_t>{1, 1, 0, 3}));
}

TEST(LevelHistogram, OfOneLevelHasOneBin) {
    const LevelHistogram histogram = CountLevels({2, 1, {65535, 65535}});
    EXPECT_EQ(histogram.first, 65535U);
    EXPECT_EQ(histogram.counts, std::vector<uint32_t>{2});
    EXPECT_EQ(CountLevels({2, 1, {0, 65535}}).counts.size(), 65536U);
}

}  // namespace
}  // namespace vastrelline
