// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "library/MadeLibraries.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class VersionCommandTest : public testing::Test {
protected:
    VersionCommandTest() {
        const auto bytes =
            MadeElf(false, true, "vastrelline", "version=7.1\ncommit=abc\nforms=\x1B[31mred\n");
        WriteBytes(Library(), std::string(bytes.begin(), bytes.end()));
    }
    std::string Library() const { return folder_.Narrow("lib.so"); }

private:
    TemporaryFolder folder_;
};

TEST_F(VersionCommandTest, TellsWhatAFileSays) {
    const ToolRun run = RunTool({"version", "--library", Library()}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.report.find(Library() + "\n  version   7.1\n  commit    abc\n"), std::string::npos)
        << run.report;
    EXPECT_NE(run.report.find("  forms     ?[31mred\n"), std::string::npos) << run.report;
}

TEST_F(VersionCommandTest, IsTheOptionWithWordsBehindIt) {
    EXPECT_EQ(RunTool({"--version", "--library", Library()}, MustNotBeCalled).report,
              RunTool({"version", "--library", Library()}, MustNotBeCalled).report);
    EXPECT_EQ(RunTool({"--version", "--libary", Library()}, MustNotBeCalled).exitCode, 2);
}

TEST_F(VersionCommandTest, RefusesAnEmptyName) {
    for (const auto& words : {std::vector<std::string>{"version", "--library", ""},
                              {"--version", "--library", ""},
                              {"version", "--library="}}) {
        const ToolRun run = RunTool(words, MustNotBeCalled);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.report, "");
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    }
}

TEST_F(VersionCommandTest, PrintsAnObject) {
    const ToolRun run = RunTool({"version", "--library", Library(), "--json"}, MustNotBeCalled);
    const auto object = nlohmann::json::parse(run.report);
    EXPECT_EQ(object["command"], "version");
    EXPECT_EQ(object["library"]["file"], Library());
    EXPECT_EQ(object["library"]["version"], "7.1");
    EXPECT_EQ(object["library"]["commit"], "abc");
    EXPECT_EQ(object["library"]["compiler"], "");
}

TEST_F(VersionCommandTest, FailsForWhatIsNoLibrary) {
    WriteBytes(Library(), "no library");
    const ToolRun run = RunTool({"version", "--library", Library()}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_NE(run.errors.find("is no library of Linux or Windows; name "), std::string::npos) << run.errors;
}

}  // namespace
}  // namespace vastrelline
