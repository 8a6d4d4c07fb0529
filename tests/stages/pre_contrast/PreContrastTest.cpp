// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "stages/pre_contrast/PreContrast.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ToVector.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

Frame Enhanced(Frame frame, const PreContrastParams& params, int32_t maxValue = kTwelveBits) {
    ApplyPreContrast(frame.Data(), frame.width, frame.height, maxValue, params);
    return frame;
}

struct PixelCase {
    const char* name;
    uint16_t image;
    uint16_t smoothed;
    double ratio;
    int32_t maxValue;
    uint16_t expected;
};

class AmplifyDifferenceTest : public testing::TestWithParam<PixelCase> {};

TEST_P(AmplifyDifferenceTest, OnePixel) {
    const PixelCase& c = GetParam();
    uint16_t pixel = c.image;
    AmplifyDifferenceScalar({&pixel, &c.smoothed, 1, c.maxValue, c.ratio});
    EXPECT_EQ(pixel, c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Limits, AmplifyDifferenceTest,
    testing::Values(PixelCase{"MovesAway", 120, 100, 1.5, kTwelveBits, 130},
                    PixelCase{"RatioOfOneIsTheImage", 17, 4000, 1.0, kTwelveBits, 17},
                    PixelCase{"RatioBelowOneSoftens", 120, 100, 0.5, kTwelveBits, 110},
                    PixelCase{"NegativeRatioPassesTheSmoothed", 120, 100, -1.0, kTwelveBits, 80},
                    PixelCase{"TruncatesTowardZero", 11, 10, 1.75, kTwelveBits, 11},          // 11.75
                    PixelCase{"MinusOneBecomesZero", 0, 4, 1.25, kTwelveBits, 0},             // 4 - 5
                    PixelCase{"TopIsInRange", 4094, 4090, 1.25, kTwelveBits, 4095},           // 4090 + 5
                    PixelCase{"OneAboveTopBecomesTop", 4095, 4091, 1.25, kTwelveBits, 4095},  // 4091 + 5
                    PixelCase{"OneAboveTopOf16Bits", 65535, 65531, 1.25, 65535, 65535},
                    PixelCase{"BeyondInt32CountsAsTheSmallest", 2, 1, 1e300, kTwelveBits, 0},
                    PixelCase{"NotANumber", 5, 5, kInfinity, kTwelveBits, 0}),  // 0 * infinity
    [](const auto& test) { return test.param.name; });

const Frame kBrightLeft = FromRows({{4000, 0, 0, 0, 0, 0, 0, 0}});

// Sigma 1 smooths the row to 2798, 1201, 233, 17, 0, ... 2798 + 1202 * 0.5 is 3399, 1201 - 1201 * 0.5 is
// 600.5; with 1.25 the first is 4300.5 and the others are negative.
TEST(PreContrast, MovesAwayFromTheSmoothedFrame) {
    EXPECT_THAT(Enhanced(kBrightLeft, {1.0, 0.5, 1.0}),
                EqualsFrame(FromRows({{3399, 600, 116, 8, 0, 0, 0, 0}})));
    EXPECT_THAT(Enhanced(kBrightLeft, {1.0, 1.25, 1.0}),
                EqualsFrame(FromRows({{4095, 0, 0, 0, 0, 0, 0, 0}})));
}

TEST(PreContrast, GivesTheSmoothedFrame) {
    Frame frame = kBrightLeft;
    EXPECT_EQ(ToVector(ApplyPreContrast(frame.Data(), 8, 1, kTwelveBits, {1.0, 1.25, 1.0})),
              (std::vector<uint16_t>{2798, 1201, 233, 17, 0, 0, 0, 0}));
}

// At a sigma this small the Gaussian changes nothing, and the smoothed frame is the one that went down and up
// again: {100 150 200 200 / 200 275 200 200 / 300 300 500 500 / 300 300 500 500}.
TEST(PreContrast, RescaleAboveOneReducesTheSmoothing) {
    const Frame frame = FromRows({{100, 9, 200, 9}, {9, 9, 9, 9}, {300, 9, 500, 9}, {9, 9, 9, 9}});
    const Frame halfWay =
        FromRows({{100, 79, 200, 104}, {104, 142, 104, 104}, {300, 154, 500, 254}, {154, 154, 254, 254}});
    EXPECT_THAT(Enhanced(frame, {0.02, 0.5, 2.0}), EqualsFrame(halfWay));
    EXPECT_THAT(Enhanced(frame, {0.02, 0.5, 2.999}), EqualsFrame(halfWay));
    // Up to 1 the frame keeps its resolution, and above it the factor is truncated.
    for (const double rescale : {1.0, 1.9, 0.5, 0.0, -2.0, -1e308, kNotANumber})
        EXPECT_THAT(Enhanced(frame, {0.02, 0.5, rescale}), EqualsFrame(frame)) << rescale;
}

TEST(PreContrast, FactorOfOneSmoothsLikeFullResolution) {
    EXPECT_THAT(Enhanced(kBrightLeft, {1.0, 0.5, 1.9}),
                EqualsFrame(FromRows({{3399, 600, 116, 8, 0, 0, 0, 0}})));
}

// Taps of 0.05, 0.25, 0.4, 0.25 and 0.05 around the edges: 400, 250, 50, 0, 0, 50, 250.
TEST(PreContrast, MaskOfZeroIsTheFixedKernelAroundTheEdges) {
    EXPECT_THAT(Enhanced(FromRows({{1000, 0, 0, 0, 0, 0, 0}}), {0.0, 0.5, 1.0}),
                EqualsFrame(FromRows({{700, 125, 25, 0, 0, 25, 125}})));
}

// At half resolution only pixels on even columns of even rows are seen. All of these are 1000, so the
// smoothed frame is, but for a level that the Gaussian may lose: 1000 + 100 * 1.25 is 1125, 999 + 101 * 1.25
// is 1125.25.
TEST(PreContrast, DefaultsSmoothAtHalfResolutionAndAddAQuarter) {
    Frame frame = Flat(41, 30, 1000);
    Frame expected = frame;
    for (int32_t y = 0; y < 30; ++y) {
        for (int32_t x = 0; x < 41; ++x) {
            if (x % 2 == 0 && y % 2 == 0) continue;
            frame.At(x, y) = (x + y) % 3 == 0 ? 900 : 1100;
            expected.At(x, y) = (x + y) % 3 == 0 ? 875 : 1125;
        }
    }
    EXPECT_THAT(Enhanced(frame, {}), EqualsFrame(expected));
}

// The mask of 15 is one of 7.5 there, whose kernel reaches 19 pixels. Columns 0, 2, ... 78 of the step's dark
// side are 0 to 39 then, so column 40 is the last that sees none of the bright side, and column 42 sees it
// with the outermost tap, exp(-19^2 / (2 * 7.5^2)) / 18.6 = 0.00217, which is 2 levels: 1002 - 2 * 1.25 =
// 999.5.
TEST(PreContrast, DefaultMaskReaches38Pixels) {
    Frame frame = Flat(160, 2, 1000);
    for (int32_t y = 0; y < 2; ++y)
        for (int32_t x = 80; x < 160; ++x) frame.At(x, y) = 2000;
    const Frame enhanced = Enhanced(frame, {});
    EXPECT_EQ(enhanced.At(40, 0), 1000);
    EXPECT_EQ(enhanced.At(42, 0), 999);
}

// The smoothing may lose one level of a flat frame; the difference of 1 makes up for it.
TEST(PreContrast, FlatFrameOfAnyShapeStaysFlat) {
    const int32_t shapes[][2] = {{0, 3}, {1, 1}, {1, 7}, {7, 1}, {2, 2}, {5, 3}, {30, 20}};
    for (const auto& [width, height] : shapes)
        for (const uint16_t level : {uint16_t{0}, uint16_t{1000}, uint16_t{4095}})
            for (const double rescale : {1.0, 2.0, 4.0})
                EXPECT_THAT(Enhanced(Flat(width, height, level), {15.0, 1.25, rescale}),
                            EqualsFrame(Flat(width, height, level)))
                    << rescale;
}

TEST(PreContrast, SmoothingThatCannotRunLeavesTheFrame) {
    const Frame frame = Noise(6, 4, kTwelveBits, 2);
    for (const double mask : {-4.0, -1e300, 1e9, 1e300, kInfinity, -kInfinity, kNotANumber})
        for (const double rescale : {1.0, 2.0, 3.0})
            EXPECT_THAT(Enhanced(frame, {mask, 1.25, rescale}), EqualsFrame(frame)) << mask << ' ' << rescale;
    for (const double rescale : {32768.0, 1e9, 1e308, kInfinity})
        EXPECT_THAT(Enhanced(frame, {15.0, 1.25, rescale}), EqualsFrame(frame)) << rescale;
}

// Between guards, from sizes below a vector to beyond several.
std::vector<uint16_t> Amplified(const AmplifyVariant& variant, const Frame& image, const Frame& smoothed,
                                int32_t maxValue, double ratio) {
    constexpr size_t kGuards = 16;
    constexpr uint16_t kGuard = 0xA5C3;
    std::vector<uint16_t> pixels(image.pixels.size() + 2 * kGuards, kGuard);
    std::copy(image.pixels.begin(), image.pixels.end(), pixels.begin() + kGuards);
    variant.run({pixels.data() + kGuards, smoothed.Data(), image.pixels.size(), maxValue, ratio});
    return pixels;
}

TEST(AmplifyVariants, GiveTheReferenceBitsAndWriteNothingElse) {
    for (int32_t count = 0; count <= 40; ++count) {
        for (const uint16_t top : {uint16_t{0}, uint16_t{1}, uint16_t{4095}, uint16_t{65535}}) {
            const Frame image = Noise(count, 1, top, 20240601);
            const Frame smoothed = Noise(count, 1, top, 20240602);
            for (const double ratio :
                 {1.25, 0.0, 1.0, -0.7, 1.0 / 3, 40000.0, -40000.0, 1e308, kInfinity, kNotANumber})
                for (const int32_t maxValue : {4095, 65535, 0, -1, INT_MAX, INT_MIN})
                    for (const AmplifyVariant& variant : AmplifyVariants().subspan(1))
                        ASSERT_EQ(Amplified(AmplifyVariants().front(), image, smoothed, maxValue, ratio),
                                  Amplified(variant, image, smoothed, maxValue, ratio))
                            << variant.name << ' ' << count << ' ' << top << ' ' << ratio << ' ' << maxValue;
        }
    }
}

TEST(AmplifyVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(AmplifyVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(AmplifyVariants, TheLastOneRuns) {
    Frame frame = Noise(9, 7, kTwelveBits, 5);
    ExpectLastFormRuns(AmplifyVariants, 1, [&] {
        ApplyPreContrast(frame.Data(), frame.width, frame.height, kTwelveBits, {15.0, 1.25, 1.0});
    });
}

}  // namespace
}  // namespace vastrelline
