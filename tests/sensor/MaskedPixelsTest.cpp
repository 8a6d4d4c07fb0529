// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "sensor/MaskedPixels.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskFrames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr uint16_t M = kMasked;

struct FillCase {
    const char* name;
    Frame frame;
    Frame mask;
    Frame filled;
};

class FillMaskedPixelsTest : public testing::TestWithParam<FillCase> {};

TEST_P(FillMaskedPixelsTest, MirrorsThePixelsJustInside) {
    Frame frame = GetParam().frame;
    const Frame& mask = GetParam().mask;
    const Frame maskBefore = mask;
    FillMaskedPixels(frame.Data(), mask.Data(), frame.width, frame.height, 4095);
    EXPECT_THAT(frame, EqualsFrame(GetParam().filled));
    EXPECT_THAT(mask, EqualsFrame(maskBefore));
}

// On an odd width of 2c + 1 both halves are alike. On an even one the right cursor, clamped to the last
// column, comes to it twice: the second visit takes the pixel one step further inside.
INSTANTIATE_TEST_SUITE_P(
    Rows, FillMaskedPixelsTest,
    testing::Values(
        FillCase{"LeftCorner", FromRows({{0, 0, 3, 4, 5, 6, 7}}), FromRows({{M, M, 0, 0, 0, 0, 0}}),
                 FromRows({{4, 3, 3, 4, 5, 6, 7}})},
        FillCase{"RightCornerOfAnOddWidth", FromRows({{1, 2, 3, 4, 5, 0, 0}}),
                 FromRows({{0, 0, 0, 0, 0, M, M}}), FromRows({{1, 2, 3, 4, 5, 5, 4}})},
        FillCase{"BothCorners", FromRows({{0, 2, 3, 4, 5, 6, 0}}), FromRows({{M, 0, 0, 0, 0, 0, M}}),
                 FromRows({{2, 2, 3, 4, 5, 6, 6}})},
        // c = 3: column 5 is visited for i = 2 and again, as column 6 clamped, for i = 3. It takes column 4
        // first, then column 3.
        FillCase{"LastColumnOfAnEvenWidthIsVisitedTwice", FromRows({{1, 2, 3, 4, 5, 0}}),
                 FromRows({{0, 0, 0, 0, 0, M}}), FromRows({{1, 2, 3, 4, 5, 4}})},
        // Column 4 takes column 3; column 5 takes column 2, then column 1.
        FillCase{"RightCornerOfAnEvenWidth", FromRows({{1, 2, 3, 4, 0, 0}}), FromRows({{0, 0, 0, 0, M, M}}),
                 FromRows({{1, 2, 3, 4, 4, 2}})},
        FillCase{"LeftCornerOfAnEvenWidth", FromRows({{0, 0, 3, 4, 5, 6}}), FromRows({{M, M, 0, 0, 0, 0}}),
                 FromRows({{4, 3, 3, 4, 5, 6}})},
        FillCase{"RowsAreFilledOnTheirOwn", FromRows({{0, 2, 3}, {4, 5, 6}, {7, 8, 0}}),
                 FromRows({{M, 0, 0}, {0, 0, 0}, {0, 0, M}}), FromRows({{2, 2, 3}, {4, 5, 6}, {7, 8, 8}})},
        // The centre column is never visited. i = 1: columns 1 and 3 take the centre; i = 2: column 0 takes
        // column 3, column 4 takes column 1.
        FillCase{"RowMaskedAllOverTakesTheCentre", FromRows({{1, 2, 9, 4, 5}}), FromRows({{M, M, M, M, M}}),
                 FromRows({{9, 9, 9, 9, 9}})},
        // The count goes on after a gap: anchor 3, count 1 takes column 4; column 1 takes 3 + 2.
        FillCase{"CountRunsOnOverAGap", FromRows({{1, 0, 3, 0, 5, 6, 7, 8, 9}}),
                 FromRows({{0, M, 0, M, 0, 0, 0, 0, 0}}), FromRows({{1, 6, 3, 5, 5, 6, 7, 8, 9}})},
        FillCase{"NoMaskChangesNothing", Ramp(6, 3, 1, 1, 10), Flat(6, 3, 0), Ramp(6, 3, 1, 1, 10)},
        FillCase{"OnlyTheValue255Masks", FromRows({{1, 2, 3}}), FromRows({{254, 1, 256}}),
                 FromRows({{1, 2, 3}})},
        FillCase{"OneColumnIsNeverFilled", FromRows({{7}, {8}}), FromRows({{M}, {M}}), FromRows({{7}, {8}})},
        // c = 1: column 0 takes column 1, then column 1 takes column 0.
        FillCase{"TwoColumns", FromRows({{7, 8}}), FromRows({{M, M}}), FromRows({{8, 8}})},
        FillCase{"EmptyFrame", Frame(0, 0), Frame(0, 0), Frame(0, 0)},
        FillCase{"NoColumns", Frame(0, 3), Frame(0, 3), Frame(0, 3)}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(FillMaskedPixels, OddWidthsTreatBothSidesAlike) {
    Frame frame = Noise(11, 6, 4095, 4);
    Frame mask(11, 6);
    for (int32_t y = 0; y < 6; ++y)
        for (int32_t x = 0; x < y; ++x) mask.At(x, y) = kMasked;  // up to the middle
    Frame mirrored = MirrorLeftRight(frame);
    const Frame mirroredMask = MirrorLeftRight(mask);
    FillMaskedPixels(frame.Data(), mask.Data(), 11, 6, 4095);
    FillMaskedPixels(mirrored.Data(), mirroredMask.Data(), 11, 6, 4095);
    EXPECT_THAT(mirrored, EqualsFrame(MirrorLeftRight(frame)));
}

TEST(FillMaskedPixels, StaysInTheRowWhateverIsMasked) {
    // Each row is a block of its own size, so that a sanitizer sees a step out of it.
    for (int32_t width = 1; width <= 12; ++width)
        for (uint32_t bits = 0; bits < (1U << static_cast<uint32_t>(width)); ++bits) {
            Frame frame = Ramp(width, 1, 1, 1, 0);
            Frame mask(width, 1);
            for (int32_t x = 0; x < width; ++x)
                mask.At(x, 0) = (bits >> static_cast<uint32_t>(x)) % 2 != 0 ? kMasked : uint16_t{0};
            FillMaskedPixels(frame.Data(), mask.Data(), width, 1, 0);
            for (int32_t x = 0; x < width; ++x) {
                ASSERT_GE(frame.At(x, 0), 1);
                ASSERT_LE(frame.At(x, 0), width);
                if (mask.At(x, 0) == 0) {
                    ASSERT_EQ(frame.At(x, 0), x + 1);
                }
            }
        }
}

struct RestoreCase {
    const char* name;
    int32_t flag;
    Frame frame;
    Frame mask;
    Frame restored;
};

class RestoreMaskedPixelsTest : public testing::TestWithParam<RestoreCase> {};

TEST_P(RestoreMaskedPixelsTest, GivesMaskedPixelsTheBackground) {
    Frame frame = GetParam().frame;
    RestoreMaskedPixels(frame.Data(), GetParam().mask.Data(), frame.width, frame.height, GetParam().flag);
    EXPECT_THAT(frame, EqualsFrame(GetParam().restored));
}

INSTANTIATE_TEST_SUITE_P(
    Flags, RestoreMaskedPixelsTest,
    testing::Values(
        RestoreCase{"InvertedFrameHasABlackBackground", 1, FromRows({{1, 2, 3}, {4, 5, 6}}),
                    FromRows({{0, 0, M}, {M, 0, 0}}), FromRows({{1, 2, 0}, {0, 5, 6}})},
        RestoreCase{"AnyFlagButZeroIsInverted", -1, FromRows({{1, 2, 3}}), FromRows({{0, 0, M}}),
                    FromRows({{1, 2, 0}})},
        RestoreCase{"OtherwiseTheBackgroundIsTheLargestPixel", 0, FromRows({{1, 2, 3}, {4, 5, 6}}),
                    FromRows({{0, 0, M}, {M, 0, 0}}), FromRows({{1, 2, 6}, {6, 5, 6}})},
        RestoreCase{"MaskedPixelMayBeTheLargest", 0, FromRows({{1, 2, 9}, {4, 5, 6}}),
                    FromRows({{0, 0, M}, {M, 0, 0}}), FromRows({{1, 2, 9}, {9, 5, 6}})},
        RestoreCase{"FirstTwoPixelsAreMarkersWithABlackBackground", 1, FromRows({{1, 2, 3}, {4, 5, 6}}),
                    FromRows({{M, M, M}, {M, 0, 0}}), FromRows({{4095, 4095, 0}, {0, 5, 6}})},
        RestoreCase{"FirstTwoPixelsAreMarkersWithTheLargest", 0, FromRows({{1, 2, 3}, {4, 5, 6}}),
                    FromRows({{M, M, M}, {M, 0, 0}}), FromRows({{4095, 4095, 6}, {6, 5, 6}})},
        // Found before the markers are set, a background is never one of them.
        RestoreCase{"LargestPixelIsFoundBeforeTheMarkers", 0, FromRows({{5, 7, 3}}), FromRows({{M, M, M}}),
                    FromRows({{4095, 4095, 7}})},
        RestoreCase{"MarkersOnlyWhereMasked", 1, FromRows({{1, 2, 3}}), FromRows({{0, M, M}}),
                    FromRows({{1, 4095, 0}})},
        RestoreCase{"NotTheSecondRowsFirstPixels", 1, FromRows({{1, 2}, {3, 4}}), FromRows({{0, 0}, {M, M}}),
                    FromRows({{1, 2}, {0, 0}})},
        RestoreCase{"MarkersGoByMemoryNotByRow", 1, FromRows({{1}, {2}, {3}}), FromRows({{M}, {M}, {M}}),
                    FromRows({{4095}, {4095}, {0}})},
        RestoreCase{"MarkersStay4095InWideFrames", 0, FromRows({{65535, 9, 9}}), FromRows({{M, 0, M}}),
                    FromRows({{4095, 9, 65535}})},
        RestoreCase{"NoMaskChangesNothing", 0, Ramp(3, 2, 1, 1, 3), Flat(3, 2, 0), Ramp(3, 2, 1, 1, 3)},
        RestoreCase{"OnlyTheValue255Masks", 1, FromRows({{1, 2, 3}}), FromRows({{254, 511, 1}}),
                    FromRows({{1, 2, 3}})},
        RestoreCase{"OnePixel", 0, Flat(1, 1, 7), Flat(1, 1, M), Flat(1, 1, 4095)},
        RestoreCase{"EmptyFrame", 0, Frame(0, 0), Frame(0, 0), Frame(0, 0)}),
    [](const auto& test) { return std::string(test.param.name); });

// Masks of one row: none, single pixels at random, ends as the corners leave them, all; with values beside
// the one that masks.
std::vector<Frame> MakeMasks(int32_t width, std::mt19937& random) {
    std::vector<Frame> masks{Frame(width, 1), Flat(width, 1, kMasked), Noise(width, 1, 65535, 20240602)};
    for (const uint32_t oneOf : {2U, 10U, 60U}) {
        Frame& sparse = masks.emplace_back(width, 1);
        for (uint16_t& pixel : sparse.pixels) pixel = random() % oneOf == 0 ? kMasked : uint16_t{254};
    }
    for (const int32_t corner : {1, 2, 31, 32, 33, 65}) {
        Frame& ends = masks.emplace_back(width, 1);
        for (int32_t x = 0; x < width; ++x)
            ends.At(x, 0) = x < corner || x >= width - corner / 2 ? kMasked : uint16_t{256};
    }
    return masks;
}

TEST(MaskedPixelsVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(MaskedPixelsVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(MaskedPixelsVariants, TheLastOneRuns) {
    Frame frame = Noise(9, 7, 4095, 5);
    const Frame mask(9, 7);
    ExpectLastFormRuns(MaskedPixelsVariants, 1,
                       [&] { FillMaskedPixels(frame.Data(), mask.Data(), 9, 7, 4095); });
    ExpectLastFormRuns(MaskedPixelsVariants, 1,
                       [&] { RestoreMaskedPixels(frame.Data(), mask.Data(), 9, 7, 0); });
}

// Widths around the steps of the walk on each side, and whole and broken vectors of the painting.
TEST(MaskedPixels, EveryVariantGivesTheReferencePixels) {
    std::mt19937 random(20240603);
    for (const int32_t width : {0,  1,  2,  3,  4,  31,  32,  33,  62,  63,  64,  65,  66,  67,
                                68, 96, 97, 98, 99, 127, 128, 129, 130, 131, 132, 194, 195, 300})
        for (const Frame& mask : MakeMasks(width, random)) {
            const Frame noise = Noise(width, 1, 65535, 20240604);
            const auto count = static_cast<size_t>(width);
            Frame filled = noise;
            Frame painted = noise;
            const MaskedPixelLoops& reference = *MaskedPixelsVariants().front().run;
            reference.fillRow(filled.Data(), mask.Data(), width);
            reference.paint(painted.Data(), mask.Data(), count, 40000);
            for (const MaskedPixelsVariant& variant : MaskedPixelsVariants()) {
                Frame frame = noise;
                variant.run->fillRow(frame.Data(), mask.Data(), width);
                ASSERT_THAT(frame, EqualsFrame(filled)) << variant.name;
                frame = noise;
                variant.run->paint(frame.Data(), mask.Data(), count, 40000);
                ASSERT_THAT(frame, EqualsFrame(painted)) << variant.name;
            }
        }
}

// One masked pixel in an empty row, at every place: no stretch is passed over that holds it.
TEST(MaskedPixels, EveryVariantFindsASingleMaskedPixel) {
    for (const MaskedPixelsVariant& variant : MaskedPixelsVariants())
        for (const int32_t width : {64, 129, 130, 199, 200})
            for (int32_t x = 0; x < width; ++x) {
                SCOPED_TRACE(testing::Message() << variant.name << ' ' << x << " of " << width);
                Frame mask(width, 1);
                mask.At(x, 0) = kMasked;
                Frame frame = Ramp(width, 1, 1, 1, 0);
                variant.run->paint(frame.Data(), mask.Data(), static_cast<size_t>(width), 9999);
                Frame painted = Ramp(width, 1, 1, 1, 0);
                painted.At(x, 0) = 9999;
                ASSERT_THAT(frame, EqualsFrame(painted));

                frame = Ramp(width, 1, 1, 1, 0);
                variant.run->fillRow(frame.Data(), mask.Data(), width);
                // The neighbour towards the middle; the middle itself is never filled, and the last column of
                // an even width is filled twice, from one pixel further inside.
                const int32_t centre = width / 2;
                Frame filled = Ramp(width, 1, 1, 1, 0);
                if (x < centre) filled.At(x, 0) = static_cast<uint16_t>(x + 2);
                if (x > centre) filled.At(x, 0) = static_cast<uint16_t>(x);
                if (x == width - 1 && width % 2 == 0) filled.At(x, 0) = static_cast<uint16_t>(x - 1);
                ASSERT_THAT(frame, EqualsFrame(filled));
            }
}

}  // namespace
}  // namespace vastrelline
