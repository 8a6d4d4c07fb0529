// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "ToolRun.h"
#include "commands/ProfileLintCommand.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class ProfileLint : public testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_.Narrow(name), std::ios::binary) << text;
        return folder_.Narrow(name);
    }

    static ToolRun Lint(std::vector<std::string> words) {
        words.insert(words.begin(), {"profile", "lint"});
        return RunTool(words, MustNotBeCalled);
    }

    TemporaryFolder folder_;
};

const std::string kBad = "[A]\nSAVE_LOGG=1\n[B]\nPROCMODE=1\n";

TEST_F(ProfileLint, EndsWellWithoutFindings) {
    const ToolRun run = Lint({Write("a.ini", "[A]\nPROCMODE=1\n")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.report, IsEmpty());
    EXPECT_EQ(run.errors, "nothing to say\n");
}

TEST_F(ProfileLint, PrintsFindingsAsTheResult) {
    const std::string path = Write("a.ini", kBad);
    const ToolRun run = Lint({path});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.report,
              path + ":2: warning: SAVE_LOGG is read by no run; did you mean SAVE_LOG? [unknown-key]\n");
    EXPECT_EQ(run.errors, "1 warning in 1 file; --fix mends 1 of them\n");
}

TEST_F(ProfileLint, NotesAreNoFault) {
    const ToolRun run = Lint({Write("a.ini", "[A]\nPROCMODE=1\nLITTLEENDIAN=1\n")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.report, HasSubstr("note: LITTLEENDIAN is read and has no effect"));
}

TEST_F(ProfileLint, CountsBySeverity) {
    const ToolRun run = Lint({Write("a.ini", kBad + "LITTLEENDIAN=1\n"), Write("b.ini", "")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "1 error, 1 warning and 1 note in 2 files; --fix mends 1 of them\n");
}

TEST_F(ProfileLint, GoesOnBehindAFileThatCannotBeRead) {
    const ToolRun run = Lint({folder_.Narrow("none.ini"), Write("a.ini", kBad)});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.report, HasSubstr("SAVE_LOGG"));
    EXPECT_THAT(run.errors, HasSubstr("none.ini: does not exist"));
}

TEST_F(ProfileLint, AsksWhichSectionIsMeant) {
    const ToolRun run = Lint({Write("a.ini", "[General]\nPROCMODE=1\n"), "--section", "Generl"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("has no section 'Generl'; did you mean 'General'?"));
}

TEST_F(ProfileLint, FixesInPlaceAndTellsHowMuch) {
    const std::string path = Write("a.ini", kBad);
    const ToolRun run = Lint({path, "--fix"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "1 line mended; nothing to say\n");
    EXPECT_EQ(ReadBytes(path), "[A]\nSAVE_LOG=1\n[B]\nPROCMODE=1\n");
}

TEST_F(ProfileLint, LeavesAFileAloneThatNeedsNoFix) {
    const std::string path = Write("a.ini", "[A]\nPROCMODE=1\n");
    const auto before = std::filesystem::last_write_time(path);
    EXPECT_EQ(Lint({path, "--fix"}).exitCode, 0);
    EXPECT_EQ(std::filesystem::last_write_time(path), before);
}

TEST_F(ProfileLint, PrintsOneObjectForPrograms) {
    const std::string path = Write("a.ini", kBad);
    const ToolRun json = Lint({path, "--json"});
    EXPECT_EQ(json.exitCode, 1);
    EXPECT_EQ(nlohmann::json::parse(json.report)["warnings"], 1);
    const ToolRun sarif = Lint({path, "--sarif"});
    EXPECT_EQ(sarif.exitCode, 1);
    EXPECT_EQ(nlohmann::json::parse(sarif.report)["version"], "2.1.0");
    EXPECT_EQ(Lint({path, "--json", "--sarif"}).exitCode, 2);
}

}  // namespace
}  // namespace vastrelline
