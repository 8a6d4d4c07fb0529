// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "sensor/ExposureCurve.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskFrames.h"
#include "support/ProfileWriter.h"
#include "support/ShownMessages.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();
constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();

// A known orientation, and corners that hide nothing.
SensorGeometry WithoutCorners(int32_t width, int32_t height) {
    SensorGeometry geometry{};
    geometry.FrameWidth = width;
    geometry.FrameHeight = height;
    return geometry;
}

// The curve as every call of the library takes it.
Frame Exposed(Frame frame, const SensorGeometry* geometry, const std::wstring& profilePath = L"",
              double reserved = 0.6) {
    ApplyExposureCurve(frame.Data(), frame.width, frame.height, 250, 3800, 0.45, reserved, profilePath,
                       geometry);
    return frame;
}

// 20 x 10 pixels, of which two may lie above the clip's level: first the given ones, the rest of one level.
Frame Of200(std::vector<uint16_t> first, uint16_t rest) {
    first.resize(200, rest);
    return {20, 10, std::move(first)};
}

struct CurveCase {
    const char* name;
    std::vector<uint16_t> before;
    uint16_t rest;
    std::vector<uint16_t> after;
    uint16_t restAfter;
};

class ExposureCurveTest : public testing::TestWithParam<CurveCase> {};

TEST_P(ExposureCurveTest, LiftsTheDarkAndClipsTheBright) {
    const SensorGeometry geometry = WithoutCorners(20, 10);
    EXPECT_THAT(Exposed(Of200(GetParam().before, GetParam().rest), &geometry),
                EqualsFrame(Of200(GetParam().after, GetParam().restAfter)));
}

INSTANTIATE_TEST_SUITE_P(
    Levels, ExposureCurveTest,
    testing::Values(
        // Span 4000 - 400: the lift would end at 400 + 219, which is not below 250; the clip begins at
        // 400 + 3340.
        CurveCase{"BrightBlackPointLeavesTheDarkAlone",
                  {4095, 4095, 4000, 3741, 3740, 3739, 619, 618, 401, 400},
                  1000,
                  {3740, 3740, 3740, 3740, 3740, 3739, 619, 618, 401, 400},
                  1000},
        // Span 2000 - 10: the lift ends at 10 + 121, the clip begins at 10 + 1846. 131 * (i / 131)^0.55 is
        // 31.8, 89.1, 130.4 for i = 10, 65, 130.
        CurveCase{"DarkFrameIsLifted",
                  {4095, 4095, 2000, 1857, 1856, 132, 131, 130, 65, 10},
                  1000,
                  {1856, 1856, 1856, 1856, 1856, 132, 131, 130, 89, 31},
                  1000},
        // Span 2000: the lift ends at 122, the clip begins at 1855. 122 * (i / 122)^0.55 is 8.7 and 83.3.
        CurveCase{
            "LevelZeroStaysZero", {4095, 4095, 2000, 1, 61, 0}, 1000, {1855, 1855, 1855, 8, 83, 0}, 1000},
        // Span 1800 - 1000: the clip would begin at 1000 + 742.
        CurveCase{
            "ClipBeginsAt1800AtTheLowest", {4095, 1801, 1800, 1799}, 1000, {1800, 1800, 1800, 1799}, 1000},
        // Span 0: the lift would end at the black point, below which nothing lies.
        CurveCase{"DarkFrameOfOneLevelStays", {}, 100, {}, 100}, CurveCase{"BlackFrameStays", {}, 0, {}, 0},
        CurveCase{"BrightFrameOfOneLevelStays", {}, 3000, {}, 3000},
        // Span 4095 - 3726: the clip begins at 3726 + 342.
        CurveCase{"LevelsAbove4095CountAs4095",
                  {65535, 5000, 4096, 4068, 3726},
                  4015,
                  {4068, 4068, 4068, 4068, 3726},
                  4015}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ExposureCurve, PixelsAbove4095AloneBecome4095) {
    // The black point is 4096 at most, one above the level at which they count.
    const SensorGeometry geometry = WithoutCorners(20, 10);
    EXPECT_THAT(Exposed(Flat(20, 10, 65535), &geometry), EqualsFrame(Flat(20, 10, 4095)));
    EXPECT_THAT(Exposed(Flat(20, 10, 4096), &geometry), EqualsFrame(Flat(20, 10, 4095)));
}

TEST(ExposureCurve, ReservedArgumentHasNoEffect) {
    const SensorGeometry geometry = WithoutCorners(40, 30);
    const Frame frame = Noise(40, 30, 4095, 6);
    for (const double reserved : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_THAT(Exposed(frame, &geometry, L"", reserved), EqualsFrame(Exposed(frame, &geometry)));
}

TEST(ExposureCurve, DoesTheSameToAMirroredFrame) {
    const SensorGeometry geometry = WithoutCorners(40, 30);
    const Frame frame = Noise(40, 30, 4095, 6);
    const Frame exposed = Exposed(frame, &geometry);
    EXPECT_FALSE(exposed == frame);
    EXPECT_THAT(Exposed(MirrorLeftRight(frame), &geometry), EqualsFrame(MirrorLeftRight(exposed)));
    EXPECT_THAT(Exposed(MirrorTopBottom(frame), &geometry), EqualsFrame(MirrorTopBottom(exposed)));
}

TEST(ExposureCurve, SmallAndEmptyFrames) {
    SensorGeometry unknown{};
    unknown.Rotation = -10;
    for (const int32_t cutOff : {0, 150, -1, kHighest, kLowest}) {
        unknown.RCCutOff = cutOff;
        EXPECT_THAT(Exposed(Flat(1, 1, 7), &unknown), EqualsFrame(Flat(1, 1, 7)));
        EXPECT_THAT(Exposed(Flat(1, 9, 0), &unknown), EqualsFrame(Flat(1, 9, 0)));
        EXPECT_THAT(Exposed(Flat(9, 1, 1700), &unknown), EqualsFrame(Flat(9, 1, 1700)));
        EXPECT_THAT(Exposed(Frame(0, 0), &unknown), EqualsFrame(Frame(0, 0)));
        EXPECT_THAT(Exposed(Frame(0, 9), &unknown), EqualsFrame(Frame(0, 9)));
    }
}

// ---- corners

// A flat frame of 2000 with 4000 in the corners at the bottom: six pixels of 200. Where they do not count the
// clip begins at 2000; where they do, at 2000 + trunc(2000 * 3800 / 4095) = 3855.
Frame BrightCorners() {
    Frame frame = Flat(20, 10, 2000);
    for (const int32_t x : {0, 1, 18, 19}) frame.At(x, 9) = 4000;
    for (const int32_t x : {0, 19}) frame.At(x, 8) = 4000;
    return frame;
}

Frame CornersClippedAt(uint16_t level) {
    Frame frame = BrightCorners();
    for (uint16_t& pixel : frame.pixels)
        if (pixel == 4000) pixel = level;
    return frame;
}

SensorGeometry WithCorners() {
    SensorGeometry geometry = WithoutCorners(20, 10);
    geometry.RCCutOff = 1;
    return geometry;
}

TEST(ExposureCurve, CornersDoNotCountForTheClip) {
    const SensorGeometry none = WithoutCorners(20, 10);
    const SensorGeometry corners = WithCorners();
    EXPECT_THAT(Exposed(BrightCorners(), &none), EqualsFrame(CornersClippedAt(3855)));
    EXPECT_THAT(Exposed(BrightCorners(), &corners), EqualsFrame(CornersClippedAt(2000)));
}

TEST(ExposureCurve, CornersCountForTheBlackPoint) {
    // Black point 0, span 2000: the clip begins at 1855.
    Frame frame = Flat(20, 10, 2000);
    frame.At(0, 9) = 0;
    Frame clipped = Flat(20, 10, 1855);
    clipped.At(0, 9) = 0;
    const SensorGeometry corners = WithCorners();
    EXPECT_THAT(Exposed(frame, &corners), EqualsFrame(clipped));
}

TEST(ExposureCurve, FrameHiddenAllOverHasANegativeSpan) {
    // A corner as large as the frame hides all of it, so no level passes the clip's limit and `high` is 0.
    SensorGeometry geometry = WithoutCorners(2, 2);
    geometry.RCCutOffR = 2;
    // Span -3000: the lift would end at 3000 - 183; the clip would begin at 3000 - 2783, so it does at 1800.
    EXPECT_THAT(Exposed(FromRows({{3000, 3001}, {3100, 4095}}), &geometry), EqualsFrame(Flat(2, 2, 1800)));
    // Span -100: the lift ends at 100 - 6, below every pixel; the clip begins at 1800.
    EXPECT_THAT(Exposed(FromRows({{100, 101}, {1799, 1801}}), &geometry),
                EqualsFrame(FromRows({{100, 101}, {1799, 1800}})));
}

TEST(ExposureCurve, TurnedGeometryPutsTheCornersAtTheRight) {
    // The frame above, turned counterclockwise: the bottom is at the right.
    Frame turned(10, 20);
    Frame expected(10, 20);
    const Frame upright = BrightCorners();
    for (int32_t y = 0; y < 10; ++y)
        for (int32_t x = 0; x < 20; ++x) {
            turned.At(y, 19 - x) = upright.At(x, y);
            expected.At(y, 19 - x) = CornersClippedAt(2000).At(x, y);
        }
    SensorGeometry geometry = WithCorners();
    geometry.Rotation = 1;
    EXPECT_THAT(Exposed(turned, &geometry), EqualsFrame(expected));
}

TEST(ExposureCurve, FrameThatReachesOutOfTheFullFrameHasNoCorners) {
    const ShownMessages messages;
    for (const auto& [field, value] : std::vector<std::pair<int32_t SensorGeometry::*, int32_t>>{
             {&SensorGeometry::FrameWidth, 19},
             {&SensorGeometry::FrameHeight, 9},
             {&SensorGeometry::ImgCutLeft, 1},
             {&SensorGeometry::ImgCutLeft, -1},
             {&SensorGeometry::ImgCutLeft, kHighest},
             {&SensorGeometry::ImgCutTop, 1},
             {&SensorGeometry::ImgCutTop, -1},
             {&SensorGeometry::ImgCutTop, kLowest},
             {&SensorGeometry::FrameWidth, kHighest}}) {
        SensorGeometry geometry = WithCorners();
        geometry.*field = value;
        EXPECT_THAT(Exposed(BrightCorners(), &geometry), EqualsFrame(CornersClippedAt(3855)));
    }
    EXPECT_EQ(messages.Count(), 0U);
}

TEST(ExposureCurve, LargerFullFrameKeepsItsCornersBelowTheFrame) {
    SensorGeometry geometry = WithCorners();
    geometry.FrameHeight = 20;
    EXPECT_THAT(Exposed(BrightCorners(), &geometry), EqualsFrame(CornersClippedAt(3855)));
    geometry.ImgCutTop = 10;
    EXPECT_THAT(Exposed(BrightCorners(), &geometry), EqualsFrame(CornersClippedAt(2000)));
}

TEST(ExposureCurve, WrongCornersShowAMessageAndCountAsNone) {
    const ShownMessages messages;
    SensorGeometry geometry = WithCorners();
    geometry.RCCutOff = 6;
    EXPECT_THAT(Exposed(BrightCorners(), &geometry), EqualsFrame(CornersClippedAt(3855)));
    EXPECT_TRUE(messages.AreOnly(L"Wrong parameters of round-corner mask", MessageIcon::Error));
}

// Bright pixels in the corners at the top, beside a dark first and last column.
TEST(ExposureCurve, UnknownOrientationLooksForDarkCornersInTheFrame) {
    Frame frame = Flat(20, 10, 2000);
    frame.At(0, 0) = 0;
    frame.At(0, 1) = 0;
    frame.At(1, 0) = 4000;
    frame.At(19, 0) = 0;
    frame.At(19, 1) = 0;
    frame.At(18, 0) = 4000;
    frame.At(10, 5) = 4000;
    // The first exposed row is 2 at both sides: two columns of row 0 and one of row 1 do not count, so one
    // bright pixel is left, which does not pass the limit of 2. Black point 0: the clip begins at 1855.
    Frame hidden = frame;
    for (uint16_t& pixel : hidden.pixels)
        if (pixel >= 2000) pixel = 1855;
    SensorGeometry geometry{};
    geometry.Rotation = -10;
    geometry.Flip = -10;
    geometry.RCCutOff = 5;
    EXPECT_THAT(Exposed(frame, &geometry), EqualsFrame(hidden));
    // Searched in no row, the corners are not at the top: all three bright pixels count, and the clip begins
    // at trunc(4000 * 3800 / 4095) = 3711.
    geometry.RCCutOff = 0;
    Frame counted = frame;
    for (uint16_t& pixel : counted.pixels)
        if (pixel == 4000) pixel = 3711;
    EXPECT_THAT(Exposed(frame, &geometry), EqualsFrame(counted));
    // Without a profile and a geometry: the defaults, with their search in 150 rows.
    const TemporaryFolder folder;
    EXPECT_THAT(Exposed(frame, nullptr, folder.Wide(L"none.ini")), EqualsFrame(hidden));
}

TEST(ExposureCurve, GeometryStandsInTheProfileUnlessTheCallerGivesOne) {
    const TemporaryFolder folder;
    ProfileWriter()
        .Section("Settings")
        .Key("Rotation", "0")
        .Key("Flip", "0")
        .Key("RCCutOff", "1")
        .Key("RCCutOffR", "0")
        .Key("FrameWidth", "20")
        .Key("FrameHeight", "10")
        .WriteTo(folder.Path() / "a.ini");
    EXPECT_THAT(Exposed(BrightCorners(), nullptr, folder.Wide(L"a.ini")),
                EqualsFrame(CornersClippedAt(2000)));
    const SensorGeometry none = WithoutCorners(20, 10);
    EXPECT_THAT(Exposed(BrightCorners(), &none, folder.Wide(L"a.ini")), EqualsFrame(CornersClippedAt(3855)));
}

TEST(ExposureCurve, ProfileOfARunWithoutASensorShowsAMessageEachTime) {
    const TemporaryFolder folder;
    const ShownMessages messages;
    ProfileWriter()
        .Section("Settings")
        .Key("Rotation", "0")
        .Key("Flip", "0")
        .Key("RCCutOff", "159")
        .Key("RCCutOffR", "159")
        .Key("FrameWidth", "0")
        .Key("FrameHeight", "0")
        .WriteTo(folder.Path() / "a.ini");
    for (size_t call = 1; call <= 2; ++call) {
        EXPECT_THAT(Exposed(BrightCorners(), nullptr, folder.Wide(L"a.ini")),
                    EqualsFrame(CornersClippedAt(3855)));
        EXPECT_EQ(messages.Count(), call);
    }
}

// ---- clip levels

std::pair<uint16_t, uint16_t> ClipLevels(const Frame& frame, const Frame& mask) {
    uint16_t low = 7;
    uint16_t high = 7;
    MeasureClipLevels(frame.Data(), mask.Data(), frame.width, frame.height, low, high);
    return {low, high};
}

using Levels = std::pair<uint16_t, uint16_t>;

TEST(MeasureClipLevels, AreWhereTheCountPassesAHundredthOfThePixels) {
    // A hundredth of 100 pixels is 1: one pixel does not pass it, the second does.
    Frame frame = Flat(10, 10, 500);
    frame.At(3, 0) = 5;
    frame.At(4, 9) = 4000;
    EXPECT_EQ(ClipLevels(frame, Flat(10, 10, 0)), Levels(500, 500));
    frame.At(0, 0) = 10;
    frame.At(9, 9) = 3000;
    EXPECT_EQ(ClipLevels(frame, Flat(10, 10, 0)), Levels(10, 3000));
    // 99 pixels have a hundredth of less than 1.
    Frame smaller = Flat(9, 11, 500);
    smaller.At(0, 0) = 5;
    smaller.At(0, 1) = 4000;
    EXPECT_EQ(ClipLevels(smaller, Flat(9, 11, 0)), Levels(5, 4000));
}

TEST(MeasureClipLevels, LeaveOutMaskedPixelsButCountThemInTheHundredth) {
    // 200 pixels: the limit is 2, though 196 are masked.
    Frame frame = Of200({1, 2, 3, 4}, 0);
    Frame mask = Flat(20, 10, 255);
    for (int32_t x = 0; x < 4; ++x) mask.At(x, 0) = 0;
    EXPECT_EQ(ClipLevels(frame, mask), Levels(3, 2));
    // Two pixels do not pass it from either end; any mask but 0 hides.
    mask.At(0, 0) = 1;
    mask.At(3, 0) = 65535;
    EXPECT_EQ(ClipLevels(frame, mask), Levels(4096, 0));
}

TEST(MeasureClipLevels, PixelsAbove4095CountAs4095) {
    EXPECT_EQ(ClipLevels(FromRows({{4096, 65535}}), Flat(2, 1, 0)), Levels(4095, 4095));
}

TEST(MeasureClipLevels, OfNothingAreTheFarEnds) {
    EXPECT_EQ(ClipLevels(Frame(0, 0), Frame(0, 0)), Levels(4096, 0));
    EXPECT_EQ(ClipLevels(Flat(1, 1, 9), Flat(1, 1, 1)), Levels(4096, 0));
    EXPECT_EQ(ClipLevels(Flat(1, 1, 9), Flat(1, 1, 0)), Levels(9, 9));
}

// ---- dark corners

struct DetectCase {
    const char* name;
    int32_t width;
    std::vector<uint16_t> first;  // the first column, from the top
    std::vector<uint16_t> last;   // the last column
    int32_t cutOff;
    Frame mask;
};

class DetectCornerMaskTest : public testing::TestWithParam<DetectCase> {};

TEST_P(DetectCornerMaskTest, MarksFromTheFirstAndTheLastColumn) {
    const DetectCase& test = GetParam();
    // Between the two columns all is dark, and must not matter.
    Frame frame(test.width, static_cast<int32_t>(test.first.size()));
    for (int32_t y = 0; y < frame.height; ++y) {
        frame.At(0, y) = test.first[static_cast<size_t>(y)];
        frame.At(test.width - 1, y) = test.last[static_cast<size_t>(y)];
    }
    for (const int32_t cutOffRight : {0, 170, -1}) {
        Frame mask(frame.width, frame.height);
        DetectCornerMask(frame.Data(), frame.width, frame.height, mask.Data(), test.cutOff, cutOffRight);
        EXPECT_THAT(mask, EqualsFrame(test.mask));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Top, DetectCornerMaskTest,
    testing::Values(
        // The first exposed rows are 2 and 1.
        DetectCase{"CornersOfUnequalSize",
                   6,
                   {10, 0, 11, 99, 99},
                   {0, 11, 99, 99, 99},
                   3,
                   FromRows({{1, 1, 0, 0, 0, 1},
                             {1, 0, 0, 0, 0, 0},
                             {0, 0, 0, 0, 0, 0},
                             {0, 0, 0, 0, 0, 0},
                             {0, 0, 0, 0, 0, 0}})},
        DetectCase{"TenIsDarkElevenIsExposed",
                   4,
                   {10, 11, 0},
                   {11, 10, 0},
                   3,
                   FromRows({{1, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}})},
        DetectCase{"ExposedCornersGiveAnEmptyMask", 6, {11, 0, 0}, {65535, 0, 0}, 3, Flat(6, 3, 0)},
        DetectCase{"LastSearchedRowCounts",
                   6,
                   {0, 0, 11},
                   {0, 0, 11},
                   3,
                   FromRows({{1, 1, 0, 0, 1, 1}, {1, 0, 0, 0, 0, 1}, {0, 0, 0, 0, 0, 0}})},
        DetectCase{"MarksMeetInNarrowFrames",
                   3,
                   {0, 0, 11},
                   {0, 0, 11},
                   3,
                   FromRows({{1, 1, 1}, {1, 0, 1}, {0, 0, 0}})},
        DetectCase{"MarksStayInTheirRow",
                   2,
                   {0, 0, 0, 11},
                   {11, 11, 11, 11},
                   4,
                   FromRows({{1, 1}, {1, 1}, {1, 0}, {0, 0}})},
        DetectCase{"OneColumn", 1, {0, 0, 11}, {0, 0, 11}, 3, FromRows({{1}, {1}, {0}})}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Bottom, DetectCornerMaskTest,
    testing::Values(
        // Not exposed in rows 0 and 1, the left side is found at once in row 4, counted from the top. Rows 4,
        // 3 and 2 take 4, 3 and 2 pixels; the right corner was found in row 0 and hides none.
        DetectCase{"SizeIsTheRowsNumberFromTheTop",
                   6,
                   {0, 0, 11, 11, 11},
                   {11, 11, 11, 11, 11},
                   2,
                   FromRows({{0, 0, 0, 0, 0, 0},
                             {0, 0, 0, 0, 0, 0},
                             {1, 1, 0, 0, 0, 0},
                             {1, 1, 1, 0, 0, 0},
                             {1, 1, 1, 1, 0, 0}})},
        // Row 4 is dark at the left: found in row 3. Right: row 1, from the search at the top.
        DetectCase{"KeepsWhatTheTopHasFound",
                   6,
                   {0, 0, 11, 11, 0},
                   {0, 11, 0, 0, 0},
                   2,
                   FromRows({{0, 0, 0, 0, 0, 0},
                             {0, 0, 0, 0, 0, 0},
                             {1, 0, 0, 0, 0, 0},
                             {1, 1, 0, 0, 0, 0},
                             {1, 1, 1, 0, 0, 1}})},
        DetectCase{
            "DarkFrameTakesTheGivenSize",
            6,
            {0, 0, 0, 0},
            {0, 0, 0, 0},
            2,
            FromRows({{0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}, {1, 0, 0, 0, 0, 1}, {1, 1, 0, 0, 1, 1}})},
        // One unknown side makes both take the given size, whatever the other's was.
        DetectCase{
            "OneDarkSideTakesTheGivenSizeForBoth",
            6,
            {0, 0, 0, 0},
            {11, 11, 11, 11},
            2,
            FromRows({{0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}, {1, 0, 0, 0, 0, 1}, {1, 1, 0, 0, 1, 1}})},
        // No row is searched at the top; one row is filled.
        DetectCase{"SizeZeroFillsTheLastRow",
                   6,
                   {11, 11, 11},
                   {11, 11, 11},
                   0,
                   FromRows({{0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}, {1, 1, 0, 0, 1, 1}})},
        DetectCase{"SizeZeroInADarkFrame", 6, {0, 0, 0}, {0, 0, 0}, 0, Flat(6, 3, 0)},
        DetectCase{"NegativeSizeFillsNothing", 6, {11, 11, 11}, {11, 11, 11}, -1, Flat(6, 3, 0)},
        DetectCase{"LowestSizeFillsNothing", 6, {0, 0, 0}, {0, 0, 0}, kLowest, Flat(6, 3, 0)},
        DetectCase{"LargestSizeFillsTheDarkFrame", 6, {0, 0, 0}, {0, 0, 0}, kHighest, Flat(6, 3, 1)},
        DetectCase{"MarksStayInTheirRow",
                   2,
                   {0, 0, 0, 0, 0},
                   {0, 0, 0, 0, 0},
                   3,
                   FromRows({{0, 0}, {0, 0}, {1, 1}, {1, 1}, {1, 1}})},
        DetectCase{"OnePixel", 1, {0}, {0}, 5, Flat(1, 1, 1)}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(DetectCornerMask, FollowsAFrameMirroredLeftToRight) {
    Frame frame = Noise(15, 40, 4095, 12);
    for (int32_t y = 0; y < 6; ++y) frame.At(0, y) = 0;
    for (int32_t y = 0; y < 3; ++y) frame.At(14, y) = 0;
    for (const int32_t cutOff : {4, 20}) {
        Frame mask(15, 40);
        Frame mirroredMask(15, 40);
        DetectCornerMask(frame.Data(), 15, 40, mask.Data(), cutOff, 0);
        DetectCornerMask(MirrorLeftRight(frame).Data(), 15, 40, mirroredMask.Data(), cutOff, 0);
        EXPECT_FALSE(mask == Frame(15, 40));
        EXPECT_THAT(mirroredMask, EqualsFrame(MirrorLeftRight(mask)));
    }
}

TEST(DetectCornerMask, EmptyFramesAreLeftAlone) {
    for (const auto& [width, height] : std::vector<std::pair<int32_t, int32_t>>{{0, 0}, {0, 5}, {5, 0}}) {
        Frame mask(width, height);
        DetectCornerMask(Frame(width, height).Data(), width, height, mask.Data(), 3, 3);
        EXPECT_THAT(mask, EqualsFrame(Frame(width, height)));
    }
}

}  // namespace
}  // namespace vastrelline
