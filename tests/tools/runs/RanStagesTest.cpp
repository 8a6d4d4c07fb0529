// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runs/RanStages.h"

namespace vastrelline {
namespace {

std::string Shown(const std::vector<RanStage>& stages) {
    std::string text;
    for (const RanStage& stage : stages) {
        if (stage.place->position) text += std::to_string(*stage.place->position) + " ";
        text += stage.title;
        text += stage.elapsedMs ? " " + std::to_string(static_cast<int>(*stage.elapsedMs)) : " -";
        text += "; ";
    }
    return text;
}

RunLog LogOf(const std::vector<std::pair<std::string, double>>& lines) {
    RunLog log;
    for (const auto& [name, elapsedMs] : lines) log.stages.push_back({name, elapsedMs, {}});
    return log;
}

TEST(RanStages, TakeTheirTimesFromTheLog) {
    // preProcessing (12) writes no line, 99 is no stage, HDR (13) needs another chain.
    const ProfileFile file("p.ini",
                           "[A]\nPROCMODE=2\nFunctionCount=6\n00_Function_Number=8\n01_Function_Number=12\n"
                           "02_Function_Number=99\n03_Function_Number=13\n04_Function_Number=3\n"
                           "05_Function_Number=3\n");
    const SectionPlan plan = MakeSectionPlan(file, "A", ExportKind::Plain);
    EXPECT_EQ(Shown(ListRanStages(plan, false, LogOf({{"Gaussian", 1}, {"CLAHE", 2}, {"CLAHE", 3}}))),
              "0 Gaussian 1; 1 preProcessing -; 4 CLAHE 2; 5 CLAHE 3; ");
    EXPECT_EQ(Shown(ListRanStages(plan, false, std::nullopt)),
              "0 Gaussian -; 1 preProcessing -; 4 CLAHE -; 5 CLAHE -; ");
}

TEST(RanStages, OfALowFrameAreTheFixedSequence) {
    const ProfileFile file("p.ini", "[A]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=10\n");
    const SectionPlan plan = MakeSectionPlan(file, "A", ExportKind::S);
    EXPECT_EQ(Shown(ListRanStages(plan, false, std::nullopt)), "0 Gamma curve -; ");
    EXPECT_EQ(Shown(ListRanStages(plan, true, std::nullopt)),
              "0 Gaussian -; 1 preProcessing -; 2 Histogram stretch -; 3 CLAHE -; 4 CLAHE -; "
              "5 Linear curve -; 6 Gamma curve -; ");
}

TEST(RanStages, OfTheFixedChainAreThoseSwitchedOn) {
    const ProfileFile file("p.ini", "[A]\nPOST_MEDIAN=1\nPYRAMID_PROCESSING=1\nINVERSE_INTENSITY=0\n");
    const SectionPlan fixed = MakeSectionPlan(file, "A", ExportKind::Plain);
    EXPECT_EQ(Shown(ListRanStages(fixed, false,
                                  LogOf({{"pyramid", 4}, {"Post-NoiseReduction", 5}, {"Linear Curve", 6}}))),
              "Pyramid enhancement 4; Median 5; Linear curve 6; ");
    const SectionPlan cr = MakeSectionPlan(file, "A", ExportKind::CR);
    EXPECT_EQ(Shown(ListRanStages(cr, false, std::nullopt)), "Median -; Linear curve -; ");
    const ProfileFile sigmoid("p.ini", "[A]\nPOST_SIGMOID_LUT=1\nINVERSE_INTENSITY=0\n");
    const SectionPlan switchedOn = MakeSectionPlan(sigmoid, "A", ExportKind::Plain);
    EXPECT_EQ(Shown(ListRanStages(switchedOn, false, std::nullopt)), "Sigmoid curve -; ");
}

TEST(RanStages, TellTheirTimeInWholeMilliseconds) {
    EXPECT_EQ(DescribeTime({nullptr, "CLAHE", 12.0}), "12 ms");
    EXPECT_EQ(DescribeTime({nullptr, "CLAHE", 0.0}), "under 1 ms");
    EXPECT_EQ(DescribeTime({nullptr, "CLAHE", std::nullopt}), "");
}

}  // namespace
}  // namespace vastrelline
