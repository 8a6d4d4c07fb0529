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
using testing::StartsWith;

class ProfileShowCommandTest : public testing::Test {
protected:
    ProfileShowCommandTest() {
        WriteBytes(folder_.Path() / "p.ini",
                   "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=10\n00_POST_GAMMA_RATIO=1,5\n");
    }

    ToolRun Show(std::vector<std::string> more) const {
        more.insert(more.begin(), {"profile", "show", Path()});
        return RunTool(more, MustNotBeCalled);
    }
    std::string Path() const { return folder_.Narrow("p.ini"); }

    TemporaryFolder folder_;
};

TEST_F(ProfileShowCommandTest, PrintsATable) {
    const ToolRun run = Show({"--section", "A"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.report, StartsWith(Path() + ", section A: configured chain by ImageProcessing\n"));
    EXPECT_THAT(run.report, HasSubstr("\n00 Gamma curve\n"));
    EXPECT_THAT(run.report, HasSubstr("line 5, misread"));
    EXPECT_EQ(run.errors, "");
}

TEST_F(ProfileShowCommandTest, PrintsOneJsonObject) {
    const ToolRun run = Show({"--section", "a", "--json", "--export", "CR"});
    EXPECT_EQ(run.exitCode, 0);
    const nlohmann::json object = nlohmann::json::parse(run.report);
    EXPECT_EQ(object.at("chain"), "CR chain");
    EXPECT_EQ(object.at("places").size(), 14U);
}

TEST_F(ProfileShowCommandTest, WritesAllValuesOut) {
    const ToolRun run = Show({"--section", "A", "--explicit"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.report, StartsWith("; All values of "));
    EXPECT_THAT(run.report, HasSubstr("\n00_POST_GAMMA_RATIO=1\n"));
    EXPECT_THAT(run.report, HasSubstr("\nOUTPUTRANGE=4095\n"));
}

TEST_F(ProfileShowCommandTest, SaysWhatIsWrong) {
    EXPECT_EQ(Show({"--section", "B"}).exitCode, 2);
    EXPECT_EQ(Show({"--section", "A", "--explicit", "--json"}).exitCode, 2);
    EXPECT_EQ(Show({"--section", "A", "--export", "X"}).exitCode, 2);
    EXPECT_EQ(RunTool({"profile", "show", Path() + "x", "--section", "A"}, MustNotBeCalled).exitCode, 3);
    WriteBytes(folder_.Path() / "p.ini", "");
    EXPECT_EQ(Show({"--section", "A"}).exitCode, 3);
}

}  // namespace
}  // namespace vastrelline
