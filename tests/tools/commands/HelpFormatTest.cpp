// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

#include "ToolRun.h"
#include "commands/CommandTable.h"
#include "commands/HelpFormat.h"

namespace vastrelline {
namespace {

TEST(WrapText, BreaksAtBlanks) {
    EXPECT_EQ(WrapText("one two three", 7), "one two\nthree");
    EXPECT_EQ(WrapText("one two three", 6), "one\ntwo\nthree");
    EXPECT_EQ(WrapText("a longword b", 4), "a\nlongword\nb");
    EXPECT_EQ(WrapText("  a   b ", 9), "a b");
    EXPECT_EQ(WrapText("", 9), "");
}

TEST(Help, OfEveryCommandFitsATerminal) {
    for (const CommandEntry& entry : CommandTable()) {
        std::vector<std::string> words{std::string(entry.name), "--help"};
        if (!entry.group.empty()) words.insert(words.begin(), std::string(entry.group));
        const ToolRun help = RunTool(words, MustNotBeCalled);
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_EQ(help.errors, "");
        EXPECT_LE(std::count(help.report.begin(), help.report.end(), '\n'), 60) << entry.name;
        std::istringstream lines(help.report);
        for (std::string line; std::getline(lines, line);)
            EXPECT_LE(line.size(), kHelpWidth + 10) << entry.name << ": " << line;
    }
}

TEST(Help, SetsApartWhatMustBeThere) {
    const ToolRun help = RunTool({"run", "--help"}, MustNotBeCalled);
    const size_t needed = help.report.find("Needed:");
    const size_t options = help.report.find("Options:");
    ASSERT_NE(needed, std::string::npos) << help.report;
    EXPECT_LT(needed, options);
    EXPECT_LT(help.report.find("--profile PROFILE"), options);
    EXPECT_GT(help.report.find("--force"), options);
}

}  // namespace
}  // namespace vastrelline
