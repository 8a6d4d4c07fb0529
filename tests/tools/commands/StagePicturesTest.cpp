// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "commands/StagePictures.h"
#include "formats/PngFormat.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

ShownPoint Point(const std::string& title, std::vector<uint16_t> pixels) {
    ShownPoint shown;
    shown.point = {PointKind::Stage, title, nullptr, "", Frame{2, 1, std::move(pixels)}, {}, {}};
    shown.point.statistics = MeasureFrame(*shown.point.frame);
    return shown;
}

std::vector<std::string> Leaves(const StagePictures& pictures) {
    std::vector<std::string> leaves;
    for (const FolderFile& file : pictures.files) leaves.push_back(file.leaf);
    return leaves;
}

std::vector<uint16_t> LevelsOf(const StagePictures& pictures, const std::string& leaf) {
    const auto found = std::find_if(pictures.files.begin(), pictures.files.end(),
                                    [&](const FolderFile& file) { return file.leaf == leaf; });
    return DecodePng({found->bytes.begin(), found->bytes.end()}).pixels;
}

TEST(StagePictures, AreNumberedInTheOrderOfTheRun) {
    const StagePictures pictures =
        DrawStagePictures("t", {Point("input", {0, 100}), Point("CLAHE", {100, 0})}, std::nullopt, 100);
    EXPECT_THAT(Leaves(pictures), ElementsAre("00_input.png", "01_clahe.png", "contact.png"));
    EXPECT_EQ(pictures.points[1].picture, "01_clahe.png");
    EXPECT_THAT(LevelsOf(pictures, "01_clahe.png"), ElementsAre(255, 0));
    EXPECT_EQ(pictures.contactSheet, "contact.png");
}

TEST(StagePictures, ShowFramesThroughAWindowThatHoldsThem) {
    const StagePictures pictures =
        DrawStagePictures("t", {Point("a", {0, 4095}), Point("b", {0, 4096})}, std::nullopt, 4095);
    EXPECT_EQ(pictures.points[0].window, (GreyWindow{0, 4095}));
    EXPECT_EQ(pictures.points[1].window, (GreyWindow{0, 8191}));
    const StagePictures asked = DrawStagePictures("t", {Point("b", {0, 4096})}, GreyWindow{0, 4096}, 4095);
    EXPECT_THAT(LevelsOf(asked, "00_b.png"), ElementsAre(0, 255));
}

TEST(StagePictures, DrawACurveOverTheFrameBefore) {
    ShownPoint gamma = Point("Gamma curve", {3, 3});
    gamma.curve = {{0, 0}, {100, 200}};
    const StagePictures pictures =
        DrawStagePictures("t", {Point("input", {0, 100}), gamma}, std::nullopt, 100);
    EXPECT_EQ(pictures.points[1].curve, "01_gamma_curve.svg");
    const auto svg = std::find_if(pictures.files.begin(), pictures.files.end(),
                                  [](const FolderFile& file) { return file.leaf == "01_gamma_curve.svg"; });
    ASSERT_NE(svg, pictures.files.end());
    EXPECT_THAT(svg->bytes, HasSubstr("01 Gamma curve"));
    // Two levels, both at the ends and equally frequent: the first and the last of 101 bars have the full
    // height. A bar is 1270 / 101 units wide.
    EXPECT_THAT(svg->bytes, HasSubstr("d=\"M130 790V80H142V790"));
    EXPECT_THAT(svg->bytes, HasSubstr("V80H1400V790Z"));
}

TEST(StagePictures, ShowBandsAroundTheMiddleWithOneReachForBoth) {
    ShownPoint pyramid = Point("Pyramid", {1, 1});
    pyramid.bands.push_back({0, {2, 1, {0, -10}}, {2, 1, {0, 127}}, {{-10, -10}, {10, 127}}});
    const StagePictures pictures = DrawStagePictures("t", {pyramid}, std::nullopt, 100);
    ASSERT_EQ(pictures.points[0].bands.size(), 1U);
    const BandFiles& band = pictures.points[0].bands[0];
    EXPECT_EQ(band.reach, 127);
    EXPECT_EQ(band.before, "00_pyramid_band_0_before.png");
    EXPECT_EQ(band.curve, "00_pyramid_band_0_curve.svg");
    EXPECT_THAT(LevelsOf(pictures, band.before), ElementsAre(128, 118));
    EXPECT_THAT(LevelsOf(pictures, band.after), ElementsAre(128, 255));
}

TEST(StagePictures, LeaveOutAStageThatShowsNoFrame) {
    ShownPoint none = Point("Linear curve", {1, 1});
    none.point.frame.reset();
    const StagePictures pictures = DrawStagePictures("t", {Point("input", {0, 1}), none}, std::nullopt, 100);
    EXPECT_THAT(Leaves(pictures), ElementsAre("00_input.png", "contact.png"));
    EXPECT_EQ(pictures.points[1].picture, "");
}

TEST(NumberedLeaf, HasPlainLettersOnly) {
    EXPECT_EQ(NumberedLeaf(3, "CLAHE"), "03_clahe");
    EXPECT_EQ(NumberedLeaf(12, "Pyramid, band 0"), "12_pyramid_band_0");
    EXPECT_EQ(NumberedLeaf(100, "a/../b"), "100_a_b");
}

TEST(DescribeShare, TellsNothingFromAlmostNothing) {
    EXPECT_EQ(DescribeShare(0.0), "0.0 %");
    EXPECT_EQ(DescribeShare(0.0001), "under 0.1 %");
    EXPECT_EQ(DescribeShare(0.125), "12.5 %");
    EXPECT_EQ(DescribeShare(1.0), "100.0 %");
}

}  // namespace
}  // namespace vastrelline
