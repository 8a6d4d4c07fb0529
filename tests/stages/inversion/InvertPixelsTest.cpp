// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "stages/inversion/InvertPixels.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

TEST(InvertPixels, InvertsTheFrame) {
    Frame frame = FromRows({{0, 1}, {2000, 4095}});
    InvertPixels(frame.Data(), 2, 2, 4095);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{4095, 4094}, {2095, 0}})));
}

// 10 - 11 is -1, 10 - 65535 is -65525.
TEST(InvertPixels, WrapsAboveTheTop) {
    Frame frame = FromRows({{10, 11, 65535}});
    InvertPixels(frame.Data(), 3, 1, 10);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 65535, 11}})));
}

TEST(InvertPixels, FrameWithoutPixelsIsNoWork) {
    Frame frame = FromRows({{7}});
    InvertPixels(frame.Data(), 0, 3, 4095);
    InvertPixels(frame.Data(), 3, 0, 4095);
    InvertPixels(nullptr, 0, 3, 4095);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{7}})));
}

}  // namespace
}  // namespace vastrelline
