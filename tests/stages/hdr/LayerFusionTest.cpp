// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <utility>
#include <vector>

#include "stages/hdr/LayerFusion.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/TransformFusion.h"

namespace vastrelline {
namespace {

using by_transforms::FusionArguments;

FusionArguments ArgumentsFor(const Frame& frame) {
    const auto [min, max] = std::minmax_element(frame.pixels.begin(), frame.pixels.end());
    return {*min, *max};
}

int32_t Fuse(Frame& frame, const Frame& hed, const FusionArguments& a) {
    return FuseLayers(frame.Data(), hed.Data(), frame.width, frame.height, a.min, a.max, a.edgeMax,
                      a.edgeOffset, a.maxLambda, a.wfSlope, a.alphaNorm, a.alphaHe, a.layerStep);
}

Frame Fused(Frame frame, const Frame& hed, const FusionArguments& arguments) {
    EXPECT_EQ(Fuse(frame, hed, arguments), 1);
    return frame;
}

// Slow waves, edges and noise, not the same at opposite borders.
Frame MakePicture(int32_t width, int32_t height, uint32_t seed) {
    Frame frame = Noise(width, height, 300, seed);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const double wave = 900 * std::sin(x * 0.07 + y * 0.02 + seed) + 600 * std::cos(y * 0.11);
            const int32_t edge = (x / 13 + y / 17) % 3 == 0 ? 700 : 0;
            frame.At(x, y) = static_cast<uint16_t>(frame.At(x, y) + 1600 + static_cast<int32_t>(wave) + edge);
        }
    }
    return frame;
}

struct Differences {
    size_t count = 0;
    int32_t largest = 0;
    size_t inLastRow = 0;
    size_t inLastColumn = 0;
};

Differences Compare(const Frame& expected, const Frame& actual) {
    Differences differences;
    for (int32_t y = 0; y < expected.height; ++y) {
        for (int32_t x = 0; x < expected.width; ++x) {
            const int32_t difference = std::abs(expected.At(x, y) - actual.At(x, y));
            if (difference == 0) continue;
            ++differences.count;
            differences.largest = std::max(differences.largest, difference);
            if (y == expected.height - 1) ++differences.inLastRow;
            if (x == expected.width - 1) ++differences.inLastColumn;
        }
    }
    return differences;
}

Frame FusedInDoubles(Frame frame, const Frame& hed, const FusionArguments& arguments) {
    by_transforms::FuseLayers<double>(frame.pixels, hed.pixels, frame.width, frame.height, arguments);
    return frame;
}

// Twenty sizes each, from the smallest of two layers on: even and odd, square, wide and high, and many
// primes.
class FusionAccuracyTest : public testing::TestWithParam<int32_t> {};

TEST_P(FusionAccuracyTest, IsThatOfSinglePrecisionAtMost) {
    size_t pixels = 0;
    size_t unequal = 0;
    for (int32_t i = GetParam(); i < 200; i += 10) {
        const int32_t width = 40 + i * 7 % 61;
        const int32_t height = 40 + i * 11 % 47 + (i % 17 == 0 ? 90 : 0);
        const Frame normal = MakePicture(width, height, static_cast<uint32_t>(i));
        const Frame hed = MakePicture(width, height, static_cast<uint32_t>(i + 1000));
        FusionArguments arguments = ArgumentsFor(normal);
        if (i % 3 == 1) arguments.alphaNorm = 0.6F;
        if (i % 3 == 2) arguments.alphaHe = 0.8F;
        if (i % 5 == 1) arguments.maxLambda = 0.4F;
        const Differences differences =
            Compare(FusedInDoubles(normal, hed, arguments), Fused(normal, hed, arguments));
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        EXPECT_LE(differences.largest, 1);
        EXPECT_LE(differences.inLastRow, 1U);
        EXPECT_LE(differences.inLastColumn, 1U);
        pixels += normal.pixels.size();
        unequal += differences.count;
    }
    EXPECT_LE(unequal * 1000, pixels);
}

INSTANTIATE_TEST_SUITE_P(TwentySizes, FusionAccuracyTest, testing::Range(0, 10));

struct SizeCase {
    const char* name;
    int32_t width;
    int32_t height;
};

class FusionSizeTest : public testing::TestWithParam<SizeCase> {};

// Where the coarse layer is so wide that it takes several steps, and the least sizes of two layers.
TEST_P(FusionSizeTest, AgreesWithDoublePrecision) {
    const Frame normal = MakePicture(GetParam().width, GetParam().height, 7);
    const Frame hed = MakePicture(GetParam().width, GetParam().height, 8);
    const FusionArguments arguments = ArgumentsFor(normal);
    const Differences differences =
        Compare(FusedInDoubles(normal, hed, arguments), Fused(normal, hed, arguments));
    EXPECT_LE(differences.largest, 1);
    EXPECT_LE(differences.count, std::max<size_t>(1, normal.pixels.size() / 1000));
    // The last row of an odd height differs by more in single precision.
    if (normal.width % 2 != 0 || normal.height % 2 != 0) return;
    Frame single = normal;
    by_transforms::FuseLayers<float>(single.pixels, hed.pixels, single.width, single.height, arguments);
    EXPECT_LE(Compare(single, Fused(normal, hed, arguments)).largest, 1);
}

INSTANTIATE_TEST_SUITE_P(Sizes, FusionSizeTest,
                         testing::Values(SizeCase{"LeastSquare", 30, 30}, SizeCase{"LeastWide", 41, 40},
                                         SizeCase{"Even", 180, 200}, SizeCase{"OddHeight", 170, 163},
                                         SizeCase{"OddWidth", 163, 170}, SizeCase{"Primes", 167, 181},
                                         SizeCase{"VeryWide", 600, 42}, SizeCase{"VeryHigh", 31, 601},
                                         SizeCase{"Wider", 300, 310}, SizeCase{"WiderOdd", 311, 307}),
                         [](const auto& test) { return test.param.name; });

TEST(LayerFusion, SixteenBitsKeepTheScaleOfTwelve) {
    Frame normal = Noise(44, 46, 65535, 5);
    const Frame hed = Noise(44, 46, 65535, 6);
    const FusionArguments arguments = ArgumentsFor(normal);
    const Differences differences =
        Compare(FusedInDoubles(normal, hed, arguments), Fused(normal, hed, arguments));
    EXPECT_LE(differences.largest, 1);
    EXPECT_LE(differences.count, 44U * 46U / 50);  // 16 times the levels, 16 times as many at a border
}

TEST(LayerFusion, ZeroAmongItsArgumentsLeavesTheFrame) {
    struct Case {
        const char* name;
        void (*change)(FusionArguments&);
    };
    const Frame normal = Noise(32, 32, 4095, 1);
    for (const Case& c : {Case{"edgeMax", [](FusionArguments& a) { a.edgeMax = 0; }},
                          Case{"edgeOffset", [](FusionArguments& a) { a.edgeOffset = 0; }},
                          Case{"maxLambda", [](FusionArguments& a) { a.maxLambda = -0.0F; }},
                          Case{"wfSlope", [](FusionArguments& a) { a.wfSlope = 0; }},
                          Case{"alphaNorm", [](FusionArguments& a) { a.alphaNorm = 0; }},
                          Case{"alphaHe", [](FusionArguments& a) { a.alphaHe = 0; }},
                          Case{"layerStep", [](FusionArguments& a) { a.layerStep = 0; }}}) {
        Frame frame = normal;
        FusionArguments arguments = ArgumentsFor(normal);
        c.change(arguments);
        EXPECT_EQ(Fuse(frame, Noise(32, 32, 4095, 2), arguments), 0) << c.name;
        EXPECT_THAT(frame, EqualsFrame(normal)) << c.name;
    }
}

TEST(LayerFusion, RefusesNullImagesAndFramesOfFewerThanTwoLayers) {
    Frame frame = Noise(32, 32, 4095, 1);
    EXPECT_EQ(FuseLayers(nullptr, frame.Data(), 32, 32, 0, 9, 1, 1, 1, 1, 1, 1, 1), 0);
    EXPECT_EQ(FuseLayers(frame.Data(), nullptr, 32, 32, 0, 9, 1, 1, 1, 1, 1, 1, 1), 0);
    for (const auto& [width, height] :
         {std::pair{29, 29}, std::pair{29, 35}, std::pair{31, 30}, std::pair{1, 1}, std::pair{2, 2},
          std::pair{9, 400}, std::pair{400, 9}, std::pair{400, 39}, std::pair{0, 0}, std::pair{0, 7}}) {
        Frame small = Noise(width, height, 4095, 3);
        const Frame before = small;
        EXPECT_EQ(Fuse(small, before, {0, 4095}), 0) << width << " x " << height;
        EXPECT_THAT(small, EqualsFrame(before));
    }
}

TEST(LayerFusion, FlatFrameStaysAndAFlatEqualisedOneGivesTheSmallestPixel) {
    EXPECT_THAT(Fused(Flat(33, 34, 777), Noise(33, 34, 4095, 1), {777, 777}), EqualsFrame(Flat(33, 34, 777)));
    const Frame noise = Noise(33, 34, 4095, 1);
    EXPECT_THAT(Fused(noise, Flat(33, 34, 500), {12, 4000}), EqualsFrame(Flat(33, 34, 12)));
}

TEST(LayerFusion, SlopeAndStepMatterOnlyWhenZero) {
    const Frame normal = MakePicture(50, 60, 1);
    const Frame hed = MakePicture(50, 60, 2);
    FusionArguments arguments = ArgumentsFor(normal);
    const Frame expected = Fused(normal, hed, arguments);
    arguments.wfSlope = -1e30F;
    arguments.layerStep = -7;
    EXPECT_THAT(Fused(normal, hed, arguments), EqualsFrame(expected));
}

TEST(LayerFusion, ExtremesOfTheFrameAreReached) {
    const Frame normal = MakePicture(60, 64, 3);
    const FusionArguments arguments = ArgumentsFor(normal);
    const Frame fused = Fused(normal, MakePicture(60, 64, 4), arguments);
    const auto beforeLastRow = fused.pixels.end() - 60;
    EXPECT_EQ(*std::min_element(fused.pixels.begin(), beforeLastRow), arguments.min);
    // The largest level is taken down by one where its quotient is not exact.
    EXPECT_GE(*std::max_element(fused.pixels.begin(), beforeLastRow), arguments.max - 1);
    for (const uint16_t pixel : fused.pixels) {
        EXPECT_GE(pixel, arguments.min);
        EXPECT_LE(pixel, arguments.max);
    }
}

// A last row far brighter than the rest cannot stretch the range: it is clamped to the largest pixel, and
// with it all that is brighter than the other rows.
TEST(LayerFusion, LastRowIsClampedToARangeThatItHasNoSayIn) {
    Frame normal = MakePicture(64, 64, 5);
    for (uint16_t& pixel : normal.pixels) pixel = static_cast<uint16_t>(pixel / 4);
    for (int32_t x = 0; x < 64; ++x) normal.At(x, 63) = 4095;
    const FusionArguments arguments = ArgumentsFor(normal);
    const Frame fused = Fused(normal, normal, arguments);
    for (int32_t x = 0; x < 64; ++x) EXPECT_EQ(fused.At(x, 63), 4095);
    EXPECT_LE(Compare(FusedInDoubles(normal, normal, arguments), fused).largest, 1);
}

TEST(LayerFusion, OddWidthShowsTheSpectrumInItsLastColumn) {
    const Frame normal = MakePicture(61, 64, 6);
    const FusionArguments arguments = ArgumentsFor(normal);
    const Frame fused = Fused(normal, MakePicture(61, 64, 7), arguments);
    // Its entries are so large that all other columns crowd together.
    const auto rangeOf = [&](int32_t left, int32_t right) {
        int32_t lowest = 65535;
        int32_t highest = 0;
        for (int32_t y = 0; y < 63; ++y) {
            for (int32_t x = left; x < right; ++x) {
                lowest = std::min<int32_t>(lowest, fused.At(x, y));
                highest = std::max<int32_t>(highest, fused.At(x, y));
            }
        }
        return highest - lowest;
    };
    EXPECT_GT(rangeOf(60, 61), 20 * rangeOf(0, 60));
}

TEST(LayerFusion, HostileArgumentsGivePixelsOfTheRange) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
    constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();
    constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
    for (const auto& [width, height] : {std::pair{31, 33}, std::pair{40, 42}}) {
        const Frame normal = Noise(width, height, 4095, 8);
        const Frame hed = Noise(width, height, 4095, 9);
        for (const float value : {kInfinity, -kInfinity, kNone, 3e38F, -3e38F, 1e-44F, -1e20F}) {
            for (const FusionArguments& arguments :
                 {FusionArguments{5, 4000, 1, 1, value, 1, 0.3F, 0.3F},
                  FusionArguments{5, 4000, 1, 1, 0.9F, value, value, 0.3F},
                  FusionArguments{5, 4000, kLeast, kMost, 0.9F, 1, 0.3F, value},
                  FusionArguments{5, 4000, kMost, kLeast, value, value, value, value, kLeast}}) {
                for (const uint16_t pixel : Fused(normal, hed, arguments).pixels) {
                    ASSERT_GE(pixel, 5);
                    ASSERT_LE(pixel, 4000);
                }
            }
        }
        // Shares that are no numbers leave nothing but the smallest pixel.
        EXPECT_THAT(Fused(normal, hed, {5, 4000, 1, 1, kNone}), EqualsFrame(Flat(width, height, 5)));
    }
}

// Entries of the spectrum may pass 32 bits; the conversion makes the least number of them, and so `min`.
TEST(LayerFusion, EntryBeyond32BitsGivesTheSmallestPixel) {
    Frame frame = Flat(64, 61, 0);
    for (int32_t y = 0; y < 61; ++y) {
        if (y >= 15 && y < 46) continue;
        for (int32_t x = 0; x < 64; ++x) frame.At(x, y) = 4095;
    }
    FusionArguments arguments{7, 2000000000};
    arguments.alphaNorm = arguments.alphaHe = 0.9F;
    EXPECT_EQ(Fused(frame, frame, arguments).At(0, 60), 7);
    EXPECT_EQ(FusedInDoubles(frame, frame, arguments).At(0, 60), 7);
}

}  // namespace
}  // namespace vastrelline
