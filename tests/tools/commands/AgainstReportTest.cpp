// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "commands/AgainstReport.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

TEST(AgainstReport, TellsEachPointAndTheVerdict) {
    RunOptions options;
    options.frame = "f.raw";
    const FolderRun input{ProfileFile("p.ini", "[A]\nPROCMODE=2\n"), TraitsOf(ExportKind::Plain), {}, {}};
    const SectionPlan plan = MakeSectionPlan(input.profile, "A", input.traits.kind);
    AgainstReport report{&options, &input, &plan, {"new.so", "12", 0}, {"old.so", "34", 0}, {}};
    report.points = {{PointKind::Input, "input", {}, true, true, 0, 0},
                     {PointKind::Stage, "CLAHE", 4, false, true, 0, 0},
                     {PointKind::Stage, "Median", 5, true, true, 17, 1}};
    EXPECT_FALSE(report.IsSame());
    std::string text = FormatAgainst(report);
    EXPECT_THAT(text, HasSubstr("  04 CLAHE                      shows no frame\n"));
    EXPECT_THAT(text, HasSubstr("  05 Median                           17        1\n"));
    EXPECT_THAT(text, HasSubstr("\ndifferent from '05 Median' on: 17 pixels, by up to 1 level\n"));
    nlohmann::json json = AgainstToJson(report);
    EXPECT_TRUE(json["points"][1]["differing"].is_null());
    EXPECT_EQ(json["firstDifference"]["title"], "Median");

    report.points[2].isInBoth = false;
    EXPECT_THAT(FormatAgainst(report), HasSubstr("only one build comes by '05 Median'"));
    report.points.pop_back();
    EXPECT_TRUE(report.IsSame());
    EXPECT_THAT(FormatAgainst(report),
                HasSubstr("\nthe same pixels wherever there is a frame; 1 stage shows none\n"));
    report.points.pop_back();
    EXPECT_THAT(FormatAgainst(report), HasSubstr("\nthe same pixels everywhere\n"));
    json = AgainstToJson(report);
    EXPECT_EQ(json["same"], true);
    EXPECT_TRUE(json["firstDifference"].is_null());
}

}  // namespace
}  // namespace vastrelline
