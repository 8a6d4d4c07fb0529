// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "report/LogFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(LogFilePosix, LogLiesBesideTheProfileWithEitherSeparator) {
    EXPECT_EQ(MakeLogPath(L"/set/profile.ini"), L"/set\\ExtraOralLog.txt");
    EXPECT_EQ(MakeLogPath(L"/a\\b/profile.ini"), L"/a\\b\\ExtraOralLog.txt");
    EXPECT_EQ(MakeLogPath(L"/profile.ini"), L"\\ExtraOralLog.txt");
}

TEST(LogFilePosix, FullDiskEndsTheLogAndNothingElse) {
    LogFile log;
    log.Open(L"/dev/full", OpenMode::AppendExclusive);
    ASSERT_TRUE(log.IsOpen());
    EXPECT_EQ(WriteLogText(&log, L"no room"), 1);
    EXPECT_FALSE(log.IsOpen());
    EXPECT_EQ(WriteLogText(&log, L"later"), 1);
}

TEST(LogFilePosix, AReaderWhoLeavesEndsTheLogAndNothingElse) {
    ASSERT_EQ(std::signal(SIGPIPE, SIG_DFL), SIG_DFL);  // which ends the process
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.Narrow("log.txt").c_str(), 0600), 0);
    const int reader = open(folder.Narrow("log.txt").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    LogFile log;
    log.Open(folder.Wide(L"log.txt"), OpenMode::AppendExclusive);
    ASSERT_TRUE(log.IsOpen());
    EXPECT_EQ(WriteLogText(&log, L"read\r\n"), 1);
    EXPECT_TRUE(log.IsOpen());
    close(reader);
    EXPECT_EQ(WriteLogText(&log, L"lost\r\n"), 1);
    EXPECT_FALSE(log.IsOpen());
}

// Elsewhere the narrow form depends on the machine's locale.
TEST(LogFilePosix, TextIsWrittenWhole) {
    const TemporaryFolder folder;
    LogFile log;
    log.Open(folder.Wide(L"log.txt"), OpenMode::AppendExclusive);
    WriteLogText(&log, L"[\u00e9]\r\n");
    WriteLogText(&log, L"next\r\n");
    log.Close();
    EXPECT_EQ(ReadBytes(folder.Path() / "log.txt"), "[\xc3\xa9]\r\nnext\r\n");
}

}  // namespace
}  // namespace vastrelline
