// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "ToolRun.h"
#include "commands/ProfileSetCommand.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

const std::string kText =
    "; mine\r\n[General]\r\nPROCMODE = 2 \r\nFunctionCount=1\r\n00_Function_Number=3\r\n\r\n00_MAX_SLOPE= "
    "1.5\t\r\n"
    "\r\n; end\r\n[Other]\r\nSAVE_LOG=1";

class ProfileSet : public testing::Test {
protected:
    ToolRun Set(std::vector<std::string> words, const std::string& text = kText) const {
        std::ofstream(Path(), std::ios::binary) << text;
        words.insert(words.begin(), {"profile", "set", Path()});
        return RunTool(words, MustNotBeCalled);
    }

    std::string Path() const { return folder_.Narrow("a.ini"); }
    std::string Bytes() const { return ReadBytes(Path()); }

    static std::string Replaced(const std::string& from, const std::string& to) {
        std::string text = kText;
        return text.replace(text.find(from), from.size(), to);
    }

    TemporaryFolder folder_;
};

TEST_F(ProfileSet, ChangesOneValueAndNoOtherByte) {
    const ToolRun run = Set({"00_max_slope=1.8", "--section", "general"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(Bytes(), Replaced("1.5", "1.8"));
    EXPECT_EQ(run.report, Path() + ":7: 00_MAX_SLOPE=1.8 (was 1.5)\n");
    EXPECT_EQ(run.errors, "");
}

TEST_F(ProfileSet, PutsNewKeysBehindTheSectionsLastLine) {
    const ToolRun run = Set({"00_BLOCK_SIZE=128", "PROCMODE=2", "--section", "General"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(Bytes(), Replaced("; end\r\n", "; end\r\n00_BLOCK_SIZE=128\r\n"));
    EXPECT_THAT(run.report, HasSubstr(":10: 00_BLOCK_SIZE=128 (new)\n"));
    EXPECT_THAT(run.report, HasSubstr(":3: PROCMODE=2 (as it was)\n"));
}

TEST_F(ProfileSet, RefusesAKeyThatNoRunReads) {
    const ToolRun run = Set({"00_MAX_SLOP=1.8", "--section", "General"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(Bytes(), kText);
    EXPECT_THAT(run.errors, HasSubstr("00_MAX_SLOP is read by no stage; did you mean 00_MAX_SLOPE?"));
    EXPECT_THAT(run.errors, HasSubstr("--force-key"));
    EXPECT_EQ(Set({"00_MAX_SLOP=1.8", "--section", "General", "--force-key"}).exitCode, 0);
    EXPECT_THAT(Bytes(), HasSubstr("00_MAX_SLOP=1.8\r\n"));
}

TEST_F(ProfileSet, RefusesAKeyOfAnotherStage) {
    const ToolRun run = Set({"00_MEDIAN_SIZE=3", "--section", "General"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("position 00 is CLAHE"));
}

// A stage and its keys come together.
TEST_F(ProfileSet, TakesSeveralKeysAtOnce) {
    EXPECT_EQ(
        Set({"FunctionCount=2", "01_Function_Number=7", "01_MEDIAN_SIZE=3", "--section", "General"}).exitCode,
        0);
    EXPECT_THAT(Bytes(), HasSubstr("01_Function_Number=7\r\n01_MEDIAN_SIZE=3\r\n"));
    EXPECT_EQ(Set({"SAVE_LOG=1", "save_log=0", "--section", "General"}).exitCode, 2);
}

TEST_F(ProfileSet, WarnsOfAValueThatIsReadInAnotherWay) {
    const ToolRun run = Set({"00_MAX_SLOPE=1,8", "--section", "General"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.errors, HasSubstr("00_MAX_SLOPE=1,8 is read as 1; write 1.8"));
}

TEST_F(ProfileSet, BeginsASectionIfAsked) {
    const ToolRun run = Set({"PROCMODE=1", "--section", "Genral"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("did you mean 'General'?"));
    EXPECT_EQ(Set({"PROCMODE=1", "--section", "Night", "--new-section"}).exitCode, 0);
    EXPECT_EQ(Bytes(), kText + "\r\n[Night]\r\nPROCMODE=1\r\n");
}

TEST_F(ProfileSet, RefusesWhatCouldNotBeReadBack) {
    EXPECT_EQ(Set({"VERSION=1\n[B]", "--section", "General"}).exitCode, 2);
    EXPECT_EQ(Set({"VERSION", "--section", "General"}).exitCode, 2);
    EXPECT_EQ(Set({"=1", "--section", "General"}).exitCode, 2);
    EXPECT_EQ(Set({"PROCMODE=1", "--section", "a]\nb", "--new-section"}).exitCode, 2);
    EXPECT_EQ(Bytes(), kText);
}

TEST_F(ProfileSet, TellsProgramsWhatChanged) {
    const ToolRun run = Set({"00_MAX_SLOPE=2", "SAVE_LOG=1", "--section", "General", "--json"});
    const nlohmann::json json = nlohmann::json::parse(run.report);
    EXPECT_EQ(json["lines"][0]["old"], "1.5");
    EXPECT_EQ(json["lines"][0]["value"], "2");
    EXPECT_EQ(json["lines"][0]["changed"], true);
    EXPECT_FALSE(json["lines"][1].contains("old"));
}

}  // namespace
}  // namespace vastrelline
