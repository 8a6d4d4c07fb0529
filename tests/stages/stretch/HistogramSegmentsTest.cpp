// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "stages/stretch/HistogramSegments.h"
#include "support/CountedLevels.h"
#include "support/Frames.h"

namespace vastrelline {

void PrintTo(const StretchSegment& segment, std::ostream* out) {
    *out << segment.left << ", " << segment.right;
}

namespace {

struct OccupiedRangeCase {
    const char* name;
    std::vector<LevelCount> counts;
    int32_t limit;
    int32_t low;
    int32_t top;
};

// In the middle of the table the average of a lone level is its count / 21, at the level itself.
const std::vector<OccupiedRangeCase> kOccupiedRanges{
    {"BothEnds", {{20, 30}, {40, 50}}, 0, 20, 40},
    {"WeakLevelIsNoEnd", {{20, 30}, {40, 50}}, 1, 40, 40},
    {"AverageAtTheLimitIsNotAboveIt", {{20, 30}, {40, 50}}, 2, 7, 99},
    // Only the level that is not empty itself: those around it have the same average.
    {"LevelBesideCountsForTheAverage", {{20, 2}, {25, 40}}, 1, 20, 25},
    {"Level0IsNoTop", {{0, 100}}, 0, 0, 99},
    // Levels 53 to 63 exist of the last one's neighbourhood: 33 / 11.
    {"AboveTheTableCountsAsItsTop", {{64, 20}, {65535, 13}}, 2, 63, 63},
    {"NegativeLimitFindsEveryLevel", {{3, 1}, {60, 1}}, -1, 3, 60},
    {"EmptyFrame", {}, 0, 7, 99}};

// A search that finds nothing leaves 7 or 99.
TEST(FindOccupiedRange, FindsTheEnds) {
    for (const OccupiedRangeCase& c : kOccupiedRanges) {
        SCOPED_TRACE(c.name);
        const Frame frame = FromCounts(c.counts);
        int32_t low = 7;
        int32_t top = 99;
        FindOccupiedRange(frame.Data(), frame.width, frame.height, 63, c.limit, low, top);
        EXPECT_EQ(low, c.low);
        EXPECT_EQ(top, c.top);
    }
}

// The windows of levels 400 and 498 overlap in two levels: there the average, 20 from each, is 40, and there
// is the main peak. Left of it lie averages of 2 (from level 251) and 3 (from 101); right of it 4 (from 551)
// and 3 (from 651, to where the next peak begins). Level 781 and 879 make a higher peak of 60 at 831, but in
// the brightest tenth: so it only ends the search to the right, for the 1 that lies above it. Level 0 is
// blanked as the darkest half percent, level 900 as one of the ten brightest.
const std::vector<LevelCount> kTwoValleys{{0, 5000},   {150, 303}, {300, 202}, {400, 2020},
                                          {498, 2020}, {600, 404}, {700, 303}, {781, 3030},
                                          {879, 3030}, {885, 101}, {900, 1}};

// A lower peak, 30 at level 200, lies below the level between object and background (300). Left of it are
// averages from 3 at level 26 on, right of it 5 at level 299.
const std::vector<LevelCount> kPeakInTheBackground{{0, 100},   {40, 303},   {150, 1515}, {248, 1515},
                                                   {300, 505}, {400, 2020}, {498, 2020}, {900, 1}};

struct SegmentsCase {
    const char* name;
    std::vector<LevelCount> counts;
    int32_t maxValue;
    int32_t fallbackLow;
    int32_t fallbackTop;
    int32_t limit;
    StretchSegment segment;
};

const std::vector<SegmentsCase> kSegments{
    {"LowestPointsBesideTheGaps", kTwoValleys, 1023, 0, 1000, 10, {251, 651}},
    // 3 is not below 3, so only the 2 counts, on the left alone.
    {"ValleyIsStrictlyBelowTheLimit", kTwoValleys, 1023, 5, 900, 3, {251, 900}},
    {"NothingIsBelowZero", kTwoValleys, 1023, 5, 1000, 0, {5, 1000}},
    {"NothingIsBelowANegativeLimit", kTwoValleys, 1023, 5, 1000, -2147483647, {5, 1000}},
    // Below the level of the main peak every point counts, the lowest wins.
    {"LimitAboveAllPoints", kTwoValleys, 1023, 5, 1000, 1000, {251, 651}},
    {"FallbackTopAboveTheTable", kTwoValleys, 1023, 0, 2147483647, 10, {251, 651}},
    // The search to the right ends at level 600.
    {"RightSearchEndsAtTheFallback", kTwoValleys, 1023, 0, 600, 10, {251, 551}},
    // 30 is above 2 * 14, so the search begins at that peak.
    {"TwiceTheLimitBeyond32Bits", kPeakInTheBackground, 1023, 0, 900, 2147483647, {26, 451}},
    // In the cases from here on a lone level of 101 pixels is an average of 1 over -49..+50, and 2020 pixels
    // are an average of 20. 0.005 * 20200 = 101: 101 pixels do not pass it, the next level does, so both are
    // blanked.
    {"DarkShareIsPassedAtTheSecondLevel",
     {{100, 101}, {160, 101}, {400, 2020}, {498, 2020}, {900, 15958}},
     1023,
     5,
     900,
     20,
     {5, 900}},
    // 102 pass it: only level 100 is blanked; the 1 of level 160 begins at 111.
    {"DarkShareIsPassedAtTheFirstLevel",
     {{100, 102}, {160, 101}, {400, 2020}, {498, 2020}, {900, 15957}},
     1023,
     5,
     900,
     20,
     {111, 900}},
    // Levels 891 to 900 are blanked, 890 is not: its 1 begins at 841.
    {"TenthBrightestLevelIsBlanked",
     {{0, 5000}, {400, 2020}, {498, 2020}, {891, 101}, {900, 1}},
     1023,
     5,
     900,
     20,
     {5, 900}},
    {"EleventhBrightestLevelStays",
     {{0, 5000}, {400, 2020}, {498, 2020}, {890, 101}, {900, 1}},
     1023,
     5,
     900,
     20,
     {5, 841}},
    // The overlap 332..350 is 19 levels: 341 is above its neighbours ten away on both sides. With 20 levels
    // no point is, so the peak is the midpoint 494, in a gap, and there is no valley.
    {"PeakOf19Levels",
     {{0, 5000}, {150, 101}, {300, 2020}, {381, 2020}, {900, 1}},
     1023,
     5,
     900,
     20,
     {101, 900}},
    {"TwentyLevelsAreNoPeak",
     {{0, 5000}, {150, 101}, {300, 2020}, {380, 2020}, {900, 1}},
     1023,
     5,
     900,
     20,
     {5, 900}},
    // 901 levels: peaks count from 181 (0 + 180.2, one above) to 809 (900 - 90.1). Overlaps of one level at
    // 180 and 181, 809 and 810.
    {"PeakAtAFifthIsTooLow",
     {{0, 5000}, {130, 2020}, {229, 2020}, {600, 101}, {900, 1}},
     1023,
     5,
     900,
     20,
     {5, 900}},
    {"PeakAboveAFifth",
     {{0, 5000}, {131, 2020}, {230, 2020}, {600, 101}, {900, 1}},
     1023,
     5,
     900,
     20,
     {5, 551}},
    {"PeakAtTheTopTenth",
     {{0, 5000}, {300, 101}, {759, 2020}, {858, 2020}, {900, 1}},
     1023,
     5,
     900,
     20,
     {251, 900}},
    {"PeakInTheTopTenth",
     {{0, 5000}, {300, 101}, {760, 2020}, {859, 2020}, {900, 1}},
     1023,
     5,
     900,
     20,
     {5, 900}},
    // The 1 of level 220 begins at 171, below the floor 200, where the search begins.
    {"LeftSearchBeginsAtTheFloor",
     {{200, 5000}, {220, 101}, {400, 2020}, {498, 2020}, {900, 1}},
     1023,
     5,
     900,
     20,
     {200, 900}},
    // 60 + 60 pixels are an average of 1 at level 830 alone: the peak that ends the search is not part of it.
    {"EndOfTheRightSearchIsNoValley",
     {{0, 5000}, {400, 2020}, {498, 2020}, {780, 60}, {879, 60}, {900, 1}},
     1023,
     5,
     900,
     20,
     {5, 900}},
    // The means on both sides of level 300 are 242 and 359, so it is the threshold itself (halfway: 300.2):
    // the peak at it does not begin the left search.
    {"PeakAtTheThresholdBeginsNothing",
     {{0, 30}, {149, 101}, {250, 2020}, {300, 10}, {349, 2020}, {900, 36}},
     1023,
     5,
     900,
     14,
     {100, 900}},
    // A lone level has no peak. Midpoint 180 + 629 / 2 = 494: the last level of 395..494, and the one behind
    // 394..493.
    {"NoPeakGivesTheMidpoint", {{0, 5000}, {444, 2020}, {700, 101}, {900, 1}}, 1023, 5, 900, 20, {5, 651}},
    {"MidpointBesideThePlateau", {{0, 5000}, {443, 2020}, {700, 101}, {900, 1}}, 1023, 5, 900, 20, {5, 900}},
    {"LeftSearchBeginsAtAPeak", kPeakInTheBackground, 1023, 0, 900, 14, {299, 900}},
    // 30 is not above 2 * 15: it begins at the bottom. 303 pixels over 76 levels are the first 3.
    {"LowPeakDoesNotBeginTheLeftSearch", kPeakInTheBackground, 1023, 0, 900, 15, {26, 900}},
    {"OneLevel", {{700, 64}}, 1023, 3, 800, 50, {3, 800}},
    {"FallbacksOfZeroAreTheFramesEnds", {{200, 9}, {700, 64}}, 1023, 0, 0, 50, {200, 700}},
    {"OneFallbackOfZeroStays", {{200, 9}, {700, 64}}, 1023, 0, 800, 50, {0, 800}},
    // The ends are those of the pixels, also above the table.
    {"EndsAboveTheTable", {{90, 9}, {100, 64}}, 63, 0, 0, 50, {90, 100}},
    {"BrightestLevelBelow9", {{2, 30}, {8, 30}}, 15, 1, 9, 50, {1, 9}},
    {"BlackFrame", {{0, 30}}, 15, 1, 9, 50, {1, 9}},
    {"TableOfOneLevel", {{0, 3}, {5, 3}}, 0, 1, 9, 50, {1, 9}},
    {"EmptyFrame", {}, 255, 1, 9, 50, {1, 9}}};

TEST(FindStretchSegments, FindsTheValleys) {
    for (const SegmentsCase& c : kSegments) {
        SCOPED_TRACE(c.name);
        const Frame frame = FromCounts(c.counts);
        StretchSegment segment{-9, -9};
        EXPECT_EQ(FindStretchSegments(frame.Data(), segment, frame.width, frame.height, c.maxValue,
                                      c.fallbackLow, c.fallbackTop, c.limit),
                  1);
        EXPECT_EQ(segment, c.segment);
    }
}

// Two pairs of levels with peaks of the same height, at 250 and at 450: of equal heights the higher level is
// the main peak. A valley right of the lower one tells them apart.
TEST(FindStretchSegments, OfEqualPeaksTheHigherLevelWins) {
    const Frame frame =
        FromCounts({{0, 2000}, {200, 2020}, {298, 2020}, {352, 101}, {400, 2020}, {498, 2020}, {900, 1}});
    StretchSegment segment;
    FindStretchSegments(frame.Data(), segment, frame.width, frame.height, 1023, 0, 900, 30);
    // From level 349 to 350 nothing but the 1 of level 352 is there.
    EXPECT_EQ(segment.left, 349);
}

}  // namespace
}  // namespace vastrelline
