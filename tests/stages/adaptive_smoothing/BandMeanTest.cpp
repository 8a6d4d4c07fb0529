// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "stages/adaptive_smoothing/BandMean.h"

namespace vastrelline {
namespace {

struct BandCase {
    const char* name;
    int32_t width, height, top, bottom, radius;
    std::vector<uint16_t> source;
    std::vector<double> means;
};

class BandMeanTest : public testing::TestWithParam<BandCase> {};

TEST_P(BandMeanTest, GivesTheMeansOfPixelsAndOfDoubles) {
    const BandCase& c = GetParam();
    std::vector<double> means(c.source.size(), -7.0);
    BandMeanPixels(c.source.data(), means.data(), c.width, c.height, c.top, c.bottom, c.radius);
    EXPECT_EQ(means, c.means);
    const std::vector<double> source(c.source.begin(), c.source.end());
    means.assign(source.size(), -7.0);
    BandMeanDoubles(source.data(), means.data(), c.width, c.height, c.top, c.bottom, c.radius);
    EXPECT_EQ(means, c.means);
}

INSTANTIATE_TEST_SUITE_P(
    Bands, BandMeanTest,
    testing::Values(
        // Edge pixels repeated: (3 + 3 + 6) / 3, (3 + 6 + 12) / 3, (6 + 12 + 12) / 3.
        BandCase{"WholeColumn", 1, 3, 0, 2, 1, {3, 6, 12}, {4, 7, 10}},
        BandCase{"WholeRow", 3, 1, 0, 0, 1, {3, 6, 12}, {4, 7, 10}},
        // Row means 12 18 24 and 9 9 9, moved down to rows 2 and 3; the third row of the band is pushed out.
        BandCase{"BandMovesDownByItsTop",
                 3,
                 5,
                 1,
                 3,
                 1,
                 {90, 60, 30, 9, 18, 27, 0, 27, 0, 99, 99, 99, 7, 8, 9},
                 {0, 0, 0, 4, 6, 8, 7, 9, 11, 7, 9, 11, 0, 0, 0}},
        // Rows 0 and 1, which are above the band and so 0, are what moves into it.
        BandCase{"TopBeyondTheRadius", 1, 5, 2, 3, 0, {9, 9, 4, 5, 9}, {0, 0, 0, 0, 0}},
        BandCase{"RadiusZeroWithoutTopCopies", 2, 2, 0, 1, 0, {1, 2, 3, 4}, {1, 2, 3, 4}},
        BandCase{"EmptyBand", 2, 2, 3, -2, 3, {1, 2, 3, 4}, {0, 0, 0, 0}},
        BandCase{"NoPixels", 0, 4, 1, 2, 1, {}, {}}),
    [](const auto& test) { return test.param.name; });

// In doubles 1e16 + 1 is 1e16, so that the order shows.
TEST(BandMeanDoubles, TakesOffBeforeItAdds) {
    const std::vector<double> source = {1e16, 0, 0, 1, 0};
    std::vector<double> means(5);
    BandMeanDoubles(source.data(), means.data(), 5, 1, 0, 0, 1);
    // At place 2 the sum 1e16 loses 1e16, then takes the 1; the other order would lose the 1.
    EXPECT_EQ(means[2], 1.0 / 3);
    EXPECT_EQ(means[3], 1.0 / 3);
}

}  // namespace
}  // namespace vastrelline
