// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

ToolRun Explain(std::vector<std::string> more) {
    more.insert(more.begin(), {"profile", "explain"});
    return RunTool(more, MustNotBeCalled);
}

class ProfileExplainCommandTest : public testing::Test {
protected:
    ProfileExplainCommandTest() {
        WriteBytes(folder_.Path() / "p.ini",
                   "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=8\n00_GAUSSIAN_SIZE=2\n"
                   "[B]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=6\n[Settings]\nRCCutOff=9\n");
    }
    std::string Path() const { return folder_.Narrow("p.ini"); }

private:
    TemporaryFolder folder_;
};

TEST_F(ProfileExplainCommandTest, TellsOfAKey) {
    const ToolRun run = Explain({"max_slope"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.report, StartsWith("MAX_SLOPE: key of the stage CLAHE (3)\n"));
}

TEST_F(ProfileExplainCommandTest, TakesTheStageThatStandsThere) {
    const ToolRun gaussian = Explain({"00_GAUSSIAN_SIZE", "--profile", Path(), "--section", "A"});
    EXPECT_THAT(gaussian.report, StartsWith("GAUSSIAN_SIZE: key of the stage Gaussian (8)\n"));
    EXPECT_THAT(gaussian.report, Not(HasSubstr("Pyramid")));
    EXPECT_THAT(gaussian.report, HasSubstr("00_GAUSSIAN_SIZE = 2  (line 5)\n"));
    const ToolRun pyramid = Explain({"00_GAUSSIAN_SIZE", "--profile", Path(), "--section", "B"});
    EXPECT_THAT(pyramid.report, StartsWith("GAUSSIAN_SIZE: key of the stage Pyramid enhancement (6)\n"));
    EXPECT_THAT(pyramid.report, HasSubstr("00_GAUSSIAN_SIZE = 1  (default)\n"));
}

TEST_F(ProfileExplainCommandTest, ListsWhatAProfileHas) {
    const ToolRun run = Explain({"GAUSSIAN_SIZE", "--profile", Path()});
    EXPECT_THAT(run.report, HasSubstr("In section A:\n  00_GAUSSIAN_SIZE = 2"));
    EXPECT_THAT(run.report, Not(HasSubstr("In section B")));
    // Each line once, although runs of several sections read it.
    const std::string sensor = Explain({"RCCutOff", "--profile", Path()}).report;
    EXPECT_EQ(sensor.find("RCCutOff = 9"), sensor.rfind("RCCutOff = 9"));
    EXPECT_THAT(Explain({"MAX_SLOPE", "--profile", Path()}).report, HasSubstr("does not have it."));
}

TEST_F(ProfileExplainCommandTest, PrintsOneJsonObject) {
    const nlohmann::json object =
        nlohmann::json::parse(Explain({"GAUSSIAN_SIZE", "--profile", Path(), "--json"}).report);
    EXPECT_EQ(object.at("keys").size(), 2U);
    EXPECT_EQ(object.at("occurrences").size(), 1U);
}

TEST_F(ProfileExplainCommandTest, SaysWhatIsWrong) {
    const ToolRun run = Explain({"04_MAX_SLOP"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors,
                HasSubstr("there is no key or stage '04_MAX_SLOP'; did you mean '04_MAX_SLOPE'?"));
    EXPECT_EQ(Explain({"x\x1B[31m"}).exitCode, 2);
    EXPECT_EQ(Explain({"MAX_SLOPE", "--section", "A"}).exitCode, 2);
    EXPECT_EQ(Explain({"MAX_SLOPE", "--profile", Path(), "--section", "C"}).exitCode, 2);
    EXPECT_EQ(Explain({"MAX_SLOPE", "--profile", Path() + "x"}).exitCode, 3);
}

}  // namespace
}  // namespace vastrelline
