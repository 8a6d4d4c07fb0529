// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "report/CImageM.h"

namespace vastrelline {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes RowOf(const CImageM& image, int32_t row) {
    const uint8_t* start = image.DisplayRow(row);
    return {start, start + image.DisplayStride()};
}

// A matrix of 3 bits stored with the window of 4 levels around 4, whose table is 0 0 0 0 64 128 255 255.
void SetThreeBits(CImageM& image, const std::vector<uint16_t>& pixels, int32_t width, int32_t height) {
    image.Set(pixels.data(), width, height, 16, 3, 4, 4, 0, 0, 0, 1.0);
}

TEST(CImageM, EmptyOneHasNoSize) {
    const CImageM image(L"caption");
    EXPECT_EQ(0, image.Width());
    EXPECT_EQ(0, image.Height());
    EXPECT_EQ(1, image.BottomUp());
}

TEST(CImageM, WindowOfZeroAndZeroBecomesTheUsualOne) {
    // From 1 to 800 with a slope of 255 / 800: at 400 399 * 0.31875 + 0.5 = 127.7, at 799 254.9.
    const std::vector<uint16_t> pixels = {1, 400, 799, 800};
    const CImageM image(pixels.data(), 4, 1, 16, 14, 0, 0, 0, L"", 0, 0, 1.0);
    EXPECT_EQ((Bytes{0, 127, 254, 255}), RowOf(image, 0));
}

TEST(CImageM, WindowWithOneZeroStays) {
    // From -1 to 2 with a slope of 63.75.
    const std::vector<uint16_t> pixels = {0, 1, 2, 400};
    const CImageM noCentre(pixels.data(), 4, 1, 16, 14, 0, 5, 0, L"", 0, 0, 1.0);
    EXPECT_EQ((Bytes{64, 128, 255, 255}), RowOf(noCentre, 0));
    // All from the centre on is white.
    const CImageM noWidth(pixels.data(), 4, 1, 16, 14, 2, 0, 0, L"", 0, 0, 1.0);
    EXPECT_EQ((Bytes{0, 0, 255, 255}), RowOf(noWidth, 0));
}

TEST(CImageM, PixelsAtAndAboveTheTopTakeTheLastEntry) {
    // The window is so wide that the last entry is not white: (7 + 7) * 255 / 16 + 0.5 = 223.6.
    const std::vector<uint16_t> pixels = {7, 8, 65535, 6};
    CImageM image(pixels.data(), 4, 1, 16, 3, 0, 16, 0, L"", 0, 0, 1.0);
    // 6: 13 * 15.9375 + 0.5 = 207.7.
    EXPECT_EQ((Bytes{223, 223, 223, 207}), RowOf(image, 0));
}

TEST(CImageM, RowsOfTheRenderingArePaddedToFourBytesAndStayInOrder) {
    const std::vector<uint16_t> pixels = {4, 5, 6, 0, 1, 2, 3, 4, 7, 5};
    CImageM image(L"");
    SetThreeBits(image, pixels, 5, 2);
    EXPECT_EQ(8, image.DisplayStride());
    EXPECT_EQ((Bytes{64, 128, 255, 0, 0, 0, 0, 0}), RowOf(image, 0));
    EXPECT_EQ((Bytes{0, 0, 64, 255, 128, 0, 0, 0}), RowOf(image, 1));
}

TEST(CImageM, InvertedRenderingLeavesThePadsZero) {
    const std::vector<uint16_t> pixels = {0, 5, 7};
    CImageM image(pixels.data(), 3, 1, 16, 3, 4, 4, 1, L"", 0, 0, 1.0);
    EXPECT_EQ((Bytes{255, 127, 0, 0}), RowOf(image, 0));
}

TEST(CImageM, NegativeHeightIsStoredPositiveAndClearsBottomUp) {
    CImageM image(L"");
    image.Allocate(2, -3, 16, 16);
    EXPECT_EQ(3, image.Height());
    EXPECT_EQ(0, image.BottomUp());
    image.Allocate(2, 3, 16, 16);
    EXPECT_EQ(0, image.BottomUp());
}

TEST(CImageM, AllocateAloneGivesBlackInBothRasters) {
    CImageM image(L"");
    image.Allocate(2, 1, 16, 16);
    EXPECT_EQ(0.0, image.PixelAt(0, 1));
    EXPECT_EQ((Bytes{0, 0, 0, 0}), RowOf(image, 0));  // no inverted window drawn
}

TEST(CImageM, SecondSetReplacesTheRasters) {
    CImageM image(L"");
    SetThreeBits(image, {7, 7, 7, 7, 7, 7}, 3, 2);
    EXPECT_EQ(255, image.DisplayRow(1)[2]);
    SetThreeBits(image, {4}, 1, 1);
    EXPECT_EQ(1, image.Width());
    EXPECT_EQ((Bytes{64, 0, 0, 0}), RowOf(image, 0));
}

TEST(CImageM, NoPixelsAreAllZero) {
    CImageM image(nullptr, 2, 1, 16, 3, 4, 4, 1, L"", 0, 0, 1.0);
    EXPECT_EQ(0.0, image.PixelAt(0, 0));
    EXPECT_EQ((Bytes{255, 255, 0, 0}), RowOf(image, 0));
}

TEST(CImageM, ReadsEveryPixelType) {
    const std::vector<uint16_t> words = {1, 0xFFFE};
    const CImageM unsigned16(words.data(), 2, 1, 16, 16, 0, 1, 0, L"", 0, 0, 1.0);
    EXPECT_EQ(65534.0, unsigned16.PixelAt(0, 1));
    const CImageM signed16(words.data(), 2, 1, 16, 16, 0, 1, 0, L"", 1, 0, 1.0);
    EXPECT_EQ(-2.0, signed16.PixelAt(0, 1));
    const std::vector<int32_t> numbers = {3, -70000};
    const CImageM signed32(numbers.data(), 2, 1, 32, 16, 0, 1, 0, L"", 2, 0, 1.0);
    EXPECT_EQ(-70000.0, signed32.PixelAt(0, 1));
    const std::vector<double> doubles = {3.0, 2.75};
    const CImageM float64(doubles.data(), 2, 1, 64, 16, 0, 1, 0, L"", 3, 0, 1.0);
    EXPECT_EQ(2.75, float64.PixelAt(0, 1));
    const Bytes bytes = {3, 200};
    const CImageM unsigned8(bytes.data(), 2, 1, 8, 8, 0, 1, 0, L"", 4, 0, 1.0);
    EXPECT_EQ(200.0, unsigned8.PixelAt(0, 1));
    const CImageM unknown(words.data(), 2, 1, 16, 16, 0, 1, 0, L"", 5, 0, 1.0);
    EXPECT_EQ(0.0, unknown.PixelAt(0, 1));
}

TEST(CImageM, SignedPixelsAreWindowedAroundASignedCentre) {
    // From -1 to 2 with a slope of 63.75, whatever the bits stored.
    const std::vector<int16_t> pixels = {-32768, -2, -1, 0, 1, 2, 32767};
    CImageM image(pixels.data(), 7, 1, 16, 3, 0, 4, 0, L"", 1, 0, 1.0);
    EXPECT_EQ((Bytes{0, 0, 0, 64, 128, 255, 255, 0}), RowOf(image, 0));
}

TEST(CImageM, DoublesAreTruncatedAndNegativesTakeEntryZero) {
    const std::vector<double> pixels = {4.99, -3.0, 5.0, 1000.0};
    CImageM image(pixels.data(), 4, 1, 64, 3, 4, 4, 0, L"", 3, 0, 1.0);
    EXPECT_EQ((Bytes{64, 0, 128, 255}), RowOf(image, 0));
}

TEST(CImageM, MoreThanSixteenBitsHaveALongerTable) {
    // From 65537 to 65540 with a slope of 63.75.
    const std::vector<int32_t> pixels = {65537, 65538, 65539, 65540};
    CImageM image(pixels.data(), 4, 1, 32, 17, 65538, 4, 0, L"", 2, 0, 1.0);
    EXPECT_EQ((Bytes{0, 64, 128, 255}), RowOf(image, 0));
}

TEST(CImageM, RenderTakesANewWindowAndKeepsItForZeroAndZero) {
    CImageM image(L"");
    SetThreeBits(image, {1, 2, 3, 4}, 4, 1);
    image.Render(2, 4);  // from 1 to 4
    EXPECT_EQ((Bytes{0, 64, 128, 255}), RowOf(image, 0));
    image.Render(0, 0);
    EXPECT_EQ((Bytes{0, 64, 128, 255}), RowOf(image, 0));
}

TEST(CImageM, AddressesFollowTheAllocatedBits) {
    const std::vector<uint16_t> pixels = {1, 2, 3, 4, 5, 6};
    const CImageM image(pixels.data(), 3, 2, 16, 16, 0, 1, 0, L"", 0, 0, 1.0);
    uint16_t pixel = 0;
    std::memcpy(&pixel, image.PixelAddress(1, 2), sizeof pixel);
    EXPECT_EQ(6, pixel);
    const CImageM bytes(pixels.data(), 3, 2, 8, 8, 0, 1, 0, L"", 4, 0, 1.0);
    EXPECT_EQ(5, bytes.PixelAddress(1, 2) - bytes.PixelAddress(0, 0));
}

TEST(CImageM, TypeWiderThanTheAllocatedBitsReadsNothingBehindItsRow) {
    const std::vector<uint16_t> pixels = {1, 2};
    const CImageM image(pixels.data(), 2, 1, 16, 16, 0, 1, 0, L"", 2, 0, 1.0);
    EXPECT_EQ(0x20001, image.PixelAt(0, 0));
    EXPECT_EQ(0.0, image.PixelAt(0, 1));
}

TEST(CImageM, EqualisationRunsOverThePadsAndNotOverTheLastBytes) {
    // Rendered 64 128 255 and a pad, 64 128 64 and a pad. Six bytes are mapped: the first pad is one of them
    // (level 0, none counted), and so the last pixel is not.
    CImageM image(L"");
    SetThreeBits(image, {4, 5, 6, 4, 5, 4}, 3, 2);
    image.SetEqualize(1);
    EXPECT_EQ((Bytes{64, 128, 255, 0}), RowOf(image, 0));  // from the next Render on
    image.Render(0, 0);
    // Levels 64: 3, 128: 2, 255: 1 of 6: 3 * 255 / 6 = 127.5, 5 * 255 / 6 = 212.5, 255.
    EXPECT_EQ((Bytes{127, 212, 255, 0}), RowOf(image, 0));
    EXPECT_EQ((Bytes{127, 212, 64, 0}), RowOf(image, 1));
}

}  // namespace
}  // namespace vastrelline
