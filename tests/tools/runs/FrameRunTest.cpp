// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "runs/FrameRun.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

constexpr const char* kProfile = "[A]\nPROCMODE=2\nSAVE_LOG=0\nMSGBOX_ENABLE=1\n";
constexpr const char* kLog =
    "#### 1 \t: Start Vastrelline.dll [v]\n\t\t\t Section Name [A]\n#### 1 \t: End Post-Processing ( 0.002 "
    "sec )\n";

class FrameRunTest : public testing::Test {
protected:
    FrameRunTest() { WriteBytes(folder_.Path() / "p.ini", kProfile); }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
    ExportRequest call_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(FrameRunTest, OnACopyLeavesTheFileAndKeepsTheLog) {
    const ProfileFile file = ProfileFile::Read(folder_.Narrow("p.ini"));
    const SectionPlan plan = MakeSectionPlan(file, "A", ExportKind::Plain);
    call_.frame = {1, 2, {5, 6}};
    std::string seen;
    const FrameRun run =
        RunFrame(file, plan, ProfileUse::PrivateCopy, {{"KEY", "v"}}, call_, [&](ExportRequest& request) {
            seen = ReadBytes(request.profile);
            WriteBytes(std::filesystem::path(request.profile).parent_path() / "ExtraOralLog.txt", kLog);
            WriteBytes(request.profile, "what a run stores");
            request.output[1] = 9;
            request.record.said =
                "Wrong parameters of round-corner mask\nWrong parameters of round-corner mask\n"
                "other words\n";
            return 3;
        });
    EXPECT_EQ(seen, "[A]\nPROCMODE=2\nSAVE_LOG=1\nMSGBOX_ENABLE=0\nKEY=v\n");
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), kProfile);
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "ExtraOralLog.txt"));
    EXPECT_EQ(run.code, 3);
    EXPECT_EQ(run.call.section, "A");
    EXPECT_EQ(run.call.output, (std::vector<uint16_t>{0, 9}));
    EXPECT_EQ(run.logBytes, kLog);
    ASSERT_TRUE(run.log.has_value());
    EXPECT_EQ(run.log->totalMs, 2.0);
    ASSERT_EQ(run.findings.size(), 2U);
    EXPECT_EQ(run.findings[0].rule, "corner-sizes");
    EXPECT_EQ(run.findings[1].text, "the library says: other words");
}

TEST_F(FrameRunTest, InPlaceUsesTheFileItself) {
    const ProfileFile file = ProfileFile::Read(folder_.Narrow("p.ini"));
    const SectionPlan plan = MakeSectionPlan(file, "A", ExportKind::Plain);
    WriteBytes(folder_.Path() / "ExtraOralLog.txt", kLog);
    call_.frame = {1, 1, {5}};
    std::string seen;
    const FrameRun run = RunFrame(file, plan, ProfileUse::InPlace, {}, call_, [&](ExportRequest& request) {
        seen = request.profile;
        return 0;
    });
    EXPECT_EQ(seen, folder_.Narrow("p.ini"));
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), kProfile);
    EXPECT_FALSE(run.log.has_value()) << "the log is that of an older run";
}

TEST(DumpInto, EndsTheFolderWithASeparator) {
    const std::vector<KeyEdit> edits = DumpInto("/a/b");
    ASSERT_EQ(edits.size(), 3U);
    EXPECT_EQ(edits[0].key + "=" + edits[0].value, "SAVE_IMAGE=1");
    EXPECT_EQ(edits[1].key + "=" + edits[1].value, "WRITE_PATH=/a/b/");
    EXPECT_EQ(edits[2].key + "=" + edits[2].value, "SAVE_BACKUP=0");
}

TEST(WithoutDumps, SwitchesDumpsAndBackupsOff) {
    const std::vector<KeyEdit> edits = WithoutDumps();
    ASSERT_EQ(edits.size(), 2U);
    EXPECT_EQ(edits[0].key + "=" + edits[0].value, "SAVE_IMAGE=0");
    EXPECT_EQ(edits[1].key + "=" + edits[1].value, "SAVE_BACKUP=0");
}

}  // namespace
}  // namespace vastrelline
