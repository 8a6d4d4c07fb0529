// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "runs/StagePoints.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;

Frame Of(std::vector<uint16_t> pixels) { return {2, 2, std::move(pixels)}; }

std::vector<std::string> Titles(const std::vector<StagePoint>& points) {
    std::vector<std::string> titles;
    for (const StagePoint& point : points) titles.push_back(point.title + (point.frame ? "" : " (no frame)"));
    return titles;
}

// A run of a gamma curve and CLAHE.
class StagePointsTest : public testing::Test {
protected:
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): every test is a class derived from it
    ProfileFile file_{"p.ini",
                      "[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=10\n01_Function_Number=3\n"};
    SectionPlan plan_ = MakeSectionPlan(file_, "A", ExportKind::Plain);
    std::vector<RanStage> stages_ = ListRanStages(plan_, false, std::nullopt);
    Frame read_ = Of({1, 2, 3, 4});
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(StagePointsTest, AreInTheOrderOfTheRun) {
    const std::vector<StagePoint> points =
        ListStagePoints(read_, Of({9, 9, 9, 9}),
                        {{StageFrameKind::Input, 0, "00", Of({1, 2, 3, 4})},
                         {StageFrameKind::Inverted, 0, "01", Of({4, 3, 2, 1})},
                         {StageFrameKind::AfterStage, 0, "02", Of({4, 3, 2, 9})},
                         {StageFrameKind::AfterStage, 1, "03", Of({4, 3, 8, 8})},
                         {StageFrameKind::Result, 0, "04", Of({4, 3, 8, 8})}},
                        stages_);
    EXPECT_THAT(Titles(points), ElementsAre("input", "inverted", "Gamma curve", "CLAHE", "result"));
    EXPECT_EQ(points[0].changed, std::nullopt);
    EXPECT_EQ(points[1].changed, 1.0);
    EXPECT_EQ(points[2].changed, 0.25);
    EXPECT_EQ(points[3].changed, 0.5);
    EXPECT_EQ(points[2].statistics.greatest, 9);
    EXPECT_EQ(points[2].stage, &stages_[0]);
    EXPECT_EQ(points[2].dump, "02");
    EXPECT_EQ(points[4].frame->pixels, (std::vector<uint16_t>{9, 9, 9, 9})) << "what the host gets";
}

TEST_F(StagePointsTest, HaveStagesThatShowNoFrame) {
    const std::vector<StagePoint> points =
        ListStagePoints(read_, std::nullopt,
                        {{StageFrameKind::Input, 0, "00", Of({1, 2, 3, 4})},
                         {StageFrameKind::AfterStage, 1, "01", Of({1, 2, 3, 5})},
                         {StageFrameKind::Result, 0, "02", Of({1, 2, 3, 5})}},
                        stages_);
    EXPECT_THAT(Titles(points), ElementsAre("input", "Gamma curve (no frame)", "CLAHE", "result"));
    EXPECT_EQ(points[1].changed, std::nullopt);
    EXPECT_EQ(points[2].changed, 0.25) << "against the last frame that is shown";
    EXPECT_EQ(points[3].changed, 0.0);
}

TEST_F(StagePointsTest, BeginWithTheFrameIfTheChainGetsAnother) {
    const std::vector<StagePoint> points = ListStagePoints(
        read_, Of({5, 5, 5, 5}), {{StageFrameKind::Input, 0, "00", Of({2, 2, 3, 4})}}, stages_);
    EXPECT_THAT(Titles(points),
                ElementsAre("frame", "input", "Gamma curve (no frame)", "CLAHE (no frame)", "result"));
    EXPECT_EQ(points[1].changed, 0.25);
}

TEST(StagePoints, OfTheFixedChainHaveOneInversion) {
    const ProfileFile file("p.ini", "[A]\nPROCMODE=0\nINVERSE_INTENSITY=1\n");
    const SectionPlan plan = MakeSectionPlan(file, "A", ExportKind::Plain);
    const std::vector<RanStage> stages = ListRanStages(plan, false, std::nullopt);
    const std::vector<StagePoint> points =
        ListStagePoints(Of({1, 2, 3, 4}), std::nullopt,
                        {{StageFrameKind::Input, 0, "00", Of({1, 2, 3, 4})},
                         {StageFrameKind::Inverted, 0, "01", Of({4, 3, 2, 1})}},
                        stages);
    size_t inversions = 0;
    for (const StagePoint& point : points)
        if (point.stage != nullptr && point.stage->place->stage == nullptr) ++inversions;
    EXPECT_EQ(inversions, 1U);
    EXPECT_EQ(points[1].title, "inverted");
}

}  // namespace
}  // namespace vastrelline
