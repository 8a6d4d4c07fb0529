// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "commands/StagesReport.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;

// A run of a gamma curve whose stage left no frame, and of a pyramid with one band.
class StagesReportTest : public testing::Test {
protected:
    StagesReportTest() {
        run_.stages = ListRanStages(plan_, false, std::nullopt);
        run_.stages[1].elapsedMs = 7.0;
        ShownPoint gamma;
        gamma.point = {PointKind::Stage, run_.stages[0].title, &run_.stages[0], "", std::nullopt, {}, {}};
        ShownPoint pyramid;
        const Frame frame{2, 1, {3, 9}};
        pyramid.point = {
            PointKind::Stage, run_.stages[1].title, &run_.stages[1], "", frame, MeasureFrame(frame), 0.5};
        pyramid.bands.push_back({0, {2, 1, {0, -1}}, {2, 1, {0, -2}}, {}});
        points_ = {gamma, pyramid};
        pictures_.points = {PointFiles{}, PointFiles{"01_p.png", {0, 100}, "", {{"b.png", "a.png", "", 2}}}};
        pictures_.contactSheet = "contact.png";
        report_ = {"f.raw", &loaded_, &file_,     &plan_, &places_, &TraitsOf(ExportKind::Plain),
                   &run_,   &points_, &pictures_, "out",  {}};
    }

    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): every test is a class derived from it
    ProfileFile file_{"p.ini",
                      "[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=10\n01_Function_Number=6\n"};
    SectionPlan plan_ = MakeSectionPlan(file_, "A", ExportKind::Plain);
    std::vector<EffectivePlace> places_ = ReadEffectiveValues(file_, plan_);
    LoadedFrame loaded_{{2, 1, {0, 1}}, FileKind::Raw, 16, {}};
    FrameRun run_;
    std::vector<ShownPoint> points_;
    StagePictures pictures_;
    StagesReport report_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(StagesReportTest, HasALineForEachPointAndItsKeysBelow) {
    const std::string text = FormatStages(report_, 80);
    EXPECT_THAT(text, HasSubstr(" 0   00  Gamma curve               -  shows no frame\n"));
    EXPECT_THAT(text, HasSubstr(" 1   01  Pyramid enhancement       7      3      3      9       50.0 %\n"));
    EXPECT_THAT(text, HasSubstr("00_Function_Number=10 (line 4)"));
    EXPECT_THAT(text, HasSubstr("01_PYRAMID_LAYER=3 (default)"));
}

TEST_F(StagesReportTest, PartsNoKeyFromItsValue) {
    const std::string text = FormatStages(report_, 40);
    EXPECT_THAT(text, HasSubstr("         01_PYRAMID_LAYER=3 (default),\n"));
    EXPECT_THAT(text, Not(HasSubstr("(\n")));
}

TEST_F(StagesReportTest, TellsProgramsOfBands) {
    const nlohmann::ordered_json json = StagesToJson(report_);
    EXPECT_TRUE(json["points"][0]["frame"].is_null());
    const nlohmann::ordered_json& band = json["points"][1]["bands"][0];
    EXPECT_EQ(band["window"]["low"], -2);
    EXPECT_EQ(band["after"], "a.png");
    EXPECT_TRUE(band["curve"].is_null());
    EXPECT_NE(band["beforeSha256"], band["afterSha256"]);
    EXPECT_EQ(json["points"][1]["elapsedMs"], 7.0);
    EXPECT_EQ(json["points"][1]["frame"]["changedShare"], 0.5);
}

}  // namespace
}  // namespace vastrelline
