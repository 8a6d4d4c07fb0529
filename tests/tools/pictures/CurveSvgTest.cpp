// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pictures/CurveSvg.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(CountLevels, BeginsWithTheLeastLevel) {
    const LevelCounts histogram = CountLevels(std::vector<int16_t>{-1, 2, -1});
    EXPECT_EQ(histogram.first, -1);
    EXPECT_THAT(histogram.counts, ElementsAre(2, 0, 0, 1));
    EXPECT_THAT(CountLevels(std::vector<uint16_t>{}).counts, IsEmpty());
}

TEST(CurveSvg, DrawsTheCurveFromCornerToCorner) {
    // The plot lies between 130 and 1400, and between 80 above and 790 below.
    const std::string svg = DrawCurveSvg("t", {}, {{0, 0}, {10, 100}});
    EXPECT_THAT(svg, HasSubstr("d=\"M130 790L1400 80\""));
}

TEST(CurveSvg, HasRoomForLevelsThatTheCurveDoesNotReach) {
    const std::string svg = DrawCurveSvg("t", {-10, std::vector<size_t>(31, 1)}, {{0, 0}, {10, 100}});
    // Levels from -10 to 20: 0 and 10 are a third and two thirds of 1270 units.
    EXPECT_THAT(svg, HasSubstr("d=\"M553 790L976 80\""));
}

TEST(CurveSvg, DrawsTheRarestLevelsLow) {
    // Levels 0 and 253 in the first and the last of 254 bars: 4 pixels full, 1 pixel half as high.
    std::vector<size_t> counts(254, 0);
    counts.front() = 4;
    counts.back() = 1;
    const std::string svg = DrawCurveSvg("t", {0, counts}, {{0, 0}, {253, 1}});
    EXPECT_THAT(svg, HasSubstr("d=\"M130 790V80H135V790"));
    EXPECT_THAT(svg, HasSubstr("V435H1400V790Z"));
}

TEST(CurveSvg, EscapesItsTitle) {
    const std::string svg = DrawCurveSvg("a < b & c", {}, {{0, 0}, {1, 1}});
    EXPECT_THAT(svg, HasSubstr("<title>a &lt; b &amp; c</title>"));
}

TEST(CurveSvg, NumbersItsAxesRoundly) {
    const std::string svg = DrawCurveSvg("t", {}, {{-300, 0}, {505, 4095}});
    for (const char* const label : {">-200<", ">0<", ">400<", ">1000<", ">4000<"})
        EXPECT_THAT(svg, HasSubstr(label)) << label;
    EXPECT_THAT(svg, Not(HasSubstr(">600<")));
}

TEST(CurveSvg, SurvivesAFlatCurveOfOneLevel) {
    EXPECT_THAT(DrawCurveSvg("t", {}, {{5, 7}}), HasSubstr("d=\"M130 790\""));
}

}  // namespace
}  // namespace vastrelline
