#include <gtest/gtest.h>

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

// Each text has as many bytes as it has characters, so a text with a character of two bytes loses its last
// byte, here the line feed. Elsewhere the narrow form depends on the machine's locale.
TEST(LogFilePosix, TextHasAsManyBytesAsCharacters) {
    const TemporaryFolder folder;
    LogFile log;
    log.Open(folder.Wide(L"log.txt"), OpenMode::AppendExclusive);
    WriteLogText(&log, L"[\u00e9]\r\n");
    WriteLogText(&log, L"next\r\n");
    log.Close();
    EXPECT_EQ(ReadBytes(folder.Path() / "log.txt"), "[\xc3\xa9]\rnext\r\n");
}

}  // namespace
}  // namespace vastrelline
