// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using Json = nlohmann::json;

// A phantom of this kind, and what `info` measures of it.
Json MeasureKind(const TemporaryFolder& folder, const std::string& kind, const std::vector<std::string>& more,
                 Json& truth) {
    std::vector<std::string> words{
        "phantom", kind, "--size", "240x200", "--out", folder.Narrow(kind + ".png"), "--json", "--force"};
    truth = Json::parse(RunTool(words, MustNotBeCalled).report);
    words = {"info", folder.Narrow(kind + ".png"), "--measure", kind, "--json"};
    words.insert(words.end(), more.begin(), more.end());
    return Json::parse(RunTool(words, MustNotBeCalled).report)["frames"][0]["measure"];
}

// The tolerances are those of the measures' own tests, widened for a smaller frame.
TEST(FrameMeasure, AgreesWithThePhantomsTruth) {
    const TemporaryFolder folder;
    Json truth;
    const Json edge = MeasureKind(folder, "edge", {"--pitch", "0.02"}, truth);
    EXPECT_NEAR(edge["mtf50"], truth["mtf50"], 0.015);
    EXPECT_NEAR(edge["mtf50PerMm"], truth["mtf50"].get<double>() * 50.0, 0.75);
    EXPECT_NEAR(edge["angleDegrees"], 5.0, 0.05);
    EXPECT_EQ(edge["mtf"].size(), truth["mtf"].size());
    const Json wedge = MeasureKind(folder, "wedge", {}, truth);
    ASSERT_EQ(wedge["steps"].size(), 8U);
    EXPECT_NEAR(wedge["steps"][7]["mean"], truth["steps"][7]["level"], 1.0);
    EXPECT_NEAR(wedge["steps"][7]["noise"], 8.0, 1.0);
    EXPECT_TRUE(wedge["steps"][0]["difference"].is_null());
    const Json lines = MeasureKind(folder, "lines", {}, truth);
    ASSERT_EQ(lines["groups"].size(), truth["groups"].size());
    EXPECT_NEAR(lines["groups"][1]["modulation"], truth["groups"][1]["modulation"], 0.002);
    EXPECT_TRUE(lines["groups"][1]["linePairsPerMm"].is_null());
}

TEST(FrameMeasure, TellsLinesForPeople) {
    const TemporaryFolder folder;
    Json truth;
    MeasureKind(folder, "edge", {}, truth);
    const ToolRun run = RunTool(
        {"info", folder.Narrow("edge.png"), "--measure", "edge", "--area", "40,10,160,180"}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_THAT(run.report, HasSubstr("  measured    edge at 5.0"));
    EXPECT_THAT(run.report, HasSubstr("  measured    half of the contrast is left at 0.2"));
}

TEST(FrameMeasure, WhatIsNotThereIsAnErrorOfTheFrame) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "flat_40x40.raw", std::string(3200, '\x01'));
    const std::string frame = folder.Narrow("flat_40x40.raw");
    const ToolRun edge = RunTool({"info", frame, "--measure", "edge"}, MustNotBeCalled);
    EXPECT_EQ(edge.exitCode, 3);
    EXPECT_EQ(edge.errors,
              frame +
                  ": there is no straight edge: both halves are of one level; --area names the part "
                  "that has it\n");
    const ToolRun outside =
        RunTool({"info", frame, "--measure", "edge", "--area", "30,0,20,20"}, MustNotBeCalled);
    EXPECT_EQ(outside.exitCode, 3);
    EXPECT_THAT(outside.errors, HasSubstr("the area reaches beyond the frame of 40x40"));
    const ToolRun even =
        RunTool({"info", frame, "--measure", "wedge", "--steps", "1", "--json"}, MustNotBeCalled);
    EXPECT_EQ(even.exitCode, 0);
    EXPECT_EQ(Json::parse(even.report)["frames"][0]["measure"]["steps"][0]["noise"], 0.0);
}

TEST(FrameMeasure, WrongOptionsAreTold) {
    const auto errorsOf = [](std::vector<std::string> words) {
        words.insert(words.begin(), {"info", "a_1x1.raw"});
        const ToolRun run = RunTool(words, MustNotBeCalled);
        EXPECT_EQ(run.exitCode, 2);
        return run.errors;
    };
    EXPECT_THAT(errorsOf({"--area", "1,2,3,4"}), HasSubstr("--area is for --measure only"));
    EXPECT_THAT(errorsOf({"--measure", "edge", "--area", "1,2,3"}), HasSubstr("'1,2,3' is no area"));
    EXPECT_THAT(errorsOf({"--measure", "wedge", "--steps", "0"}), HasSubstr("--steps should be 1 to 256"));
    EXPECT_THAT(errorsOf({"--measure", "edge", "--pitch", "nan"}), HasSubstr("--pitch should be"));
    EXPECT_THAT(errorsOf({"--measure", "teeth"}), HasSubstr("teeth"));
}

}  // namespace
}  // namespace vastrelline
