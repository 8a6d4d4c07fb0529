// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "messages/ToolError.h"
#include "platform/ChildProgram.h"
#include "platform/OwnProcess.h"
#include "runs/ChildProcess.h"

namespace vastrelline {
namespace {

using std::chrono::milliseconds;

ChildEnd RunShell(const std::string& script, std::optional<milliseconds> timeout = std::nullopt) {
    return RunChild({EnvironmentText("ComSpec").value_or(""), "/c", script}, timeout);
}

TEST(ChildProgram, TellsItsCodeAndWhatItSaid) {
    const ChildEnd end = RunShell("echo out& echo first 1>&2& exit 7");
    EXPECT_EQ(end.kind, ChildEnd::Kind::Exited);
    EXPECT_EQ(end.number, 7);
    EXPECT_EQ(end.said.substr(0, 5), "first");
    EXPECT_EQ(end.said.find("out"), std::string::npos);
}

TEST(ChildProgram, IsEndedWhenItsTimeIsOver) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(RunShell("for /L %i in (1,0,2) do @rem", milliseconds(100)).kind, ChildEnd::Kind::TimedOut);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
}

TEST(ChildProgram, ThatCannotBeStartedIsAnError) {
    EXPECT_THROW(RunChild({"C:\\no\\such.exe"}, std::nullopt), ProcessingError);
}

TEST(ChildProgram, ExceptionsHaveNames) {
    EXPECT_EQ(DescribeKill(0xC0000005), "exception 0xC0000005 (access violation)");
    EXPECT_EQ(DescribeKill(0xC0001234), "exception 0xC0001234");
}

TEST(OwnProgram, IsThisTest) { EXPECT_NE(OwnProgram().find("tools_tests"), std::string::npos); }

}  // namespace
}  // namespace vastrelline
