// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "operators/resample/Resize.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/Border.h"
#include "platform/InstructionSet.h"
#include "stages/pyramid/EnhanceBand.h"
#include "stages/pyramid/Pyramid.h"
#include "stages/pyramid/SeenPyramid.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;
constexpr PyramidForm kConfigured = {TailMode::Pass, true};
constexpr PyramidForm kFixed = {TailMode::Remove, false};

Frame Processed(Frame frame, const PyramidParams& params, const PyramidForm& form,
                PyramidObserver* observer = nullptr, BandCurve curve = BandCurve::Power,
                int32_t maxValue = kTwelveBits) {
    TonedFrame toned({frame.Data(), frame.width, frame.height});
    PyramidProcess(toned, maxValue, curve, params, form, observer);
    return frame;
}

Frame Resized(const Frame& frame, double scale) {
    const OwnedFrame resized = ResizeBilinear(frame.Data(), frame.width, frame.height, scale);
    return {resized.width, resized.height, resized.pixels};
}

Frame Smoothed(Frame frame, double sigma) {
    GaussFilterReplicate(frame.Data(), frame.width, frame.height, kTwelveBits, sigma);
    return frame;
}

struct BandSetting {
    double gain;
    double cutLimit;
};

// The stage in its plainest words: whole frames, a copy for each step, nothing left out. The bands' gains and
// cut limits are worked out by the caller.
Frame PlainPyramid(const Frame& frame, const PyramidParams& params, const PyramidForm& form, BandCurve curve,
                   const std::vector<BandSetting>& bandSettings) {
    const int32_t multiple = 1 << params.PYRAMID_LAYER;
    const int32_t padWidth = multiple - frame.width % multiple;
    const int32_t padHeight = multiple - frame.height % multiple;
    Frame level(frame.width + padWidth, frame.height + padHeight,
                *ExtendImage(frame.Data(), frame.width, frame.height, padWidth, padHeight,
                             BorderMode::BorderTrailing));
    const int32_t paddedWidth = level.width;
    std::vector<std::vector<int16_t>> bands;
    for (size_t i = 0; i < bandSettings.size(); ++i) {
        const Frame source = level;
        level = Resized(Smoothed(source, params.GAUSSIAN_SIZE), 0.5);
        const Frame expanded = Smoothed(Resized(level, 2.0), params.GAUSSIAN_SIZE);
        std::vector<int16_t> band;
        for (size_t p = 0; p < source.pixels.size(); ++p)
            band.push_back(static_cast<int16_t>(source.pixels[p] - expanded.pixels[p]));
        if (params.APPLY_DIFF_ENHANCE != 0) {
            EnhanceBand(band.data(), source.width, source.height, kTwelveBits, bandSettings[i].gain,
                        params.NOISE_WIDTH, curve, bandSettings[i].cutLimit, form.tailMode,
                        static_cast<int32_t>(i), nullptr);
        }
        bands.push_back(band);
    }
    for (; !bands.empty(); bands.pop_back()) {
        level = Resized(level, 2.0);
        if (form.isRebuildSmoothed) level = Smoothed(level, params.GAUSSIAN_SIZE);
        for (size_t p = 0; p < level.pixels.size(); ++p) {
            const int32_t sum = level.pixels[p] + bands.back()[p];
            level.pixels[p] = static_cast<uint16_t>(std::clamp(sum, 0, kTwelveBits));
        }
    }
    Frame result(frame.width, frame.height);
    CropImage(level.Data(), result.Data(), paddedWidth, frame.height + padHeight, padWidth, padHeight,
              BorderMode::BorderTrailing);
    return result;
}

struct PlainCase {
    const char* name;
    PyramidParams params;
    std::vector<BandSetting> bandSettings;
};

class PlainPyramidTest : public testing::TestWithParam<PlainCase> {};

TEST_P(PlainPyramidTest, GivesThePixelsOfThePlainWords) {
    const PlainCase& c = GetParam();
    for (const Frame& frame : {Noise(37, 21, 4095, 1), Noise(16, 8, 300, 2), Ramp(9, 30, 100, 130, 60)}) {
        for (const PyramidForm& form : {kConfigured, kFixed}) {
            for (const BandCurve curve : {BandCurve::Power, BandCurve::SigmoidGate, BandCurve::PowerGate}) {
                EXPECT_THAT(Processed(frame, c.params, form, nullptr, curve),
                            EqualsFrame(PlainPyramid(frame, c.params, form, curve, c.bandSettings)))
                    << frame.width << ", curve " << static_cast<int>(curve);
            }
        }
    }
}

// With variable ratio, band 1 gets ratio / layers and band i ratio * (i + 1) / layers, both clamped to 1 from
// below, then to the ratio from above; the cut limit is divided by 1, 10, 20, ... in turn.
INSTANTIATE_TEST_SUITE_P(
    Settings, PlainPyramidTest,
    testing::Values(
        PlainCase{"Defaults", {}, {{1.5, 0.01}, {1.5, 0.01}}},
        PlainCase{"TwoLayers", {2, 2.0, 0, 3.0, 0.2, 1, 0.3}, {{3.0, 0.3}}},
        PlainCase{"BandsUntouched", {4, 0.6, 0, 3.0, 0.7, 0, 0.01}, {{0, 0}, {0, 0}, {0, 0}}},
        PlainCase{"VariableRatio", {3, 1.0, 1, 1.5, 0.7, 1, 0.5}, {{1.0, 0.5}, {1.5, 0.5 / 10}}},
        PlainCase{"VariableRatioOfFour",
                  {4, 1.0, -1, 3.0, 0.7, 1, 0.9},
                  {{1.0, 0.9}, {2.25, 0.9 / 10}, {3.0, 0.9 / 10 / 20}}},
        PlainCase{"VariableRatioFirstBandAboveOne", {3, 1.0, 1, 6.0, 0.7, 1, 0.5}, {{2.0, 0.5}, {6.0, 0.05}}},
        PlainCase{"VariableRatioBelowOne", {3, 1.0, 1, 0.5, 0.7, 1, 0.5}, {{0.5, 0.5}, {0.5, 0.05}}},
        PlainCase{"WrappingKernel", {3, 0.0, 0, 2.0, 0.7, 1, 0.01}, {{2.0, 0.01}, {2.0, 0.01}}},
        PlainCase{"SigmaThatLeavesFrames", {3, -5.0, 0, 2.0, 0.7, 1, 0.01}, {{2.0, 0.01}, {2.0, 0.01}}}),
    [](const auto& test) { return test.param.name; });

TEST(PyramidProcess, EveryInstructionSetGivesTheReferenceBits) {
    const Frame frame = Noise(83, 45, 4095, 3);
    for (const PyramidForm& form : {kConfigured, kFixed}) {
        const auto processed = [&](InstructionSet set) {
            const ScopedInstructionSet limit(set);
            return Processed(frame, {}, form);
        };
        const Frame expected = processed(InstructionSet::Reference);
        for (const InstructionSet set :
             {InstructionSet::Baseline, InstructionSet::Avx2, InstructionSet::Avx512}) {
            EXPECT_THAT(processed(set), EqualsFrame(expected)) << static_cast<int>(set);
        }
    }
}

// A sigma this small has the kernel 0, 1, 0. The frame is padded to 4 x 4 by rows of 0, 30, 0, 0. The coarse
// level is all 0, so the band is the frame: twelve times 0, four times 30. Its smoothed histogram is above 0
// from 0 to 5 (12 / 5, 12 / 6, ... 12 / 9, and 12 / 11 at 5), and the noise limit is 5.
TEST(PyramidProcess, TailBeyondTheNoiseLimitPassesOrGoes) {
    const PyramidParams params = {.PYRAMID_LAYER = 2, .GAUSSIAN_SIZE = 0.02};
    const Frame frame = FromRows({{0, 30, 0}});
    EXPECT_THAT(Processed(frame, params, kConfigured), EqualsFrame(frame));
    EXPECT_THAT(Processed(frame, params, kFixed), EqualsFrame(FromRows({{0, 0, 0}})));
}

// With the same kernel the level below 1000 holds 1000, and the band of 4000 is 3000.
TEST(PyramidProcess, SumsAreClampedToTheLargestValue) {
    const PyramidParams params = {.PYRAMID_LAYER = 2, .GAUSSIAN_SIZE = 0.02, .APPLY_DIFF_ENHANCE = 0};
    EXPECT_THAT(Processed(Flat(3, 2, 4000), params, kConfigured, nullptr, BandCurve::Power, 1000),
                EqualsFrame(Flat(3, 2, 1000)));
}

// Bands that nothing changed are taken away from the very levels to which they are added again.
TEST(PyramidProcess, UntouchedBandsGiveTheFrameBack) {
    for (const double sigma : {0.0, 1.0, 3.3}) {
        const PyramidParams params = {.PYRAMID_LAYER = 4, .GAUSSIAN_SIZE = sigma, .APPLY_DIFF_ENHANCE = 0};
        const Frame frame = Noise(45, 33, 4095, 4);
        EXPECT_THAT(Processed(frame, params, kConfigured), EqualsFrame(frame)) << sigma;
    }
}

TEST(PyramidProcess, FramesOfOneLevelStay) {
    for (const auto& [width, height] : {std::pair{1, 1}, std::pair{1, 40}, std::pair{40, 1}, std::pair{2, 2},
                                        std::pair{33, 17}, std::pair{0, 5}, std::pair{5, 0}}) {
        for (const uint16_t level : {uint16_t{0}, uint16_t{1}, uint16_t{1000}, uint16_t{4095}}) {
            const Frame frame = Flat(width, height, level);
            EXPECT_THAT(Processed(frame, {}, kConfigured), EqualsFrame(frame)) << level;
        }
        EXPECT_THAT(Processed(Flat(width, height, 0), {}, kFixed), EqualsFrame(Flat(width, height, 0)));
        EXPECT_THAT(Processed(Flat(width, height, 4095), {}, kFixed), EqualsFrame(Flat(width, height, 4095)));
    }
}

TEST(PyramidProcess, LayersOutsideTheLimitsLeaveTheFrameUnseen) {
    const Frame frame = Noise(9, 7, 4095, 5);
    for (const int32_t layers : {0, -1, INT_MIN, 15, 28, 29, 31, 32, 64, INT_MAX}) {
        SeenPyramid seen;
        EXPECT_THAT(Processed(frame, {.PYRAMID_LAYER = layers}, kConfigured, &seen), EqualsFrame(frame));
        EXPECT_TRUE(seen.names.empty()) << layers;
    }
}

TEST(PyramidProcess, OneLayerHasNoBand) {
    const Frame frame = Noise(9, 7, 4095, 5);
    SeenPyramid seen;
    EXPECT_THAT(Processed(frame, {.PYRAMID_LAYER = 1}, kFixed, &seen), EqualsFrame(frame));
    EXPECT_EQ(seen.names, std::vector<std::wstring>{L"PyramidProc_00_OriginalExp_10X8.raw"});
    EXPECT_THAT(Processed(frame, {.PYRAMID_LAYER = 1}, kFixed), EqualsFrame(frame));
}

TEST(PyramidProcess, MultiplesArePaddedByOneMore) {
    for (const auto& [width, name] : {std::pair{1000, L"PyramidProc_00_OriginalExp_1008X8.raw"},
                                      std::pair{1001, L"PyramidProc_00_OriginalExp_1008X8.raw"},
                                      std::pair{1007, L"PyramidProc_00_OriginalExp_1008X8.raw"},
                                      std::pair{1008, L"PyramidProc_00_OriginalExp_1016X8.raw"}}) {
        SeenPyramid seen;
        Processed(Flat(width, 1, 7), {}, kConfigured, &seen);
        EXPECT_EQ(seen.names.front(), name);
    }
}

// With the kernel 0, 1, 0 all is read off the frame: columns 0 and 2 make the coarse level, their means fill
// the gap between them, and the last of them is repeated. The last two rows have no means.
TEST(PyramidProcess, ShowsEveryStepInItsOrder) {
    const PyramidParams params = {.PYRAMID_LAYER = 2, .GAUSSIAN_SIZE = 0.02};
    SeenPyramid seen;
    Processed(FromRows({{10, 13, 20}}), params, kConfigured, &seen);
    EXPECT_EQ(seen.names, (std::vector<std::wstring>{L"PyramidProc_00_OriginalExp_4X4.raw",
                                                     L"PyramidProc_Gaussian0_4X4.raw", L"Laplacian0_4X4.raw",
                                                     L"Diff1_0.raw", L"EnhancedLaplacian0_4X4.raw",
                                                     L"EnhancedSum0_4X4.raw"}));
    using Row = std::initializer_list<uint16_t>;
    const auto seenAs = [&](const wchar_t* name, Row upper, Row lower) {
        EXPECT_THAT(seen.frames.at(name), EqualsFrame(FromRows({upper, upper, lower, lower})));
    };
    seenAs(L"PyramidProc_00_OriginalExp_4X4.raw", {10, 13, 20, 20}, {10, 13, 20, 20});
    seenAs(L"PyramidProc_Gaussian0_4X4.raw", {10, 15, 20, 20}, {10, 10, 20, 20});
    seenAs(L"Laplacian0_4X4.raw", {0, 0xFFFE, 0, 0}, {0, 3, 0, 0});
    seenAs(L"EnhancedLaplacian0_4X4.raw", {0, 0xFFFE, 0, 0}, {0, 3, 0, 0});
    seenAs(L"EnhancedSum0_4X4.raw", {10, 13, 20, 20}, {10, 13, 20, 20});
}

TEST(PyramidProcess, BandsAreShownFromFineToCoarseAndSumsBack) {
    SeenPyramid seen;
    Processed(Noise(9, 5, 4095, 6), {.APPLY_DIFF_ENHANCE = 0}, kConfigured, &seen);
    EXPECT_EQ(
        seen.names,
        (std::vector<std::wstring>{
            L"PyramidProc_00_OriginalExp_16X8.raw", L"PyramidProc_Gaussian0_16X8.raw", L"Laplacian0_16X8.raw",
            L"EnhancedLaplacian0_16X8.raw", L"PyramidProc_Gaussian1_8X4.raw", L"Laplacian1_8X4.raw",
            L"EnhancedLaplacian1_8X4.raw", L"EnhancedSum1_8X4.raw", L"EnhancedSum0_16X8.raw"}));
}

TEST(PyramidProcess, LookingOnChangesNoPixel) {
    const Frame frame = Noise(37, 21, 4095, 7);
    for (const PyramidForm& form : {kConfigured, kFixed}) {
        SeenPyramid seen;
        EXPECT_THAT(Processed(frame, {}, form, &seen), EqualsFrame(Processed(frame, {}, form)));
    }
}

TEST(PyramidProcess, HostileSettingsStayInRange) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    const Frame frame = Noise(21, 9, 4095, 8);
    for (const double hostile : {kNaN, std::numeric_limits<double>::infinity(), 1e308, -1e308, 0.0, 1e9}) {
        for (const PyramidParams& params :
             {PyramidParams{.GAUSSIAN_SIZE = hostile}, PyramidParams{.ENHANCED_RATIO = hostile},
              PyramidParams{.APPLY_VARIABLE_RATIO = 1, .ENHANCED_RATIO = hostile},
              PyramidParams{.NOISE_WIDTH = hostile}, PyramidParams{.NOISE_CUTLIMIT = hostile},
              PyramidParams{.PYRAMID_LAYER = 7, .NOISE_CUTLIMIT = hostile}}) {
            const Frame result = Processed(frame, params, kFixed);
            EXPECT_LE(*std::max_element(result.pixels.begin(), result.pixels.end()), kTwelveBits);
        }
    }
}

}  // namespace
}  // namespace vastrelline
