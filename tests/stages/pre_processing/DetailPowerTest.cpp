// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

#include "stages/pre_processing/DetailPower.h"

namespace vastrelline {
namespace {

struct Curve {
    float alpha;
    float weight;
    float power;
};

std::vector<int32_t> Mapped(std::vector<int32_t> detail, const Curve& curve, int32_t startMax = 0,
                            int32_t startMin = 1000) {
    MapDetailPower(detail.data(), startMax, startMin, static_cast<int32_t>(detail.size()), 1, curve.alpha,
                   curve.weight, curve.power, 1.0F);
    return detail;
}

// A power of 1 is an exponent of 0. The knee lies at (100 - 1) * 0.0125 = 1.2375: below it 100 / 1.2375
// = 80.8.
TEST(DetailPower, IsALineUpToTheKnee) {
    EXPECT_EQ(Mapped({1, 10, 100}, {1.0F, 1.0F, 1.0F}), (std::vector<int32_t>{80, 100, 100}));
}

// 100 * (25 / 100)^0.5 = 50
TEST(DetailPower, IsAPowerBeyondTheKnee) {
    EXPECT_EQ(Mapped({25, 100}, {1.0F, 1.0F, 0.5F}), (std::vector<int32_t>{50, 100}));
}

TEST(DetailPower, AlphaScalesTheCurve) {
    EXPECT_EQ(Mapped({25, 100}, {0.5F, 1.0F, 0.5F}), (std::vector<int32_t>{25, 50}));
}

// (25 + 50) / 2 = 37.5
TEST(DetailPower, WeightMixesTheCurveWithTheValue) {
    EXPECT_EQ(Mapped({25, 100}, {1.0F, 0.5F, 0.5F}), (std::vector<int32_t>{37, 100}));
    EXPECT_EQ(Mapped({25, 100}, {1.0F, 0.0F, 0.5F}), (std::vector<int32_t>{25, 100}));
}

// 400 * (100 / 400)^0.5 = 200
TEST(DetailPower, SearchMayStartAboveTheLargestValue) {
    EXPECT_EQ(Mapped({100, 400}, {1.0F, 1.0F, 0.5F}, 0), (std::vector<int32_t>{200, 400}));
    EXPECT_EQ(Mapped({100, 100}, {1.0F, 1.0F, 0.5F}, 400), (std::vector<int32_t>{200, 200}));
}

TEST(DetailPower, SmallestBelowOneLeavesEverything) {
    const std::vector<int32_t> positive = {1, 10, 100};
    EXPECT_EQ(Mapped(positive, {2.0F, 1.0F, 1.0F}, 0, 0), positive);
    const std::vector<int32_t> withZero = {0, 10, 100};
    EXPECT_EQ(Mapped(withZero, {2.0F, 1.0F, 1.0F}), withZero);
    const std::vector<int32_t> mixed = {-5, 10, 100};
    EXPECT_EQ(Mapped(mixed, {2.0F, 1.0F, 1.0F}), mixed);
}

// What no 32-bit integer holds is the smallest one. Of a weight of 1e38 nothing is left where the curve gives
// the value itself: 100 - 100e38 + 100e38 is 0 in doubles. The knee of the last ones lies at 0.0125 of the
// largest, and 0.0125 to the power of infinity is 0, to that of its opposite infinite.
TEST(DetailPower, HostileParametersHaveTheirResults) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<int32_t> none = {INT32_MIN, INT32_MIN};
    for (const float alpha : {kInfinity, -kInfinity, kNan, 1e38F, -1e38F})
        EXPECT_EQ(Mapped({25, 100}, {alpha, 1.0F, 0.5F}), none) << alpha;
    for (const float weight : {kInfinity, -kInfinity, kNan})
        EXPECT_EQ(Mapped({25, 100}, {1.0F, weight, 0.5F}), none) << weight;
    for (const float weight : {1e38F, -1e38F})
        EXPECT_EQ(Mapped({25, 100}, {1.0F, weight, 0.5F}), (std::vector<int32_t>{INT32_MIN, 0})) << weight;
    for (const float power : {kInfinity, 1e38F, kNan})
        EXPECT_EQ(Mapped({25, INT32_MAX}, {1.0F, 1.0F, power}), (std::vector<int32_t>{INT32_MIN, INT32_MAX}))
            << power;
    for (const float power : {-kInfinity, -1e38F})
        EXPECT_EQ(Mapped({25, INT32_MAX}, {1.0F, 1.0F, power}), (std::vector<int32_t>{0, INT32_MAX}))
            << power;
}

}  // namespace
}  // namespace vastrelline
