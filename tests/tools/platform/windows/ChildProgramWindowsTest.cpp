// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

#include "messages/ToolError.h"
#include "platform/ChildProgram.h"
#include "runs/ChildProcess.h"

namespace vastrelline {
namespace {

using std::chrono::milliseconds;

// What the tests below start: this program with one of these alone, for no shell is the same everywhere.
TEST(ChildProgram, DISABLED_Speaks) {
    std::cout << "out\n";
    std::cerr << "first\nsecond";
    std::exit(7);
}

TEST(ChildProgram, DISABLED_NeverStopsTalking) {
    while (true) std::cerr << "1234567890123456789012345678901\n";
}

TEST(ChildProgram, DISABLED_Crashes) {
    std::cerr << "dying";
    volatile int* const nowhere = nullptr;
    *nowhere = 1;
}

TEST(ChildProgram, DISABLED_Sleeps) { std::this_thread::sleep_for(std::chrono::seconds(1000)); }

ChildEnd RunTest(const std::string& name, std::optional<milliseconds> timeout = std::nullopt) {
    return RunChild({OwnProgram(), "--gtest_also_run_disabled_tests", "--gtest_catch_exceptions=0",
                     "--gtest_filter=ChildProgram.DISABLED_" + name},
                    timeout);
}

TEST(ChildProgram, TellsItsCodeAndWhatItSaid) {
    const ChildEnd end = RunTest("Speaks");
    EXPECT_EQ(end.kind, ChildEnd::Kind::Exited);
    EXPECT_EQ(end.number, 7);
    EXPECT_EQ(end.said.substr(0, 5), "first");
    EXPECT_EQ(end.said.substr(end.said.size() - 6), "second");
    EXPECT_EQ(end.said.find("out"), std::string::npos);
}

TEST(ChildProgram, IsEndedWhenItsTimeIsOver) {
    EXPECT_EQ(RunTest("Sleeps", milliseconds(500)).kind, ChildEnd::Kind::TimedOut);
    const ChildEnd end = RunTest("NeverStopsTalking", milliseconds(2000));
    EXPECT_EQ(end.kind, ChildEnd::Kind::TimedOut);
    EXPECT_EQ(end.said.size(), kMostSaid);
}

TEST(ChildProgram, TellsTheExceptionThatEndedIt) {
    const ChildEnd end = RunTest("Crashes");
    EXPECT_EQ(end.kind, ChildEnd::Kind::Killed);
    EXPECT_EQ(DescribeKill(end.number), "exception 0xC0000005 (access violation)");
    EXPECT_EQ(end.said.substr(0, 5), "dying");
}

TEST(ChildProgram, ThatCannotBeStartedIsAnError) {
    EXPECT_THROW(RunChild({"C:\\no\\such.exe"}, std::nullopt), ProcessingError);
}

TEST(ChildProgram, ExceptionsThatNobodyKnowsHaveNumbers) {
    EXPECT_EQ(DescribeKill(0xC0001234), "exception 0xC0001234");
}

TEST(OwnProgram, IsThisTest) { EXPECT_NE(OwnProgram().find("tools_tests"), std::string::npos); }

}  // namespace
}  // namespace vastrelline
