// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "stages/pyramid/EnhanceBand.h"
#include "stages/pyramid/SeenPyramid.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

struct Tuning {
    double ratio = 2.0;
    double noiseWidth = 0.7;
    BandCurve curve = BandCurve::Power;
    double cutLimit = 0.5;
    TailMode tailMode = TailMode::Pass;
};

int32_t Enhance(std::vector<int16_t>& band, const Tuning& tuning, PyramidObserver* observer = nullptr) {
    return EnhanceBand(band.data(), static_cast<int32_t>(band.size()), 1, kTwelveBits, tuning.ratio,
                       tuning.noiseWidth, tuning.curve, tuning.cutLimit, tuning.tailMode, 4, observer);
}

// Each value once, but those from -5 to 5 a thousand times.
//
// Smoothed, the bin of value v sums the values v - 5 to v + 4 and divides by 11, so n of the frequent values
// make (1000 * n + 10 - n) / 11: 909 at the peak, 455 for five of them and 364 for four. With a cut of one
// half, 454, the first bin above it is -5 and the last one is 6, one further since the window is not
// symmetric. So the noise limit is 6 and the noise trunc(6 * 0.7) = 4; with gain 2 the response is
// 12 * (a / 6)^0.6, or below 4 the line to 12 * (4 / 6)^0.6 = 9.41.
std::vector<int16_t> MakeBand() {
    std::vector<int16_t> band;
    for (int16_t value = -20; value <= 20; ++value) {
        band.insert(band.end(), value >= -5 && value <= 5 ? 1000U : 1U, value);
    }
    return band;
}

// What each value of MakeBand became.
std::map<int16_t, int16_t> MapOf(const std::vector<int16_t>& enhanced) {
    const std::vector<int16_t> before = MakeBand();
    std::map<int16_t, int16_t> map;
    for (size_t i = 0; i < before.size(); ++i) {
        const auto [place, isNew] = map.try_emplace(before[i], enhanced[i]);
        EXPECT_EQ(place->second, enhanced[i]) << before[i];
    }
    return map;
}

TEST(EnhanceBand, FitsThePowerCurveToTheHistogram) {
    std::vector<int16_t> band = MakeBand();
    EXPECT_EQ(Enhance(band, {}), 1);
    const std::map<int16_t, int16_t> map = MapOf(band);
    const std::map<int16_t, int16_t> inside = {{-5, -10}, {-4, -9}, {-3, -7}, {-2, -4}, {-1, -2}, {0, 0},
                                               {1, 2},    {2, 4},   {3, 7},   {4, 9},   {5, 10}};
    for (const auto& [value, response] : map) {
        EXPECT_EQ(response, inside.contains(value) ? inside.at(value) : value) << value;
    }
}

TEST(EnhanceBand, RemovedTailLeavesTheSmallestValueOnly) {
    std::vector<int16_t> band = MakeBand();
    EXPECT_EQ(Enhance(band, {.tailMode = TailMode::Remove}), 1);
    const std::map<int16_t, int16_t> map = MapOf(band);
    EXPECT_EQ(map.at(-20), -20);
    EXPECT_EQ(map.at(-19), 0);
    EXPECT_EQ(map.at(-6), 0);
    EXPECT_EQ(map.at(5), 10);
    EXPECT_EQ(map.at(6), 0);
    EXPECT_EQ(map.at(20), 0);
}

TEST(EnhanceBand, ResponseIsCutToSixteenBits) {
    std::vector<int16_t> band = MakeBand();
    EXPECT_EQ(Enhance(band, {.ratio = 10000.0, .noiseWidth = 0.0, .curve = BandCurve::SigmoidGate}), 1);
    const std::map<int16_t, int16_t> map = MapOf(band);
    EXPECT_EQ(map.at(3), 30000);
    EXPECT_EQ(map.at(4), 40000 - 65536);
    EXPECT_EQ(map.at(20), 200000 - 3 * 65536);
    EXPECT_EQ(map.at(-20), -20);
}

TEST(EnhanceBand, ShowsTheBandBeforeAndAfterAndItsResponse) {
    std::vector<int16_t> band = MakeBand();
    const std::vector<int16_t> before = band;
    SeenPyramid seen;
    EXPECT_EQ(Enhance(band, {}, &seen), 1);
    EXPECT_EQ(seen.names,
              (std::vector<std::wstring>{L"Diff1_4.raw", L"EnhancedSlope_4.txt", L"Diff2_4.raw"}));
    EXPECT_EQ(seen.frames.at(L"Diff1_4.raw").pixels, std::vector<uint16_t>(before.begin(), before.end()));
    EXPECT_EQ(seen.frames.at(L"Diff2_4.raw").pixels, std::vector<uint16_t>(band.begin(), band.end()));
    EXPECT_EQ(seen.firstValue, -20);
    ASSERT_EQ(seen.response.size(), 41U);
    EXPECT_EQ(seen.response[20 + 5], 10);
}

// The mean of the lowest bins, 5 pixels over 5 bins, is the only smoothed count that is not 0. Its value,
// -30, is both ends of the noise: the limit is 30, the noise 21, and -10 lies on the line to 60 * 0.7^0.6
// = 48.44.
TEST(EnhanceBand, LowestBinAloneAboveTheCutIsBothEnds) {
    std::vector<int16_t> band = {-30, -30, -30, -30, -30, -10, 0};
    EXPECT_EQ(Enhance(band, {}), 1);
    EXPECT_EQ(band, (std::vector<int16_t>{-30, -30, -30, -30, -30, -23, 0}));
}

// Bands of values on one side of 0: 20 values a hundred times each, all above the cut.
TEST(EnhanceBand, BandNeedNotHoldZero) {
    for (const int16_t first : {int16_t{100}, int16_t{-119}}) {
        std::vector<int16_t> band;
        for (int16_t value = first; value < first + 20; ++value) band.insert(band.end(), 100U, value);
        EXPECT_EQ(Enhance(band, {.ratio = 1.0, .noiseWidth = 0.0, .curve = BandCurve::PowerGate}), 1);
        // The gain 1 keeps values, and the added 0.5 takes one off the magnitude of negative ones.
        const auto shift = static_cast<int16_t>(first < 0 ? 1 : 0);
        EXPECT_EQ(band.front(), first);
        EXPECT_EQ(band[100], first + 1 + shift);
        EXPECT_EQ(band.back(), first + 19 + shift);
    }
}

struct LeftCase {
    const char* name;
    Tuning tuning;
};

class LeftBandTest : public testing::TestWithParam<LeftCase> {};

TEST_P(LeftBandTest, StaysAsItIs) {
    std::vector<int16_t> band = MakeBand();
    SeenPyramid seen;
    EXPECT_EQ(Enhance(band, GetParam().tuning, &seen), 0);
    EXPECT_EQ(band, MakeBand());
    EXPECT_EQ(seen.names, std::vector<std::wstring>{L"Diff1_4.raw"});
}

INSTANTIATE_TEST_SUITE_P(NoCurve, LeftBandTest,
                         testing::Values(LeftCase{"NoBinAboveItsPeak", {.cutLimit = 1.0}},
                                         LeftCase{"CutFarAbovePeak", {.cutLimit = 1000.0}},
                                         LeftCase{"UnknownCurve", {.curve = BandCurve{2}}}),
                         [](const auto& test) { return test.param.name; });

TEST(EnhanceBand, NineteenStepsAreTooFewAndTwentyEnough) {
    std::vector<int16_t> band(400, 0);
    band[7] = 18;
    SeenPyramid seen;
    EXPECT_EQ(Enhance(band, {.tailMode = TailMode::Remove}, &seen), 0);
    EXPECT_EQ(band[7], 18);
    EXPECT_EQ(seen.names, std::vector<std::wstring>{L"Diff1_4.raw"});
    band[7] = 19;
    EXPECT_EQ(Enhance(band, {.tailMode = TailMode::Remove}), 1);
    EXPECT_EQ(band[7], 0);
}

// The search starts at maxValue and at -maxValue: values beyond these widen the band up to them.
TEST(EnhanceBand, RangeBeginsAtTheLargestPixel) {
    std::vector<int16_t> band(100, 5000);
    EXPECT_EQ(Enhance(band, {.ratio = 1.0, .curve = BandCurve::SigmoidGate}), 1);
    EXPECT_EQ(band, std::vector<int16_t>(100, 5000));
    EXPECT_EQ(EnhanceBand(band.data(), 100, 1, 5000, 1.0, 0.7, BandCurve::Power, 0.01, TailMode::Remove, 0,
                          nullptr),
              0);
}

TEST(EnhanceBand, HostileNumbersEndInAFrame) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    std::vector<int16_t> extremes = MakeBand();
    extremes.front() = -4095;
    extremes.back() = 4095;
    for (const double hostile : {kNaN, kInfinity, -kInfinity, 1e308, -1e308, 0.0, -1.0}) {
        for (const BandCurve curve : {BandCurve::SigmoidGate, BandCurve::Power, BandCurve::PowerGate}) {
            for (const Tuning& tuning :
                 {Tuning{.ratio = hostile, .curve = curve}, Tuning{.noiseWidth = hostile, .curve = curve},
                  Tuning{.curve = curve, .cutLimit = hostile, .tailMode = TailMode::Follow}}) {
                std::vector<int16_t> band = extremes;
                Enhance(band, tuning);
                EXPECT_EQ(band.front(), -4095);
            }
        }
    }
    std::vector<int16_t> widest(5, INT16_MIN);
    widest.insert(widest.end(), 5, INT16_MAX);
    EXPECT_EQ(Enhance(widest, {.cutLimit = -1.0, .tailMode = TailMode::Remove}), 1);
    EXPECT_EQ(widest.front(), INT16_MIN);
    std::vector<int16_t> nothing;
    EXPECT_EQ(Enhance(nothing, {}), 0);
}

}  // namespace
}  // namespace vastrelline
