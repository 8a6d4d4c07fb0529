// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "runs/StageCurves.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::Optional;

// A run of two stages of one number, with the dumps of both.
class StageCurvesTest : public testing::Test {
protected:
    void Plan(const std::string& number) {
        file_.emplace("p.ini", "[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=" + number +
                                   "\n01_Function_Number=" + number + "\n");
        plan_ = MakeSectionPlan(*file_, "A", ExportKind::Plain);
        stages_ = ListRanStages(plan_, false, std::nullopt);
        ASSERT_EQ(stages_.size(), 2U);
    }

    std::optional<std::vector<CurvePoint>> Find(size_t stage, const std::string& dump) const {
        return FindStageCurve(folder_.Path().string(), stages_,
                              {StageFrameKind::AfterStage, stage, folder_.Narrow(dump), {}});
    }

    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
    std::optional<ProfileFile> file_;
    SectionPlan plan_;
    std::vector<RanStage> stages_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(StageCurvesTest, HaveTheNumberOfTheDump) {
    Plan("10");
    WriteBytes(folder_.Path() / "02_GammaCurve.txt", "0\t5\n");
    WriteBytes(folder_.Path() / "03_GammaCurve.txt", "0\t6\n");
    EXPECT_THAT(Find(0, "02_result_gamma.raw"), Optional(ElementsAre(CurvePoint{0, 5})));
    EXPECT_THAT(Find(1, "03_result_gamma.raw"), Optional(ElementsAre(CurvePoint{0, 6})));
    EXPECT_EQ(Find(1, "04_result_gamma.raw"), std::nullopt);
}

TEST_F(StageCurvesTest, WithoutANumberBelongToTheLastOfTheirKind) {
    Plan("2");
    WriteBytes(folder_.Path() / "AdjustCurve_Sigmoid.txt", "0\t-7\n");
    EXPECT_EQ(Find(0, "02_stretchimage2.raw"), std::nullopt);
    EXPECT_THAT(Find(1, "03_stretchimage2.raw"), Optional(ElementsAre(CurvePoint{0, -7})));
}

TEST_F(StageCurvesTest, AreNotThoseOfBands) {
    Plan("6");
    WriteBytes(folder_.Path() / "EnhancedSlope_0.txt", "0\t5\n");
    EXPECT_EQ(Find(1, "03_pyramid.raw"), std::nullopt);
}

}  // namespace
}  // namespace vastrelline
