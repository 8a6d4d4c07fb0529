// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "pixels/Border.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ToVector.h"

namespace vastrelline {
namespace {

constexpr auto kTrailing = BorderMode::BorderTrailing;
constexpr auto kCentred = BorderMode::BorderCentred;
constexpr auto kNoMode = static_cast<BorderMode>(2);

Frame Extended(const Frame& source, int32_t padWidth, int32_t padHeight, BorderMode mode) {
    std::optional<ScratchVector<uint16_t>> padded =
        ExtendImage(source.Data(), source.width, source.height, padWidth, padHeight, mode);
    if (!padded) throw std::logic_error("no extended image");
    return {source.width + padWidth, source.height + padHeight, *padded};
}

struct ExtendCase {
    const char* name;
    Frame source;
    int32_t padWidth;
    int32_t padHeight;
    BorderMode mode;
    Frame expected;
};

class ExtendImageTest : public testing::TestWithParam<ExtendCase> {};

TEST_P(ExtendImageTest, RepeatsTheNearestEdgePixel) {
    const ExtendCase& test = GetParam();
    EXPECT_THAT(Extended(test.source, test.padWidth, test.padHeight, test.mode), EqualsFrame(test.expected));
}

INSTANTIATE_TEST_SUITE_P(
    Modes, ExtendImageTest,
    testing::Values(
        ExtendCase{"TrailingOnePixel", FromRows({{9}}), 2, 3, kTrailing, Flat(3, 4, 9)},
        ExtendCase{"TrailingFillsRightAndBottom", FromRows({{1, 2}, {3, 4}}), 1, 2, kTrailing,
                   FromRows({{1, 2, 2}, {3, 4, 4}, {3, 4, 4}, {3, 4, 4}})},
        ExtendCase{"TrailingRightOnly", FromRows({{1, 2}, {3, 4}}), 2, 0, kTrailing,
                   FromRows({{1, 2, 2, 2}, {3, 4, 4, 4}})},
        ExtendCase{"TrailingBottomOnly", FromRows({{1, 2}, {3, 4}}), 0, 1, kTrailing,
                   FromRows({{1, 2}, {3, 4}, {3, 4}})},
        ExtendCase{"CentredOnePixel", FromRows({{9}}), 3, 2, kCentred, Flat(4, 3, 9)},
        ExtendCase{
            "CentredOddPadIsLargerAtRightAndBottom", FromRows({{1, 2}, {3, 4}}), 3, 3, kCentred,
            FromRows({{1, 1, 2, 2, 2}, {1, 1, 2, 2, 2}, {3, 3, 4, 4, 4}, {3, 3, 4, 4, 4}, {3, 3, 4, 4, 4}})},
        ExtendCase{"CentredPadOf7IsThreeLeftFourRight", FromRows({{5, 8}}), 7, 0, kCentred,
                   FromRows({{5, 5, 5, 5, 8, 8, 8, 8, 8}})},
        ExtendCase{"CentredPadOf7IsThreeAboveFourBelow", FromRows({{5}, {8}}), 0, 7, kCentred,
                   FromRows({{5}, {5}, {5}, {5}, {8}, {8}, {8}, {8}, {8}})},
        ExtendCase{"CentredPadOf1AddsNothingAtLeftAndTop", FromRows({{1, 2}, {3, 4}}), 1, 1, kCentred,
                   FromRows({{1, 2, 2}, {3, 4, 4}, {3, 4, 4}})},
        ExtendCase{"OtherModeGivesZeros", FromRows({{1, 2}, {3, 4}}), 1, 2, kNoMode, Flat(3, 4, 0)},
        ExtendCase{"OtherModeWithOnePadGivesZeros", FromRows({{1, 2}}), 0, 1, kNoMode, Flat(2, 2, 0)},
        ExtendCase{"OtherModeWithoutPadsCopies", FromRows({{1, 2}}), 0, 0, kNoMode, FromRows({{1, 2}})},
        // What a negative pad pushes over an end is left out.
        ExtendCase{"TrailingNegativeWidthDropsColumnsAtRight", FromRows({{1, 2, 3, 4}}), -3, 1, kTrailing,
                   FromRows({{1}, {1}})},
        ExtendCase{"CentredNegativeWidthDropsColumnsAtBothSides", FromRows({{1, 2, 3, 4}}), -2, 1, kCentred,
                   FromRows({{2, 3}, {2, 3}})},
        ExtendCase{"CentredNegativeHeightDropsRowsAtBothSides", FromRows({{1}, {2}, {3}, {4}}), 2, -2,
                   kCentred, FromRows({{2, 2, 2}, {3, 3, 3}})}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ExtendImage, WithoutPadsGivesAFreshCopy) {
    const Frame source = Ramp(3, 2, 1, 1, 10);
    for (const BorderMode mode : {kTrailing, kCentred}) {
        const auto copy = ExtendImage(source.Data(), 3, 2, 0, 0, mode);
        ASSERT_TRUE(copy.has_value());
        EXPECT_NE(copy->data(), source.Data());
        EXPECT_EQ(ToVector(*copy), source.pixels);
    }
}

TEST(ExtendImage, NothingComesOfANullSourceOrTwoNegativePads) {
    const Frame source = Flat(2, 2, 1);
    EXPECT_FALSE(ExtendImage(nullptr, 2, 2, 1, 1, kCentred).has_value());
    EXPECT_FALSE(ExtendImage(source.Data(), 2, 2, -1, -1, kCentred).has_value());
    EXPECT_TRUE(ExtendImage(source.Data(), 2, 2, -1, 0, kCentred).has_value());
    EXPECT_TRUE(ExtendImage(source.Data(), 2, 2, 0, -1, kCentred).has_value());
}

TEST(ExtendImage, SizeThatCannotBeHadThrows) {
    const Frame source = Flat(1, 1, 1);
    constexpr int32_t kLargestPad = std::numeric_limits<int32_t>::max() - 1;
    EXPECT_THROW((void)ExtendImage(source.Data(), 1, 1, kLargestPad, kLargestPad, kTrailing),
                 std::length_error);
    EXPECT_THROW((void)ExtendImage(source.Data(), 1, 1, -2, 0, kTrailing), std::length_error);
}

TEST(ExtendImage, FlatStaysFlatAndTheSourceIsNotChanged) {
    const Frame source = Flat(4, 3, 77);
    for (const BorderMode mode : {kTrailing, kCentred})
        EXPECT_THAT(Extended(source, 5, 6, mode), EqualsFrame(Flat(9, 9, 77)));
    EXPECT_THAT(source, EqualsFrame(Flat(4, 3, 77)));
}

TEST(ExtendImage, EvenCentredPadsTreatBothSidesAlike) {
    const Frame source = Noise(5, 4, 4095, 3);
    const Frame extended = Extended(source, 6, 4, kCentred);
    EXPECT_THAT(Extended(MirrorLeftRight(source), 6, 4, kCentred), EqualsFrame(MirrorLeftRight(extended)));
    EXPECT_THAT(Extended(MirrorTopBottom(source), 6, 4, kCentred), EqualsFrame(MirrorTopBottom(extended)));
}

// The part of a padded 4 x 3 frame that a crop with these pads writes, or the untouched destination.
struct CropCase {
    const char* name;
    int32_t padWidth;
    int32_t padHeight;
    BorderMode mode;
    Frame expected;
};

class CropImageTest : public testing::TestWithParam<CropCase> {};

TEST_P(CropImageTest, WritesTheImageAreaOnly) {
    const CropCase& test = GetParam();
    const Frame padded = FromRows({{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}});
    Frame destination = Flat(test.expected.width, test.expected.height, 99);
    CropImage(padded.Data(), destination.Data(), 4, 3, test.padWidth, test.padHeight, test.mode);
    EXPECT_THAT(destination, EqualsFrame(test.expected));
}

INSTANTIATE_TEST_SUITE_P(
    Modes, CropImageTest,
    testing::Values(CropCase{"TrailingDropsRightAndBottom", 1, 2, kTrailing, FromRows({{1, 2, 3}})},
                    CropCase{"CentredDropsMoreAtTheRight", 3, 0, kCentred, FromRows({{2}, {6}, {10}})},
                    CropCase{"CentredDropsBothSides", 2, 2, kCentred, FromRows({{6, 7}})},
                    CropCase{"NoPadsCopyAll", 0, 0, kCentred, Ramp(4, 3, 1, 1, 4)},
                    CropCase{"NoPadsCopyAllInAnyMode", 0, 0, kNoMode, Ramp(4, 3, 1, 1, 4)},
                    CropCase{"WholeWidthLeavesNothing", 4, 0, kTrailing, Frame(0, 3)},
                    CropCase{"OtherModeWritesNothing", 1, 1, kNoMode, Flat(3, 2, 99)},
                    CropCase{"TwoNegativePadsWriteNothing", -1, -1, kTrailing, Flat(5, 4, 99)},
                    CropCase{"OneNegativePadWritesNothing", -1, 1, kTrailing, Flat(5, 2, 99)},
                    CropCase{"PadBeyondTheFrameWritesNothing", 5, 0, kTrailing, Flat(1, 3, 99)}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(CropImage, NullFrameWritesNothing) {
    Frame destination = Flat(2, 2, 99);
    CropImage(nullptr, destination.Data(), 3, 3, 1, 1, kTrailing);
    EXPECT_THAT(destination, EqualsFrame(Flat(2, 2, 99)));
}

TEST(CropImage, UndoesTheExtensionOfTheSamePadsAndMode) {
    for (const BorderMode mode : {kTrailing, kCentred})
        for (const int32_t padWidth : {0, 1, 2, 7})
            for (const int32_t padHeight : {0, 1, 7, 8}) {
                SCOPED_TRACE(testing::Message() << padWidth << " x " << padHeight);
                const Frame source = Noise(5, 3, 65535, 11);
                const Frame padded = Extended(source, padWidth, padHeight, mode);
                Frame back(5, 3);
                CropImage(padded.Data(), back.Data(), padded.width, padded.height, padWidth, padHeight, mode);
                EXPECT_THAT(back, EqualsFrame(source));
            }
}

}  // namespace
}  // namespace vastrelline
