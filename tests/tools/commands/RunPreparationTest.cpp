// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "commands/RunPreparation.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class RunPreparation : public testing::Test {
protected:
    RunPreparation() {
        WriteBytes(folder_.Path() / "p.ini", "[General]\nPROCMODE=2\n[Extended]\nPROCMODE=3\n");
        options_.profile = folder_.Narrow("p.ini");
        options_.section = "General";
        options_.picture = "a.png";
    }

    ProfileFile Read() const { return ReadRunProfile(options_); }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
    RunOptions options_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(RunPreparation, FindsAProfileBehindTheOtherSeparator) {
    options_.profile.replace(options_.profile.rfind('/'), 1, "\\");
    EXPECT_EQ(Read().Path(), folder_.Narrow("p.ini"));
}

TEST_F(RunPreparation, RefusesASectionThatIsNotThereUnlessItIsForced) {
    std::vector<Finding> findings;
    EXPECT_NO_THROW(TestMeaning(Read(), options_, findings));
    EXPECT_TRUE(findings.empty());
    options_.section = "Generl";
    EXPECT_THROW(TestMeaning(Read(), options_, findings), ToolError);
    options_.forceSection = true;
    TestMeaning(Read(), options_, findings);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].severity, Severity::Warning);
}

TEST_F(RunPreparation, ChoosesTheExportByNameSectionAndPicture) {
    EXPECT_EQ(FindNamedTraits(options_), nullptr);
    EXPECT_EQ(FindTraits(Read(), options_).name, "ImageProcessing");
    options_.section = "Extended";
    EXPECT_EQ(FindTraits(Read(), options_).name, "ImageProcessingS");
    options_.picture = "a.bmp";
    EXPECT_EQ(FindTraits(Read(), options_).name, "ImageProcessing_NS");
    options_.hasSensor = true;
    EXPECT_EQ(FindTraits(Read(), options_).name, "ImageProcessing_NE");
    options_.exportName = "CR";
    EXPECT_EQ(FindTraits(Read(), options_).name, "ImageProcessingCR");
}

TEST_F(RunPreparation, PutsTheOptionsIntoTheCall) {
    options_.geometry = {0, 0, 150, 150, 1300, 1668, 1, 2, 3, 4};
    options_.timeoutSeconds = 1.5;
    const Frame frame{1, 1, {7}};
    ExportRequest call = MakeCall(options_, TraitsOf(ExportKind::S), frame);
    EXPECT_EQ(call.kind, ExportKind::S);
    EXPECT_EQ(call.frame.pixels, frame.pixels);
    EXPECT_EQ((*call.geometry)[9], 4);
    EXPECT_FALSE(call.timeout) << "without --timeout";
    options_.hasTimeout = true;
    call = MakeCall(options_, TraitsOf(ExportKind::S), frame);
    EXPECT_EQ(call.timeout, std::chrono::milliseconds(1500));
}

TEST_F(RunPreparation, TellsTheCodesOfACall) {
    FrameRun run;
    EXPECT_NO_THROW(TestCode(run, TraitsOf(ExportKind::N)));
    run.code = 5;
    EXPECT_THROW(TestCode(run, TraitsOf(ExportKind::N)), OutputError) << "the bitmap was not saved";
    run.code = 2;
    EXPECT_THROW(TestCode(run, TraitsOf(ExportKind::N)), ProcessingError);
}

TEST_F(RunPreparation, SaysWhatIsOddBeforeTheRun) {
    const ProfileFile file = Read();
    const SectionPlan plan = MakeSectionPlan(file, "General", ExportKind::Plain);
    LoadedFrame frame{{1, 1, {7}}, FileKind::Png, 8, {"the file has a comment"}};
    const std::vector<Finding> findings =
        LookBeforeRun(options_, frame, file, plan, TraitsOf(ExportKind::Plain));
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0].text, "the file has a comment");
    EXPECT_EQ(findings[0].severity, Severity::Note);
}

}  // namespace
}  // namespace vastrelline
