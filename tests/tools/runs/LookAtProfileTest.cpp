// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runs/LookAtProfile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

struct LookCase {
    const char* name;
    const char* text;  // section A
    const char* exportName;
    std::vector<std::string> found;  // "line rule"
};

class LookAtProfileTest : public testing::TestWithParam<LookCase> {};

TEST_P(LookAtProfileTest, SaysWhatDoesNotFit) {
    const ProfileFile file("p.ini", GetParam().text);
    const ExportTraits& traits = *FindExport(GetParam().exportName);
    const SectionPlan plan = MakeSectionPlan(file, "A", traits.kind);
    std::vector<std::string> found;
    for (const Finding& finding : LookAtProfile(file, plan, traits)) {
        EXPECT_EQ(finding.severity, Severity::Warning);
        EXPECT_EQ(finding.file, "p.ini");
        found.push_back(std::to_string(finding.line) + " " + finding.rule);
    }
    EXPECT_EQ(found, GetParam().found);
}

constexpr const char* kPlain = "ImageProcessing";
constexpr const char* kList = "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=10\n";
constexpr const char* kDeciding =
    "[A]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=13\n[IP_LOWMODE]\nx=1\n";

INSTANTIATE_TEST_SUITE_P(
    Cases, LookAtProfileTest,
    testing::Values(
        LookCase{"ListThatRuns", kList, kPlain, {}},
        LookCase{"FixedChain", "[A]\nPOST_MEDIAN=1\n", kPlain, {}},
        LookCase{"NothingForTheFixedChain", "[A]\nFrameWidth=1300\n", kPlain, {"1 nothing-read"}},
        LookCase{"OneLineForTheFixedChain", "[A]\nFrameWidth=1300\nOUTPUTRANGE=9\n", kPlain, {}},
        LookCase{"DecidingFromItsExport", kDeciding, "ImageProcessingS", {}},
        LookCase{"DecidingFromAnotherExport", kDeciding, kPlain, {"2 mode-and-export"}},
        LookCase{"DecidingForABitmap", kDeciding, "ImageProcessing_NE", {"2 mode-and-export"}},
        LookCase{"ListForCr", kList, "ImageProcessingCR", {"2 mode-and-export"}},
        LookCase{
            "ListWithoutMode", "[A]\nFunctionCount=1\n00_Function_Number=10\n", kPlain, {"1 mode-and-list"}},
        LookCase{"ListOfAnotherMode",
                 "[A]\n00_Function_Number=10\nPROCMODE=1\nFunctionCount=1\n",
                 kPlain,
                 {"3 mode-and-list"}},
        LookCase{"NoLowSection",
                 "[A]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=10\n",
                 "ImageProcessing_NS",
                 {"2 missing-low-section"}},
        LookCase{"EmptyList",
                 "[A]\nPROCMODE=2\nFunctionCount=0\n00_Function_Number=10\n",
                 kPlain,
                 {"3 empty-list"}},
        LookCase{"NoList", "[A]\nPROCMODE=2\n", kPlain, {"1 empty-list"}},
        LookCase{"UnknownStage",
                 "[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=10\n01_Function_Number=77\n",
                 kPlain,
                 {"5 passed-over"}},
        LookCase{"HdrInThePlainChain",
                 "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=13\n",
                 kPlain,
                 {"4 passed-over", "3 empty-list"}},
        LookCase{"HdrInTheExtendedChain",
                 "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=13\n",
                 "ImageProcessing_NE",
                 {}},
        LookCase{"DumpsNowhere", "[A]\nPOST_MEDIAN=1\nSAVE_IMAGE=1\n", kPlain, {"3 missing-folder"}},
        LookCase{"DumpsOff", "[A]\nPOST_MEDIAN=1\nWRITE_PATH=nowhere\n", kPlain, {}},
        LookCase{"DumpsWithoutSeparator",
                 "[A]\nSAVE_IMAGE=1\nWRITE_PATH=\"/tmp\"\n",
                 kPlain,
                 {"3 folder-separator"}},
        LookCase{"DumpsIntoNothing",
                 "[A]\nSAVE_IMAGE=1\nWRITE_PATH=/no such folder/\n",
                 kPlain,
                 {"3 missing-folder"}},
        LookCase{"DumpsIntoAFolder", "[A]\nSAVE_IMAGE=1\nWRITE_PATH=\\tmp\\\n", kPlain, {}},
        LookCase{"BackupNowhere", "[A]\nSAVE_BACKUP=1\n", kPlain, {"2 missing-folder"}},
        LookCase{"BackupIntoAFolderToBeMade", "[A]\nSAVE_BACKUP=1\nSAVE_BACKUPPATH=/tmp/x\n", kPlain, {}}),
    [](const auto& test) { return test.param.name; });

TEST(LookAtProfile, SaysThatTheSensorsSectionIsForNoRun) {
    const ProfileFile file("p.ini", "[Settings]\nFrameWidth=1300\nRCCutOff=1\n");
    const SectionPlan plan = MakeSectionPlan(file, "settings", ExportKind::Plain);
    const std::vector<Finding> found = LookAtProfile(file, plan, TraitsOf(ExportKind::Plain));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].rule, "nothing-read");
}

TEST(LookAtProfile, KnowsTheSectionOfWeakFrames) {
    const ProfileFile file("p.ini", "[IP_LOWMODE]\nOUTPUTRANGE=4095\n00_GAUSSIAN_SIZE=1.6\n");
    const ExportTraits& traits = TraitsOf(ExportKind::Plain);
    const std::vector<Finding> findings =
        LookAtProfile(file, MakeSectionPlan(file, "IP_LOWMODE", traits.kind), traits);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].rule, "nothing-read");
    EXPECT_NE(findings[0].text.find("name the section with PROCMODE=3"), std::string::npos);
}

TEST(MeaninglessRun, IsThatOfAProfileWithoutSettings) {
    for (const char* text : {"", "\n; words\n", "[A]\n[B]\n", "a=1\n", "words"}) {
        const auto found = FindMeaninglessRun(ProfileFile("p.ini", text), "A");
        ASSERT_TRUE(found.has_value()) << text;
        EXPECT_FALSE(found->isSectionWrong);
        EXPECT_EQ(found->finding.rule, "empty-profile");
        EXPECT_EQ(found->finding.severity, Severity::Error);
    }
}

TEST(MeaninglessRun, IsThatOfASectionThatIsNotThere) {
    const ProfileFile file("p.ini", "[General]\nx=1\n[Empty]\n[Other]\nx=1\n");
    const auto misspelt = FindMeaninglessRun(file, "Generl");
    ASSERT_TRUE(misspelt.has_value());
    EXPECT_TRUE(misspelt->isSectionWrong);
    EXPECT_NE(misspelt->finding.text.find("did you mean 'General'?"), std::string::npos);
    const auto unknown = FindMeaninglessRun(file, "Surgery");
    ASSERT_TRUE(unknown.has_value());
    EXPECT_NE(unknown->finding.text.find("it has General, Empty, Other"), std::string::npos)
        << unknown->finding.text;
    const auto empty = FindMeaninglessRun(file, "empty");
    ASSERT_TRUE(empty.has_value());
    EXPECT_EQ(empty->finding.line, 3U);
    EXPECT_FALSE(FindMeaninglessRun(file, "general").has_value());
    EXPECT_FALSE(FindMeaninglessRun(file, "Other").has_value());
}

TEST(ChooseExport, TakesOneThatKnowsTheMode) {
    const ProfileFile file("p.ini", "[Two]\nPROCMODE=2\n[Three]\nPROCMODE=3\n[None]\nx=1\n");
    EXPECT_EQ(ChooseExport(file, "Two", {}), ExportKind::Plain);
    EXPECT_EQ(ChooseExport(file, "None", {}), ExportKind::Plain);
    EXPECT_EQ(ChooseExport(file, "Three", {}), ExportKind::S);
    EXPECT_EQ(ChooseExport(file, "Two", {.wantsBitmap = true}), ExportKind::N);
    EXPECT_EQ(ChooseExport(file, "Three", {.wantsBitmap = true}), ExportKind::NS);
    EXPECT_EQ(ChooseExport(file, "Two", {.hasGeometry = true}), ExportKind::S);
    EXPECT_EQ(ChooseExport(file, "Two", {.wantsBitmap = true, .hasGeometry = true}), ExportKind::NS);
    EXPECT_EQ(ChooseExport(file, "Two", {.wantsBitmap = true, .hasSensor = true}), ExportKind::NE);
}

}  // namespace
}  // namespace vastrelline
