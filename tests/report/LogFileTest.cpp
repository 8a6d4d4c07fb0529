// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "report/LogFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

constexpr const char* kRule =
    "=========================================================================================\r\n";

class LogFileTest : public testing::Test {
protected:
    std::wstring LogPath() const { return folder_.Wide(L"log.txt"); }
    std::string LogBytes() const { return ReadBytes(folder_.Path() / "log.txt"); }
    const TemporaryFolder& Folder() const { return folder_; }

private:
    TemporaryFolder folder_;
};

struct LogPathCase {
    const char* name;
    const wchar_t* iniPath;
    const wchar_t* expected;
};

class MakeLogPathTest : public testing::TestWithParam<LogPathCase> {};

TEST_P(MakeLogPathTest, LiesBesideTheProfile) {
    EXPECT_EQ(MakeLogPath(GetParam().iniPath), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, MakeLogPathTest,
    testing::Values(LogPathCase{"WholePath", L"C:\\set\\profile.ini", L"C:\\set\\ExtraOralLog.txt"},
                    LogPathCase{"DotInTheFolder", L"C:\\a.b\\c\\p.ini", L"C:\\a.b\\c\\ExtraOralLog.txt"},
                    LogPathCase{"RootOfADrive", L"C:\\p.ini", L"C:\\ExtraOralLog.txt"},
                    LogPathCase{"Slashes", L"C:/set/profile.ini", L"C:/set\\ExtraOralLog.txt"},
                    LogPathCase{"SlashBehindBackslash", L"C:\\a/p.ini", L"C:\\a\\ExtraOralLog.txt"},
                    LogPathCase{"OnlyASeparator", L"\\p.ini", L"\\ExtraOralLog.txt"},
                    LogPathCase{"NoSeparatorMeansTheCurrentFolder", L"profile.ini", L".\\ExtraOralLog.txt"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(LogFileTest, TextWithoutALogGivesZero) { EXPECT_EQ(WriteLogText(nullptr, L"text"), 0); }

TEST_F(LogFileTest, TextIsWrittenBehindTheLastOne) {
    LogFile log;
    log.Open(LogPath(), OpenMode::AppendExclusive);
    ASSERT_TRUE(log.IsOpen());
    EXPECT_EQ(WriteLogText(&log, L"one\r\n"), 1);
    EXPECT_EQ(WriteLogText(&log, L""), 1);
    EXPECT_EQ(WriteLogText(&log, L"\t two\r\n"), 1);
    log.Close();
    EXPECT_FALSE(log.IsOpen());
    EXPECT_EQ(LogBytes(), "one\r\n\t two\r\n");
}

TEST_F(LogFileTest, AppendKeepsTheContentAndTruncateDropsIt) {
    WriteBytes(Folder().Path() / "log.txt", "before\r\n");
    LogFile log;
    log.Open(LogPath(), OpenMode::AppendExclusive);
    WriteLogText(&log, L"appended\r\n");
    log.Close();
    EXPECT_EQ(LogBytes(), "before\r\nappended\r\n");
    log.Open(LogPath(), OpenMode::TruncateExclusive);
    WriteLogText(&log, L"new\r\n");
    log.Close();
    EXPECT_EQ(LogBytes(), "new\r\n");
}

TEST_F(LogFileTest, ClosedLogTakesTextsWithoutAWord) {
    LogFile log;
    EXPECT_FALSE(log.IsOpen());
    EXPECT_EQ(WriteLogText(&log, L"lost"), 1);
    WriteLogHead(log, kConfiguredStartLine, {2024, 1, 2, 3, 4, 5}, L"1.0", L"S");
    WriteLogEnd(log, kConfiguredEndLine, {2024, 1, 2, 3, 4, 5}, 1.0);
    log.Close();
    EXPECT_TRUE(std::filesystem::is_empty(Folder().Path()));
}

TEST_F(LogFileTest, SecondOpenerFailsUntilTheFirstCloses) {
    LogFile first;
    first.Open(LogPath(), OpenMode::AppendExclusive);
    ASSERT_TRUE(first.IsOpen());
    LogFile second;
    second.Open(LogPath(), OpenMode::AppendExclusive);
    EXPECT_FALSE(second.IsOpen());
    second.Open(LogPath(), OpenMode::TruncateExclusive);
    EXPECT_FALSE(second.IsOpen());
    WriteLogText(&first, L"kept");
    WriteLogText(&second, L"lost");
    first.Close();
    EXPECT_EQ(LogBytes(), "kept");
    second.Open(LogPath(), OpenMode::AppendExclusive);
    EXPECT_TRUE(second.IsOpen());
}

TEST_F(LogFileTest, LogGoesWithTheObject) {
    {
        LogFile log;
        log.Open(LogPath(), OpenMode::AppendExclusive);
        WriteLogText(&log, L"text");
    }
    LogFile next;
    next.Open(LogPath(), OpenMode::AppendExclusive);
    EXPECT_TRUE(next.IsOpen());
}

TEST_F(LogFileTest, LogThatCannotBeOpenedStaysClosed) {
    LogFile log;
    log.Open(Folder().Wide(L"missing") + L"\\log.txt", OpenMode::AppendExclusive);
    EXPECT_FALSE(log.IsOpen());
    log.Open(Folder().Path().wstring(), OpenMode::AppendExclusive);
    EXPECT_FALSE(log.IsOpen());
    EXPECT_EQ(WriteLogText(&log, L"lost"), 1);
}

TEST_F(LogFileTest, HeadOfARunIsRulesDateStartLineAndSection) {
    LogFile log;
    log.Open(LogPath(), OpenMode::AppendExclusive);
    WriteLogHead(log, kConfiguredStartLine, {2024, 3, 7, 9, 5, 1}, L"2.10", L"General");
    log.Close();
    EXPECT_EQ(LogBytes(), std::string("\r\n\r\n") + kRule +
                              "============================== Vastrelline Log 2024.03.07 "
                              "==============================\r\n" +
                              kRule + "#### 09:05:01 \t: Start Vastrelline.dll [v2.10]\r\n" +
                              "\t\t\t Section Name [General]\r\n");
}

TEST_F(LogFileTest, YearOfThreeDigitsIsPaddedWithABlank) {
    LogFile log;
    log.Open(LogPath(), OpenMode::AppendExclusive);
    WriteLogHead(log, kConfiguredStartLine, {987, 12, 31, 23, 59, 60}, L"", L"");
    log.Close();
    EXPECT_EQ(LogBytes(), std::string("\r\n\r\n") + kRule +
                              "============================== Vastrelline Log  987.12.31 "
                              "==============================\r\n" +
                              kRule + "#### 23:59:60 \t: Start Vastrelline.dll [v]\r\n" +
                              "\t\t\t Section Name []\r\n");
}

TEST_F(LogFileTest, PercentSignsOfTheProfileAreTextAndNoFormat) {
    LogFile log;
    log.Open(LogPath(), OpenMode::AppendExclusive);
    WriteLogHead(log, kConfiguredStartLine, {2024, 3, 7, 9, 5, 1}, L"%s%n", L"%d");
    log.Close();
    const std::string bytes = LogBytes();
    EXPECT_NE(bytes.find("Start Vastrelline.dll [v%s%n]\r\n"), std::string::npos);
    EXPECT_NE(bytes.find("\t\t\t Section Name [%d]\r\n"), std::string::npos);
}

TEST_F(LogFileTest, EndOfARunIsTheTimeInSecondsAndTheRule) {
    LogFile log;
    log.Open(LogPath(), OpenMode::AppendExclusive);
    WriteLogEnd(log, kConfiguredEndLine, {2024, 3, 7, 19, 45, 0}, 61.25);
    log.Close();
    EXPECT_EQ(LogBytes(), std::string("#### 19:45:00 \t: End Post-Processing ( 61.250 sec )\r\n") + kRule);
}

}  // namespace
}  // namespace vastrelline
