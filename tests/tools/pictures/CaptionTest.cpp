// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "pictures/Caption.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Ten letters of 12 pixels, the last without the gap behind it.
constexpr int32_t kTenLetters = 118;

TEST(WrapCaption, CutsAtBlanks) {
    EXPECT_THAT(WrapCaption("Gamma curve of a", kTenLetters), ElementsAre("Gamma", "curve of a"));
    EXPECT_THAT(WrapCaption("", kTenLetters), IsEmpty());
}

TEST(WrapCaption, CutsAWordThatIsTooLongAlone) {
    EXPECT_THAT(WrapCaption("a 12345678901234", kTenLetters), ElementsAre("a", "1234567890", "1234"));
}

TEST(WrapCaption, KeepsLinesApart) {
    EXPECT_THAT(WrapCaption("one\ntwo", kTenLetters), ElementsAre("one", "two"));
}

TEST(WrapCaption, ComesToItsEndWhereNoLetterFits) {
    EXPECT_THAT(WrapCaption("ab", 1), ElementsAre("a", "b"));
}

struct FitCase {
    const char* name;
    PictureSize picture;
    PictureSize box;
    PictureSize size;
};

class FitIntoTest : public testing::TestWithParam<FitCase> {};

TEST_P(FitIntoTest, GivesTheLargestOfItsShape) {
    const Canvas picture(GetParam().picture.width, GetParam().picture.height, 0);
    EXPECT_EQ(FitInto(picture, GetParam().box), GetParam().size);
}

INSTANTIATE_TEST_SUITE_P(Boxes, FitIntoTest,
                         testing::Values(FitCase{"WidthCounts", {200, 100}, {50, 90}, {50, 25}},
                                         FitCase{"HeightCounts", {100, 200}, {90, 50}, {25, 50}},
                                         FitCase{"NeverLarger", {10, 20}, {90, 50}, {10, 20}},
                                         FitCase{"AtLeastOnePixel", {1000, 1}, {10, 10}, {10, 1}},
                                         FitCase{"AtLeastOneColumn", {1, 1000}, {10, 10}, {1, 10}}),
                         [](const auto& test) { return test.param.name; });

TEST(WriteCaption, StaysInItsHeight) {
    const CaptionedPicture picture{"Gamma curve", "2 ms\nfaster", Canvas(1, 1, 0)};
    EXPECT_EQ(CaptionHeight(picture, kTenLetters), 4 * kCaptionLineHeight);
    Canvas canvas(kTenLetters, 6 * kCaptionLineHeight, kGroundLevel);
    WriteCaption(canvas, picture, 0, 0, kTenLetters);
    const auto below = canvas.Levels().begin() + kTenLetters * 4 * kCaptionLineHeight;
    EXPECT_EQ(std::count(below, canvas.Levels().end(), kGroundLevel), kTenLetters * 2 * kCaptionLineHeight);
    EXPECT_GT(std::count(canvas.Levels().begin(), below, kInkLevel), 0);
    EXPECT_GT(std::count(canvas.Levels().begin(), below, kFaintInkLevel), 0);
}

}  // namespace
}  // namespace vastrelline
