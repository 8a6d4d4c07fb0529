// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "stages/adaptive_unsharp/SobelMagnitude.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

Frame MagnitudesOf(Frame frame) {
    SobelMagnitudeInPlace(frame.Data(), frame.width, frame.height);
    return frame;
}

struct SobelCase {
    const char* name;
    Frame frame;
    uint16_t magnitude;  // of the pixel (1, 1); the border is 0
};

class SobelMagnitudeTest : public testing::TestWithParam<SobelCase> {};

TEST_P(SobelMagnitudeTest, GivesTheMagnitude) {
    EXPECT_THAT(MagnitudesOf(GetParam().frame), EqualsFrame(Impulse(3, 3, 1, 1, GetParam().magnitude)));
}

INSTANTIATE_TEST_SUITE_P(
    Frames, SobelMagnitudeTest,
    testing::Values(
        SobelCase{"Flat", Flat(3, 3, 4095), 0},
        // (100 + 2 * 100 + 100) / 4
        SobelCase{"StepAcross", FromRows({{0, 0, 100}, {0, 0, 100}, {0, 0, 100}}), 100},
        SobelCase{"StepDown", FromRows({{70, 70, 70}, {70, 70, 70}, {0, 0, 0}}), 70},
        // gx = 16 / 4, gy = 12 / 4: the middle of a side counts twice, a corner once in both
        SobelCase{"BothDirections", FromRows({{0, 0, 0}, {0, 99, 8}, {0, 6, 0}}), 5},
        // 7 / 4 is 1 and -7 / 4 is -1, not -2: the root of 1 + 1 is cut to 1, that of 4 + 4 would be 2
        SobelCase{"QuartersTruncateTowardZero", FromRows({{7, 0, 0}, {0, 0, 0}, {0, 0, 0}}), 1},
        SobelCase{"BelowFourIsNothing", FromRows({{3, 0, 0}, {0, 0, 0}, {0, 0, 0}}), 0},
        // gx = gy = 3 * 65535 / 4, cut to 49151: the root of 2 * 49151^2 is 69510.01; less 65536
        SobelCase{"PastSixteenBitsKeepsTheLowOnes", FromRows({{0, 0, 0}, {0, 0, 65535}, {0, 65535, 65535}}),
                  3974}),
    [](const auto& test) { return test.param.name; });

TEST(SobelMagnitude, FramesWithoutAnInnerPixelBecomeZero) {
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 2}, {1, 9}, {9, 1}, {2, 7}, {7, 2}}) {
        EXPECT_THAT(MagnitudesOf(Noise(width, height, 65535, 1)), EqualsFrame(Flat(width, height, 0)));
    }
    MagnitudesOf(Frame(0, 5));
}

TEST(SobelMagnitude, MirroredFrameGivesMirroredMagnitudes) {
    const Frame frame = Noise(41, 17, 65535, 20240509);
    EXPECT_THAT(MagnitudesOf(MirrorLeftRight(frame)), EqualsFrame(MirrorLeftRight(MagnitudesOf(frame))));
    EXPECT_THAT(MagnitudesOf(MirrorTopBottom(frame)), EqualsFrame(MirrorTopBottom(MagnitudesOf(frame))));
}

constexpr size_t kGuards = 40;
constexpr uint16_t kGuard = 0xA5C3;

// Runs a form over three rows of exact length and gives the magnitudes with the guards around them.
std::vector<uint16_t> RunRow(const SobelRowVariant& variant, const Frame& rows) {
    const int32_t count = rows.width - 2;
    const auto row = [&](int32_t y) {
        const auto first = rows.pixels.begin() + ptrdiff_t{y} * rows.width;
        return std::vector<uint16_t>(first, first + rows.width);
    };
    const std::vector<uint16_t> above = row(0), centre = row(1), below = row(2);
    std::vector<uint16_t> result(static_cast<size_t>(count) + 2 * kGuards, kGuard);
    variant.run({above.data(), centre.data(), below.data(), count, result.data() + kGuards});
    return result;
}

void ExpectAllVariantsEqual(const Frame& rows) {
    const std::vector<uint16_t> expected = RunRow(SobelRowVariants().front(), rows);
    for (const SobelRowVariant& variant : SobelRowVariants().subspan(1)) {
        ASSERT_EQ(expected, RunRow(variant, rows)) << variant.name << ", " << rows.width - 2 << " pixels";
    }
}

TEST(SobelRowVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(SobelRowVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(SobelRowVariants, TheLastOneRuns) {
    Frame frame = Noise(9, 7, 4095, 5);
    ExpectLastFormRuns(SobelRowVariants, 1,
                       [&] { SobelMagnitudeInPlace(frame.Data(), frame.width, frame.height); });
}

// 16383 is the largest pixel that lanes of 16 bits hold. One pixel above it, wherever it stands, must be
// seen.
TEST(SobelRowVariants, EveryLengthAndRangeGivesTheReferenceBits) {
    for (int32_t width = 3; width <= 102; ++width) {
        for (const uint16_t top : {uint16_t{4095}, uint16_t{16383}, uint16_t{16384}, uint16_t{65535}}) {
            ExpectAllVariantsEqual(Noise(width, 3, top, 20240510));
            Frame extremes = Noise(width, 3, 1, 20240511);
            for (uint16_t& pixel : extremes.pixels) pixel = pixel == 0 ? uint16_t{0} : top;
            ExpectAllVariantsEqual(extremes);
        }
        if (HasFatalFailure()) return;
    }
    for (int32_t place = 0; place < 3 * 67; ++place)
        ExpectAllVariantsEqual(Impulse(67, 3, place % 67, place / 67, 16384));
}

// The sums of squares just below, at and just above those of whole lengths, for lanes of 16 bits. Each stands
// in the middle of three columns of its own: a row of gy below gives gy, 2 * gx at the right gives gx.
TEST(SobelRowVariants, RootsNextToWholeNumbersAreExact) {
    struct Length {
        int32_t gx;
        int32_t gy;
        int32_t length;
    };
    std::vector<Length> lengths;
    for (int32_t k = 1; k < 16384; k += 5) lengths.insert(lengths.end(), {{0, k, k}, {1, k, k}});
    // (2t)^2 + (2t^2)^2 is (2t^2 + 1)^2 less 1.
    for (int32_t t = 1; t <= 90; ++t) lengths.push_back({2 * t, 2 * t * t, 2 * t * t});
    Frame rows(static_cast<int32_t>(lengths.size()) * 3, 3);
    for (size_t i = 0; i < lengths.size(); ++i) {
        const auto x = static_cast<int32_t>(3 * i);
        for (int32_t k = 0; k < 3; ++k) rows.At(x + k, 2) = static_cast<uint16_t>(lengths[i].gy);
        rows.At(x + 2, 1) = static_cast<uint16_t>(2 * lengths[i].gx);
    }
    for (const SobelRowVariant& variant : SobelRowVariants()) {
        const std::vector<uint16_t> result = RunRow(variant, rows);
        for (size_t i = 0; i < lengths.size(); ++i)
            ASSERT_EQ(result[kGuards + 3 * i], lengths[i].length)
                << variant.name << ", " << lengths[i].gx << ' ' << lengths[i].gy;
    }
}

}  // namespace
}  // namespace vastrelline
