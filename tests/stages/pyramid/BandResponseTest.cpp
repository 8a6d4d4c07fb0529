// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <limits>
#include <map>
#include <vector>

#include "stages/pyramid/BandResponse.h"

namespace vastrelline {
namespace {

struct ResponseCase {
    const char* name;
    BandCurve curve;
    TailMode tailMode;
    BandLevels levels;  // noise limit, noise, largest magnitude
    double gain;
    std::map<int32_t, int32_t> responses;  // by value
};

class BandResponseTest : public testing::TestWithParam<ResponseCase> {};

TEST_P(BandResponseTest, EachValueHasItsResponse) {
    const ResponseCase& c = GetParam();
    constexpr int32_t kMin = -24;
    const std::vector<int32_t> table = BuildBandResponse(kMin, 24, c.levels, c.gain, c.curve, c.tailMode);
    ASSERT_EQ(table.size(), 49U);
    for (const auto& [value, response] : c.responses)
        EXPECT_EQ(table[static_cast<size_t>(value - kMin)], response) << value;
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// With noise limit 10, noise 4 and gain 2 the power curve reaches 20 at the limit. Below the noise it is the
// line through 20 * (4 / 10)^0.6 = 11.54 at 4; above it 20 * (a / 10)^0.6: 17.49 at 8, 18.77 at 9. Its
// following tail adds 20 * 0.9^0.6 - 20 * (10 / 20)^0.6 = 18.77 - 13.20 to 20 * (a / 20)^0.6.
INSTANTIATE_TEST_SUITE_P(
    Curves, BandResponseTest,
    testing::Values(
        ResponseCase{"PowerTailPasses",
                     BandCurve::Power,
                     TailMode::Pass,
                     {10, 4, 20},
                     2.0,
                     {{0, 0},
                      {1, 2},
                      {2, 5},
                      {-2, -5},
                      {3, 8},
                      {4, 11},
                      {-4, -11},
                      {8, 17},
                      {9, 18},
                      {-9, -18},
                      {10, 10},
                      {-10, -10},
                      {20, 20},
                      {-24, -24}}},
        ResponseCase{"PowerTailRemoved",
                     BandCurve::Power,
                     TailMode::Remove,
                     {10, 4, 20},
                     2.0,
                     {{2, 5}, {9, 18}, {10, 0}, {-10, 0}, {20, 0}}},
        ResponseCase{"PowerTailFollows",
                     BandCurve::Power,
                     TailMode::Follow,
                     {10, 4, 20},
                     2.0,
                     {{9, 18}, {10, 18}, {-10, -18}, {20, 25}, {-20, -25}}},
        ResponseCase{"UnknownTailIsRemoved",
                     BandCurve::Power,
                     TailMode{7},
                     {10, 4, 20},
                     2.0,
                     {{9, 18}, {10, 0}, {20, 0}}},
        ResponseCase{"PowerWithoutNoiseBeginsAtZero",
                     BandCurve::Power,
                     TailMode::Pass,
                     {10, 0, 20},
                     2.0,
                     {{0, 0}, {1, 5}, {-1, -5}, {9, 18}}},
        // 5 / 20 * 20 * 2^0.6 is 7.58: the line goes on to the noise, past the limit.
        ResponseCase{"NoiseWiderThanItsLimit",
                     BandCurve::Power,
                     TailMode::Pass,
                     {10, 20, 24},
                     2.0,
                     {{5, 7}, {19, 28}, {20, 20}}},
        ResponseCase{"NoLimitNoNoise", BandCurve::Power, TailMode::Pass, {0, 0, 24}, 2.0, {{0, 0}, {3, 3}}},
        ResponseCase{"NoLimitTailFollowsIntoNowhere",
                     BandCurve::Power,
                     TailMode::Follow,
                     {0, 0, 24},
                     2.0,
                     {{0, INT_MIN}, {3, INT_MIN}}},
        // A gate of one half in the middle of the noise: 4 * 0.5 * 1.5 + 0.5 is 3.5, the mirrored one -2.5.
        ResponseCase{"SigmoidGate",
                     BandCurve::SigmoidGate,
                     TailMode::Pass,
                     {10, 8, 20},
                     1.5,
                     {{0, 0}, {4, 3}, {-4, -2}, {8, 12}, {-8, -11}, {20, 30}}},
        ResponseCase{"SigmoidGateWithoutNoise",
                     BandCurve::SigmoidGate,
                     TailMode::Pass,
                     {10, 0, 20},
                     0.9,
                     {{0, 0}, {-3, -2}, {3, 3}}},
        // (a / 4)^2.5 is 1/32, 0.1768, 0.4871 and 1: 0.56, 1.21, 3.42 and 8.5 after gain 2 and rounding.
        ResponseCase{"PowerGate",
                     BandCurve::PowerGate,
                     TailMode::Pass,
                     {10, 4, 20},
                     2.0,
                     {{0, 0}, {1, 0}, {2, 1}, {3, 3}, {-3, -2}, {4, 8}, {-4, -7}, {20, 40}}},
        ResponseCase{"PowerGateWithNegativeNoise",
                     BandCurve::PowerGate,
                     TailMode::Pass,
                     {10, -4, 20},
                     2.0,
                     {{1, 2}, {-1, -1}}},
        ResponseCase{"InfiniteGain",
                     BandCurve::Power,
                     TailMode::Pass,
                     {10, 4, 20},
                     kInfinity,
                     {{0, INT_MIN}, {2, INT_MIN}, {9, INT_MIN}, {10, 10}}},
        ResponseCase{"GainBeyondIntegers",
                     BandCurve::SigmoidGate,
                     TailMode::Pass,
                     {10, 0, 20},
                     1e308,
                     {{0, 0}, {1, INT_MIN}, {-24, INT_MIN}}}),
    [](const auto& test) { return test.param.name; });

TEST(BandResponse, UnknownCurveHasNone) {
    EXPECT_TRUE(BuildBandResponse(-5, 5, {10, 4, 20}, 2.0, BandCurve{1}, TailMode::Pass).empty());
    EXPECT_TRUE(BuildBandResponse(-5, 5, {10, 4, 20}, 2.0, BandCurve{-1}, TailMode::Pass).empty());
}

}  // namespace
}  // namespace vastrelline
