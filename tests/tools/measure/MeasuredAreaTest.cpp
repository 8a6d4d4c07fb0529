// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "measure/MeasuredArea.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;

TEST(ParsePixelArea, TakesFourNumbersAndNothingElse) {
    EXPECT_EQ(ParsePixelArea("1,2,30,4"), (PixelArea{1, 2, 30, 4}));
    for (const char* const text : {"", "1,2,3", "1,2,3,4,", "1,2,3,4,5", "-1,2,3,4", "1,2,0,4", "1,2,3,0",
                                   "1, 2,3,4", "1,2,3,99999999999", "a,2,3,4", "1;2;3;4"})
        EXPECT_EQ(ParsePixelArea(text), std::nullopt) << text;
}

TEST(CutArea, KeepsThePixelsInside) {
    const Frame frame{3, 2, {1, 2, 3, 4, 5, 6}};
    const Frame cut = CutArea(frame, {1, 0, 2, 2});
    EXPECT_EQ(cut.width, 2);
    EXPECT_EQ(cut.height, 2);
    EXPECT_THAT(cut.pixels, ElementsAre(2, 3, 5, 6));
    EXPECT_THROW(CutArea(frame, {2, 0, 2, 1}), CannotMeasure);
    EXPECT_THROW(CutArea(frame, {0, 2, 1, 1}), CannotMeasure);
    EXPECT_THROW(CutArea(frame, {2147483647, 0, 2147483647, 1}), CannotMeasure);
}

TEST(Transpose, RowsBecomeColumns) {
    const Frame turned = Transpose({3, 2, {1, 2, 3, 4, 5, 6}});
    EXPECT_EQ(turned.width, 2);
    EXPECT_EQ(turned.height, 3);
    EXPECT_THAT(turned.pixels, ElementsAre(1, 4, 2, 5, 3, 6));
}

TEST(ClippingLevel, IsATopOfWholeBits) {
    EXPECT_EQ(ClippingLevel({1, 1, {255}}), 255);
    EXPECT_EQ(ClippingLevel({2, 1, {4095, 7}}), 4095);
    EXPECT_EQ(ClippingLevel({1, 1, {65535}}), 65535);
    EXPECT_EQ(ClippingLevel({1, 1, {4094}}), 65536);
    EXPECT_EQ(ClippingLevel({1, 1, {127}}), 65536);
}

}  // namespace
}  // namespace vastrelline
