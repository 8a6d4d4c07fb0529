// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "frames/FrameSize.h"

namespace vastrelline {
namespace {

TEST(FrameSize, IsTwoNumbersWithACross) {
    EXPECT_EQ(ParseFrameSize("1300x1668"), (FrameSize{1300, 1668}));
    EXPECT_EQ(ParseFrameSize("1X2"), (FrameSize{1, 2}));
}

TEST(FrameSize, OtherTextsAreNone) {
    for (const std::string text : {"", "x", "1300", "1300x", "x1668", "1300x1668x2", " 1x2", "1x2 ", "1 x2",
                                   "-1x2", "+1x2", "1.5x2", "1*2", "99999999999x1"})
        EXPECT_EQ(ParseFrameSize(text), std::nullopt) << text;
}

TEST(FrameSize, MustBeUsable) {
    EXPECT_EQ(ParseFrameSize("0x5"), std::nullopt);
    EXPECT_EQ(ParseFrameSize("5x0"), std::nullopt);
    EXPECT_EQ(ParseFrameSize("536870911x1"), (FrameSize{536870911, 1}));  // 2^29 - 1
    EXPECT_EQ(ParseFrameSize("536870912x1"), std::nullopt);
    EXPECT_EQ(ParseFrameSize("2147483647x2147483647"), std::nullopt);
}

TEST(FrameSize, StandsAtTheEndOfAName) {
    EXPECT_EQ(FrameSizeInName("raw/tooth_1300x1668.raw"), (FrameSize{1300, 1668}));
    EXPECT_EQ(FrameSizeInName("tooth_a_12x3.bin"), (FrameSize{12, 3}));
    EXPECT_EQ(FrameSizeInName("tooth_12x3"), (FrameSize{12, 3}));
    EXPECT_EQ(FrameSizeInName("tooth.raw"), std::nullopt);
    EXPECT_EQ(FrameSizeInName("12x3.raw"), std::nullopt);
    EXPECT_EQ(FrameSizeInName("tooth_12x3_b.raw"), std::nullopt);
    EXPECT_EQ(FrameSizeInName("folder_12x3/tooth.raw"), std::nullopt);
}

TEST(FrameSize, IsWrittenAsItIsRead) { EXPECT_EQ(FormatFrameSize({1300, 1668}), "1300x1668"); }

}  // namespace
}  // namespace vastrelline
