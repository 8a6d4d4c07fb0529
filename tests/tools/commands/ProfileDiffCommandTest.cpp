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

class ProfileDiffCommandTest : public testing::Test {
protected:
    ProfileDiffCommandTest() {
        WriteBytes(folder_.Path() / "a.ini", "[One]\nBITSTORED=14\n[Two]\n[C:D]\nBITSTORED=10\n[Settings]\n");
        WriteBytes(folder_.Path() / "b.ini", "[one]\nBITSTORED=12\n[Three]\nBITSTORED=14\n");
    }

    ToolRun Diff(std::vector<std::string> more) const {
        more.insert(more.begin(), {"profile", "diff"});
        return RunTool(more, MustNotBeCalled);
    }
    std::string A() const { return folder_.Narrow("a.ini"); }
    std::string B() const { return folder_.Narrow("b.ini"); }

    TemporaryFolder folder_;
};

TEST_F(ProfileDiffCommandTest, EndsWithOneForADifference) {
    const ToolRun run = Diff({A(), B(), "--section", "One"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.report, HasSubstr("  BITSTORED  14  12\n"));
    EXPECT_THAT(run.report, HasSubstr("\n1 value differs\n"));
}

TEST_F(ProfileDiffCommandTest, EndsWithZeroForEqualRuns) {
    const ToolRun run = Diff({A(), B(), "--section", "One:Three"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.report, HasSubstr("\nequal\n"));
    EXPECT_EQ(Diff({A(), A()}).exitCode, 0);
}

TEST_F(ProfileDiffCommandTest, ComparesTwoSectionsOfOneProfile) {
    EXPECT_THAT(Diff({A(), "--section", "One:Two"}).report, HasSubstr("14  12 (default)"));
    // A name with a colon of its own.
    EXPECT_THAT(Diff({A(), "--section", "One:C:D"}).report, HasSubstr("14  10\n"));
    EXPECT_THAT(Diff({A(), "--section", "C:D"}).report, HasSubstr("equal"));
}

TEST_F(ProfileDiffCommandTest, ComparesAllSectionsOfOneName) {
    const ToolRun run = Diff({A(), B()});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.report, HasSubstr("only in A: section Two\n"));
    EXPECT_THAT(run.report, HasSubstr("only in B: section Three\n"));
    const nlohmann::json object = nlohmann::json::parse(Diff({A(), B(), "--json"}).report);
    EXPECT_EQ(object.at("equal"), false);
    EXPECT_EQ(object.at("comparisons").size(), 1U);
    EXPECT_EQ(object.at("comparisons").at(0).at("a").at("section"), "One");
    EXPECT_EQ(object.at("onlyInOne").size(), 3U);
}

TEST_F(ProfileDiffCommandTest, TellsOfAnotherChainWithTheSameValues) {
    WriteBytes(folder_.Path() / "a.ini", "[A]\nPROCMODE=2\n[B]\nPROCMODE=2\n");
    EXPECT_EQ(Diff({A(), "--section", "A:B"}).exitCode, 0);
    EXPECT_EQ(Diff({A(), A(), "--section", "A:B", "--export", "NE"}).exitCode, 0);
}

TEST_F(ProfileDiffCommandTest, SaysWhatIsWrong) {
    EXPECT_EQ(Diff({A()}).exitCode, 2);
    EXPECT_EQ(Diff({A(), B(), "--section", "Two"}).exitCode, 2);
    EXPECT_EQ(Diff({A(), B(), "--section", "One:Four"}).exitCode, 2);
    EXPECT_EQ(Diff({A(), folder_.Narrow("c.ini")}).exitCode, 3);
    WriteBytes(folder_.Path() / "b.ini", "[Other]\nx=1\n");
    EXPECT_EQ(Diff({A(), B()}).exitCode, 2);
}

}  // namespace
}  // namespace vastrelline
