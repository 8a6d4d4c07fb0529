// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <utility>

#include "sensor/PixelBits.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

TEST(PixelBits, UpTo16BitsNothingChanges) {
    const Frame before = FromRows({{0, 7, 4095, 65535}});
    for (const auto& [bits, maxValue] : {std::pair{12, 4095}, {16, 65535}, {0, 0}, {-3, 0}, {1, 1}}) {
        Frame frame = before;
        int32_t bitsStored = bits;
        EXPECT_EQ(RescaleToPixelBits(frame.Data(), 4, 1, bitsStored), maxValue);
        EXPECT_EQ(bitsStored, bits);
        EXPECT_THAT(frame, EqualsFrame(before));
    }
}

// A ramp from 0 to the largest value of so many bits: 65535 * (100, 200, 40000 / 131071) = 49.9, 99.9,
// 19999.8.
TEST(PixelBits, MoreBitsAreBroughtTo16) {
    Frame frame = FromRows({{100, 200, 40000}});
    int32_t bitsStored = 17;
    EXPECT_EQ(RescaleToPixelBits(frame.Data(), 3, 1, bitsStored), 65535);
    EXPECT_EQ(bitsStored, 16);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{49, 99, 19999}})));
}

}  // namespace
}  // namespace vastrelline
