// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "messages/ToolError.h"
#include "profile/SectionPlan.h"
#include "runs/StageFrames.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

std::string Raw(char level) { return {level, '\0'}; }

std::string Shown(const std::vector<StageFrame>& frames) {
    std::string text;
    for (const StageFrame& frame : frames) {
        switch (frame.kind) {
            case StageFrameKind::Input:
                text += "input";
                break;
            case StageFrameKind::Inverted:
                text += "inverted";
                break;
            case StageFrameKind::Result:
                text += "result";
                break;
            case StageFrameKind::AfterStage:
                text += std::to_string(frame.stage);
        }
        text += "=" + std::to_string(frame.frame.pixels.at(0)) + " ";
    }
    return text;
}

std::vector<StageFrame> Read(const TemporaryFolder& folder, const std::string& profile, ExportKind kind) {
    const ProfileFile file("p.ini", profile);
    const SectionPlan plan = MakeSectionPlan(file, "A", kind);
    return ReadStageFrames(folder.Path().string(), {1, 1}, ListRanStages(plan, false, std::nullopt));
}

TEST(StageFrames, AreTheDumpsInTheirOrder) {
    const TemporaryFolder folder;
    const std::vector<std::string> names{"00_originalimage.raw",
                                         "01_originalimage_invert.raw",
                                         "02_precontrastgaussian.raw",
                                         "03_precontrast.raw",
                                         "04_precontrastgaussian.raw",
                                         "05_precontrast.raw",
                                         "06_clahe.raw",
                                         "07_clahe.raw",
                                         "08_unsharp3.raw",
                                         "09_result.raw"};
    for (size_t i = 0; i < names.size(); ++i) WriteBytes(folder.Path() / names[i], Raw(static_cast<char>(i)));
    WriteBytes(folder.Path() / "laplacian0_1x1.raw", Raw(77));
    WriteBytes(folder.Path() / "10_clahe.raw", "of another size");
    WriteBytes(folder.Path() / "03_words.txt", "x");
    EXPECT_EQ(Shown(Read(folder,
                         "[A]\nPROCMODE=2\nFunctionCount=5\n00_Function_Number=1\n01_Function_Number=1\n"
                         "02_Function_Number=3\n03_Function_Number=3\n04_Function_Number=4\n",
                         ExportKind::Plain)),
              "input=0 inverted=1 0=3 1=5 2=6 3=7 4=8 result=9 ");
}

TEST(StageFrames, OfACurveAreTheFrameBeforeMappedThroughIt) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "00_originalimage.raw", Raw(2));
    // The linear stage writes no dump; its curve has the number of the next one.
    WriteBytes(folder.Path() / "01_LinearCurve2.txt", "0\t5\r\n1\t6\r\n2\t700\r\n");
    WriteBytes(folder.Path() / "01_clahe.raw", Raw(9));
    WriteBytes(folder.Path() / "02_LinearCurve.txt", "0\t5\n1\t3\n");
    WriteBytes(folder.Path() / "02_result.raw", Raw(4));
    EXPECT_EQ(Shown(Read(folder,
                         "[A]\nPROCMODE=2\nFunctionCount=3\n00_Function_Number=11\n01_Function_Number=3\n"
                         "02_Function_Number=11\n",
                         ExportKind::Plain)),
              "input=2 0=700 1=9 2=3 result=4 ");
}

TEST(StageFrames, OfTheFixedChainTakeTheLastDumpOfAStage) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "00_originalimage.raw", Raw(0));
    WriteBytes(folder.Path() / "01_originalimage_invert.raw", Raw(1));
    WriteBytes(folder.Path() / "02_premedian.raw", Raw(2));
    WriteBytes(folder.Path() / "03_clahe_00.raw", Raw(3));
    WriteBytes(folder.Path() / "04_clahe_01.raw", Raw(4));
    WriteBytes(folder.Path() / "05_clahe.raw", Raw(5));
    WriteBytes(folder.Path() / "06_result.raw", Raw(6));
    // Stages: 0 inversion, 1 median, 2 CLAHE, 3 curve without a dump.
    EXPECT_EQ(Shown(Read(folder, "[A]\nPRE_MEDIAN=1\nCONTRAST_ENHANCE2=1\n", ExportKind::Plain)),
              "input=0 inverted=1 1=2 2=5 result=6 ");
}

// What a stage shows beside its result has the result's number.
TEST(StageFrames, AreTheResultsOfStagesWithDumpsBesideIt) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "00_originalimage.raw", Raw(0));
    WriteBytes(folder.Path() / "01_precontrast.raw", Raw(1));
    WriteBytes(folder.Path() / "01_precontrastgaussian.raw", Raw(70));
    WriteBytes(folder.Path() / "02_precontrast.raw", Raw(2));
    WriteBytes(folder.Path() / "02_precontrastgaussian.raw", Raw(71));
    WriteBytes(folder.Path() / "03_result.raw", Raw(3));
    EXPECT_EQ(
        Shown(Read(folder, "[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=1\n01_Function_Number=1\n",
                   ExportKind::Plain)),
        "input=0 0=1 1=2 result=3 ");

    const TemporaryFolder fixed;
    WriteBytes(fixed.Path() / "00_originalimage.raw", Raw(0));
    WriteBytes(fixed.Path() / "01_clahe.raw", Raw(1));
    WriteBytes(fixed.Path() / "01_clahe_00.raw", Raw(70));
    WriteBytes(fixed.Path() / "01_clahe_01.raw", Raw(71));
    // Stages: 0 CLAHE, 1 curve without a dump.
    EXPECT_EQ(Shown(Read(fixed, "[A]\nINVERSE_INTENSITY=0\nCONTRAST_ENHANCE2=1\n", ExportKind::Plain)),
              "input=0 0=1 ");
}

TEST(StageFrames, OfTheSameStageInTwoModesStayApart) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "00_originalimage.raw", Raw(0));
    WriteBytes(folder.Path() / "01_unsharp0.raw", Raw(1));
    WriteBytes(folder.Path() / "02_unsharp3.raw", Raw(2));
    EXPECT_EQ(
        Shown(Read(folder, "[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=4\n01_Function_Number=4\n",
                   ExportKind::Plain)),
        "input=0 0=1 1=2 ");
}

TEST(StageFrames, OfCurvesInARowAreLeftOut) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "00_originalimage.raw", Raw(2));
    WriteBytes(folder.Path() / "01_LinearCurve.txt", "0\t5\n1\t6\n2\t7\n");
    WriteBytes(folder.Path() / "01_clahe.raw", Raw(9));
    EXPECT_EQ(Shown(Read(folder,
                         "[A]\nPROCMODE=2\nFunctionCount=3\n00_Function_Number=11\n01_Function_Number=11\n"
                         "02_Function_Number=3\n",
                         ExportKind::Plain)),
              "input=2 2=9 ");
}

TEST(StageFrames, OfBothMediansOfTheFixedChainStayApart) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "00_originalimage.raw", Raw(0));
    WriteBytes(folder.Path() / "01_premedian.raw", Raw(1));
    WriteBytes(folder.Path() / "02_post_median.raw", Raw(2));
    EXPECT_EQ(
        Shown(Read(folder, "[A]\nINVERSE_INTENSITY=0\nPRE_MEDIAN=1\nPOST_MEDIAN=1\n", ExportKind::Plain)),
        "input=0 0=1 1=2 ");
}

TEST(StageFrames, OfAFolderThatIsEmptyOrMissingAreNone) {
    const TemporaryFolder folder;
    EXPECT_TRUE(Read(folder, "[A]\nPROCMODE=2\n", ExportKind::Plain).empty());
    EXPECT_TRUE(ReadStageFrames(folder.Narrow("missing"), {1, 1}, {}).empty());
}

TEST(StageFrames, ThatAreRequiredAreAnErrorWhereThereIsNone) {
    const TemporaryFolder folder;
    EXPECT_THROW(RequireStageFrames(folder.Path().string(), {1, 1}, {}), OutputError);
    WriteBytes(folder.Path() / "00_originalimage.raw", Raw(5));
    EXPECT_EQ(Shown(RequireStageFrames(folder.Path().string(), {1, 1}, {})), "input=5 ");
}

}  // namespace
}  // namespace vastrelline
