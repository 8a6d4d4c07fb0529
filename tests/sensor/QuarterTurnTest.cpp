// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sensor/QuarterTurn.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

// Around the blocks of eight and sixteen pixels, and around a band of rows.
constexpr int32_t kSides[] = {1, 2, 7, 8, 9, 15, 16, 17, 23, 24, 25, 31, 33, 65, 255, 256, 257, 263, 273};

TEST(TransposeVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(TransposeVariants, {"scalar", "baseline", "avx2"});
}

TEST(TransposeVariants, TheLastOneRuns) {
    Frame frame = Noise(40, 30, 65535, 5);
    ExpectLastFormRuns(TransposeVariants, 1, [&] { TurnByQuarter(frame.Data(), 40, 30, true); });
    ExpectLastFormRuns(TransposeVariants, 1, [&] { TurnByQuarter(frame.Data(), 30, 40, false); });
}

// Both with gaps behind their rows, which nobody writes, and either taken from its last row to its first.
TEST(Transpose, EveryVariantPutsEachPixelInItsPlace) {
    constexpr size_t kGap = 3;
    constexpr uint16_t kUntouched = 0xA5A5;
    for (const TransposeVariant& variant : TransposeVariants())
        for (const int32_t width : kSides)
            for (const int32_t height : kSides) {
                const Frame noise = Noise(width, height, 65535, 20240601);
                const auto columns = static_cast<size_t>(width);
                const auto rows = static_cast<size_t>(height);
                const size_t sourceStride = columns + kGap;
                const size_t targetStride = rows + kGap;
                std::vector<uint16_t> source(rows * sourceStride, uint16_t{1});
                std::vector<uint16_t> expected(columns * targetStride, kUntouched);
                for (int32_t y = 0; y < height; ++y)
                    for (int32_t x = 0; x < width; ++x) {
                        const auto column = static_cast<size_t>(x);
                        const auto row = static_cast<size_t>(y);
                        source[row * sourceStride + column] = noise.At(x, y);
                        expected[column * targetStride + row] = noise.At(x, y);
                    }
                std::vector<uint16_t> target(expected.size(), kUntouched);
                variant.run({source.data(), static_cast<ptrdiff_t>(sourceStride), target.data(),
                             static_cast<ptrdiff_t>(targetStride), columns, rows});
                ASSERT_EQ(target, expected) << variant.name << ' ' << width << 'x' << height;
                // The rows of both in the other order put each pixel where the half turn does.
                std::vector<uint16_t> turned(expected.size(), kUntouched);
                variant.run({source.data() + (rows - 1) * sourceStride, -static_cast<ptrdiff_t>(sourceStride),
                             turned.data() + (columns - 1) * targetStride,
                             -static_cast<ptrdiff_t>(targetStride), columns, rows});
                for (size_t x = 0; x < columns; ++x)
                    for (size_t y = 0; y < rows; ++y)
                        ASSERT_EQ(turned[(columns - 1 - x) * targetStride + rows - 1 - y],
                                  expected[x * targetStride + y])
                            << variant.name << ' ' << width << 'x' << height;
            }
}

// Widths on both sides of the one from which on the rows of the copy have gaps.
TEST(TurnByQuarter, TurnsWideFramesBothWays) {
    for (const int32_t width : {511, 512, 513, 543, 544, 576, 600})
        for (const int32_t height : {1, 5, 8, 20}) {
            const Frame frame = Noise(width, height, 65535, 3);
            for (const bool isClockwise : {true, false}) {
                Frame expected(height, width);
                for (int32_t y = 0; y < height; ++y)
                    for (int32_t x = 0; x < width; ++x)
                        (isClockwise ? expected.At(height - 1 - y, x) : expected.At(y, width - 1 - x)) =
                            frame.At(x, y);
                Frame turned = frame;
                TurnByQuarter(turned.Data(), width, height, isClockwise);
                turned.width = height;
                turned.height = width;
                ASSERT_THAT(turned, EqualsFrame(expected)) << width << 'x' << height << ' ' << isClockwise;
            }
        }
}

TEST(TurnByQuarter, LeavesAFrameWithoutPixels) {
    Frame frame = Flat(1, 1, 7);
    for (const bool isClockwise : {true, false}) {
        TurnByQuarter(frame.Data(), 0, 5, isClockwise);
        TurnByQuarter(frame.Data(), 5, 0, isClockwise);
    }
    EXPECT_EQ(frame.At(0, 0), 7);
}

}  // namespace
}  // namespace vastrelline
