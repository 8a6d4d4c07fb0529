// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <signal.h>

#include <string>

#include "messages/ToolError.h"
#include "runs/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using std::chrono::milliseconds;

ChildEnd RunShell(const std::string& script, std::optional<milliseconds> timeout = std::nullopt) {
    return RunChild({"/bin/sh", "-c", script}, timeout);
}

TEST(ChildProcess, TellsItsCodeAndWhatItSaid) {
    const ChildEnd end = RunShell("echo out; echo first >&2; printf second >&2; exit 7");
    EXPECT_EQ(end.kind, ChildEnd::Kind::Exited);
    EXPECT_EQ(end.number, 7);
    EXPECT_EQ(end.said, "first\nsecond");
}

TEST(ChildProcess, TellsTheSignalThatKilledIt) {
    const ChildEnd end = RunShell("echo dying >&2; kill -SEGV $$");
    EXPECT_EQ(end.kind, ChildEnd::Kind::Killed);
    EXPECT_EQ(end.number, SIGSEGV);
    EXPECT_EQ(end.said, "dying\n");
}

TEST(ChildProcess, IsKilledWhenItsTimeIsOver) {
    EXPECT_EQ(RunShell("exec sleep 1000", milliseconds(50)).kind, ChildEnd::Kind::TimedOut);
    // Also one that says nothing more, and one that never stops talking.
    EXPECT_EQ(RunShell("exec sleep 1000 2>/dev/null", milliseconds(50)).kind, ChildEnd::Kind::TimedOut);
    EXPECT_EQ(RunShell("while :; do echo x >&2; done", milliseconds(50)).kind, ChildEnd::Kind::TimedOut);
}

TEST(ChildProcess, KeepsTheBeginningOfALongSpeech) {
    const ChildEnd end = RunShell(
        "i=0; while [ $i -lt 3000 ]; do echo 1234567890123456789012345678901 >&2; "
        "i=$((i+1)); done");
    EXPECT_EQ(end.kind, ChildEnd::Kind::Exited);
    EXPECT_EQ(end.said.size(), kMostSaid);
}

TEST(ChildProcess, ReadsNothingOfItsParentsInput) {
    EXPECT_EQ(RunShell("read line; echo \"got $line\" >&2").said, "got \n");
}

TEST(ChildProcess, ThatCannotBeStartedIsAnError) {
    const TemporaryFolder folder;
    EXPECT_THROW(RunChild({folder.Narrow("missing")}, std::nullopt), ProcessingError);
}

TEST(ChildProcess, TellsWhatToDoAboutAProgramThatIsGone) {
    try {
        RunChild({"/no/such/program"}, std::nullopt);
        FAIL() << "a program that is not there ran";
    } catch (const ProcessingError& error) {
        EXPECT_EQ(error.Remedy(), "start the tool anew if it was replaced while it ran");
    }
}

TEST(OwnProgram, IsThisTest) { EXPECT_NE(OwnProgram().find("tools_tests"), std::string::npos); }

}  // namespace
}  // namespace vastrelline
