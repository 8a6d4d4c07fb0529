// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "sensor/CornerMask.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskFrames.h"
#include "support/ProfileWriter.h"
#include "support/ShownMessages.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

// One letter keeps the pictures of masks in shape.
constexpr uint16_t M = 255;  // NOLINT(readability-identifier-naming)
constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();

Frame MaskOf(const Frame& frame, const SensorGeometry& geometry) {
    Frame mask(frame.width, frame.height);
    EXPECT_EQ(BuildMaskFromGeometry(frame.Data(), mask.Data(), frame.width, frame.height, geometry), 1);
    return mask;
}

// A sensor of 6 x 4 pixels with a chamfer that hides two pixels and one beside them in each corner.
SensorGeometry SmallSensor() {
    SensorGeometry geometry{};
    geometry.FrameWidth = 6;
    geometry.FrameHeight = 4;
    geometry.RCCutOff = 1;
    return geometry;
}

// Without a pixel of 0 the frame's own corners are empty.
Frame Exposed(int32_t width, int32_t height) { return Flat(width, height, 9); }

Frame OutlineOfSmallSensor() {
    return FromRows({{0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}, {M, 0, 0, 0, 0, M}, {M, M, 0, 0, M, M}});
}

// One black pixel, which is all that the frame's own corners mark.
Frame ExposedButOnePixel(int32_t width, int32_t height) { return Impulse(width, height, 1, 1, 0, 9); }
Frame OnePixelMasked(int32_t width, int32_t height) { return Impulse(width, height, 1, 1, M); }

TEST(BuildMaskFromGeometry, TakesTheOutlineWhereTheFrameFits) {
    EXPECT_THAT(MaskOf(Exposed(6, 4), SmallSensor()), EqualsFrame(OutlineOfSmallSensor()));
    EXPECT_THAT(MaskOf(ExposedButOnePixel(6, 4), SmallSensor()), EqualsFrame(OutlineOfSmallSensor()));
}

TEST(BuildMaskFromGeometry, CutsAreTakenOffTheFullFrame) {
    SensorGeometry geometry = SmallSensor();
    geometry.ImgCutLeft = 1;
    geometry.ImgCutTop = 2;
    EXPECT_THAT(MaskOf(Exposed(5, 2), geometry), EqualsFrame(FromRows({{0, 0, 0, 0, M}, {M, 0, 0, M, M}})));
    geometry.ImgCutRight = 2;
    geometry.ImgCutBottom = 1;
    EXPECT_THAT(MaskOf(Exposed(3, 1), geometry), EqualsFrame(FromRows({{0, 0, 0}})));
    geometry.ImgCutTop = 1;
    geometry.ImgCutBottom = 0;
    geometry.ImgCutLeft = 0;
    geometry.ImgCutRight = 3;
    EXPECT_THAT(MaskOf(Exposed(3, 3), geometry), EqualsFrame(FromRows({{0, 0, 0}, {M, 0, 0}, {M, M, 0}})));
}

TEST(BuildMaskFromGeometry, TurnedFrameIsComparedWithTheSidesSwapped) {
    SensorGeometry geometry = SmallSensor();
    geometry.Rotation = 1;  // corners at the right
    EXPECT_THAT(MaskOf(Exposed(4, 6), geometry),
                EqualsFrame(FromRows(
                    {{0, 0, M, M}, {0, 0, 0, M}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, M}, {0, 0, M, M}})));
    EXPECT_THAT(MaskOf(ExposedButOnePixel(6, 4), geometry), EqualsFrame(OnePixelMasked(6, 4)));
    // Left and top are those of the turned frame: width 4 - 1 - 0, height 6 - 2 - 1.
    geometry.ImgCutLeft = 1;
    geometry.ImgCutTop = 2;
    geometry.ImgCutBottom = 1;
    EXPECT_THAT(MaskOf(Exposed(3, 3), geometry), EqualsFrame(FromRows({{0, 0, 0}, {0, 0, 0}, {0, 0, M}})));
    geometry.Rotation = 2;  // corners at the left, of which the left cut takes the outer pixel
    EXPECT_THAT(MaskOf(Exposed(3, 3), geometry), EqualsFrame(Flat(3, 3, 0)));
}

TEST(BuildMaskFromGeometry, FrameOfAnotherSizeTakesItsOwnCorners) {
    const ShownMessages messages;
    for (const auto& change :
         {&SensorGeometry::FrameWidth, &SensorGeometry::FrameHeight, &SensorGeometry::ImgCutLeft,
          &SensorGeometry::ImgCutTop, &SensorGeometry::ImgCutRight, &SensorGeometry::ImgCutBottom})
        for (const int32_t off : {-1, 1, kLowest / 2, kHighest / 2}) {
            SensorGeometry geometry = SmallSensor();
            geometry.*change += off;
            EXPECT_THAT(MaskOf(ExposedButOnePixel(6, 4), geometry), EqualsFrame(OnePixelMasked(6, 4)));
        }
    EXPECT_EQ(messages.Count(), 0U);
}

TEST(BuildMaskFromGeometry, UnknownOrientationTakesTheFramesCorners) {
    const ShownMessages messages;
    SensorGeometry geometry = SmallSensor();
    geometry.Rotation = -10;
    EXPECT_THAT(MaskOf(ExposedButOnePixel(6, 4), geometry), EqualsFrame(OnePixelMasked(6, 4)));
    geometry.Rotation = 0;
    geometry.Flip = 4;
    EXPECT_THAT(MaskOf(ExposedButOnePixel(6, 4), geometry), EqualsFrame(OnePixelMasked(6, 4)));
    EXPECT_EQ(messages.Count(), 0U);
}

TEST(BuildMaskFromGeometry, WrongCornersShowAMessageAndTakeTheFramesCorners) {
    const ShownMessages messages;
    SensorGeometry geometry = SmallSensor();
    geometry.RCCutOff = 3;
    EXPECT_THAT(MaskOf(ExposedButOnePixel(6, 4), geometry), EqualsFrame(OnePixelMasked(6, 4)));
    EXPECT_TRUE(messages.AreOnly(L"Wrong parameters of round-corner mask", MessageIcon::Error));
}

TEST(BuildMaskFromGeometry, NegativeCutsThatFitReachOutOfTheFullFrame) {
    SensorGeometry geometry = SmallSensor();
    geometry.ImgCutLeft = -1;
    geometry.ImgCutBottom = -1;
    EXPECT_THAT(MaskOf(Exposed(7, 5), geometry), EqualsFrame(FromRows({{0, 0, 0, 0, 0, 0, 0},
                                                                       {0, 0, 0, 0, 0, 0, 0},
                                                                       {0, M, 0, 0, 0, 0, M},
                                                                       {0, M, M, 0, 0, M, M},
                                                                       {0, 0, 0, 0, 0, 0, 0}})));
}

TEST(BuildMaskFromGeometry, SidesThatFitOnlyByOverflowTakeTheFramesCorners) {
    const ShownMessages messages;
    SensorGeometry geometry = SmallSensor();
    geometry.FrameWidth = kLowest + 6;
    geometry.ImgCutLeft = 1 << 30;
    geometry.ImgCutRight = 1 << 30;
    EXPECT_THAT(MaskOf(ExposedButOnePixel(6, 4), geometry), EqualsFrame(OnePixelMasked(6, 4)));
}

TEST(BuildMaskFromGeometry, FollowsAMirroredFrame) {
    SensorGeometry geometry = SmallSensor();
    geometry.ImgCutLeft = 2;
    const Frame mask = MaskOf(Exposed(4, 4), geometry);
    geometry.ImgCutLeft = 0;
    geometry.ImgCutRight = 2;
    geometry.Flip = 1;
    EXPECT_THAT(MaskOf(Exposed(4, 4), geometry), EqualsFrame(MirrorLeftRight(mask)));
    geometry.Flip = 3;
    EXPECT_THAT(MaskOf(Exposed(4, 4), geometry), EqualsFrame(MirrorTopBottom(MirrorLeftRight(mask))));
}

TEST(BuildMaskFromGeometry, EmptyFramesAreLeftAlone) {
    EXPECT_THAT(MaskOf(Frame(0, 0), SmallSensor()), EqualsFrame(Frame(0, 0)));
    EXPECT_THAT(MaskOf(Frame(0, 0), SensorGeometry{}), EqualsFrame(Frame(0, 0)));
    EXPECT_THAT(MaskOf(Frame(0, 4), SensorGeometry{}), EqualsFrame(Frame(0, 4)));
}

Frame MaskFrom(const Frame& frame, const std::wstring& iniPath) {
    Frame mask(frame.width, frame.height);
    EXPECT_EQ(BuildMaskFromProfile(frame.Data(), mask.Data(), frame.width, frame.height, iniPath), 1);
    return mask;
}

TEST(BuildMaskFromProfile, ReadsTheGeometryFromTheSettings) {
    const TemporaryFolder folder;
    ProfileWriter()
        .Section("Settings")
        .Key("Rotation", "0")
        .Key("Flip", "2")
        .Key("RCCutOff", "1")
        .Key("RCCutOffR", "0")
        .Key("FrameWidth", "7")
        .Key("FrameHeight", "4")
        .Key("ImgCutLeft", "1")
        .WriteTo(folder.Path() / "a.ini");
    EXPECT_THAT(MaskFrom(Exposed(6, 4), folder.Wide(L"a.ini")),
                EqualsFrame(FromRows(
                    {{M, 0, 0, 0, M, M}, {0, 0, 0, 0, 0, M}, {0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}})));
}

TEST(BuildMaskFromProfile, WithoutAProfileTakesTheFramesCorners) {
    const TemporaryFolder folder;
    const ShownMessages messages;
    EXPECT_THAT(MaskFrom(ExposedButOnePixel(6, 4), folder.Wide(L"none.ini")),
                EqualsFrame(OnePixelMasked(6, 4)));
    EXPECT_EQ(messages.Count(), 0U);
}

TEST(BuildMaskFromProfile, WithoutAFullFrameTakesTheFramesCorners) {
    // What a run leaves behind that found no sensor: a known orientation, and sides of 0.
    const TemporaryFolder folder;
    const ShownMessages messages;
    ProfileWriter()
        .Section("Settings")
        .Key("Rotation", "0")
        .Key("Flip", "0")
        .Key("FrameWidth", "0")
        .Key("FrameHeight", "0")
        .WriteTo(folder.Path() / "a.ini");
    EXPECT_THAT(MaskFrom(ExposedButOnePixel(6, 4), folder.Wide(L"a.ini")), EqualsFrame(OnePixelMasked(6, 4)));
    EXPECT_EQ(messages.Count(), 0U);
}

}  // namespace
}  // namespace vastrelline
