// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runs/FrameEffect.h"

namespace vastrelline {
namespace {

// A run of a section of the profile, whose frames are flat: one of each stage.
class FlatRun {
public:
    FlatRun(const std::string& list, uint16_t level)
        : file_("p.ini", "[A]\nPROCMODE=2\n" + list), plan_(MakeSectionPlan(file_, "A", ExportKind::Plain)) {
        frames_.stages = ListRanStages(plan_, false, std::nullopt);
        Add(StageFrameKind::Input, 0, 7);
        for (size_t stage = 0; stage < frames_.stages.size(); ++stage)
            Add(StageFrameKind::AfterStage, stage, level++);
        Add(StageFrameKind::Result, 0, level);
    }
    const RunFrames& Frames() const { return frames_; }

private:
    void Add(StageFrameKind kind, size_t stage, uint16_t level) {
        frames_.frames.push_back({kind, stage, "", {2, 2, {0, level, 0, 0}}});
    }

    ProfileFile file_;
    SectionPlan plan_;
    RunFrames frames_;
};

std::string Shown(const std::vector<FrameEffect>& effects) {
    std::string text;
    for (const FrameEffect& effect : effects)
        text += effect.title + ": " + std::to_string(static_cast<int>(100 * effect.changedShare)) + " % " +
                std::to_string(effect.meanDifference).substr(0, 4) + " " + std::to_string(effect.largest) +
                "; ";
    return text;
}

TEST(FrameEffect, IsToldAfterEveryStageThatBothHave) {
    const FlatRun first("FunctionCount=2\n00_Function_Number=8\n01_Function_Number=3\n", 100);
    const FlatRun second(
        "FunctionCount=3\n00_Function_Number=7\n01_Function_Number=8\n02_Function_Number=3\n", 105);
    // Gaussian 100 and 106, CLAHE 101 and 107, result 102 and 108, in one pixel of four.
    EXPECT_EQ(Shown(CompareRunFrames(first.Frames(), second.Frames())),
              "input: 0 % 0.00 0; 00 Gaussian (01 in B): 25 % 1.50 6; 01 CLAHE (02 in B): 25 % 1.50 6; "
              "result: 25 % 1.50 6; ");
}

TEST(FrameEffect, OfARunAndItselfIsNone) {
    const FlatRun run("FunctionCount=1\n00_Function_Number=8\n", 100);
    EXPECT_EQ(Shown(CompareRunFrames(run.Frames(), run.Frames())),
              "input: 0 % 0.00 0; 00 Gaussian: 0 % 0.00 0; result: 0 % 0.00 0; ");
}

TEST(FrameEffect, OfRunsWithoutFramesIsEmpty) { EXPECT_TRUE(CompareRunFrames({}, {}).empty()); }

}  // namespace
}  // namespace vastrelline
