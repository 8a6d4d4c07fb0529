// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "platform/Clock.h"
#include "report/BackupSet.h"
#include "report/CurveFile.h"
#include "report/StageReport.h"
#include "support/ConfiguredRun.h"
#include "support/FailingMemory.h"
#include "support/FixedRun.h"
#include "support/MaskedLog.h"
#include "support/ShownMessages.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

constexpr std::wstring_view kStageLine = L"#### %02d:%02d:%02d \t: Some Stage ( %.03lf sec )\r\n";

// Puts the process-wide switches back after each test.
class StageReportTest : public testing::Test {
protected:
    StageReportTest() {
        ConfiguredState& state = SharedConfiguredState();
        state.SaveLog = 0;
        state.SaveImage = 0;
        state.WritePath = folder_.Wide(L"");
        log_.Open(folder_.Wide(L"log.txt"), OpenMode::AppendExclusive);
    }
    ~StageReportTest() override { SharedConfiguredState() = before_; }

    std::string LogBytes() {
        log_.Close();
        return ReadBytes(folder_.Path() / "log.txt");
    }
    LogFile& Log() { return log_; }

    TemporaryFolder folder_;

private:
    ConfiguredState before_ = SharedConfiguredState();
    LogFile log_;
};

TEST_F(StageReportTest, LogIsNothingWhileLoggingIsOff) {
    StageReport::BeginConfigured(Log()).Log(kStageLine, {LogLine(L"\t\t\t Key : 1\r\n", {})});
    EXPECT_EQ(LogBytes(), "");
}

TEST_F(StageReportTest, LogIsTheStageLineAndItsParameterLinesInOrder) {
    SharedConfiguredState().SaveLog = 1;
    StageReport::BeginConfigured(Log()).Log(
        kStageLine, {LogLine(L"\t\t\t Key : 1\r\n", {}), LogLine(L"\t\t\t Other : 2\r\n", {})});
    StageReport::BeginConfigured(Log()).Log(kStageLine, {});
    EXPECT_EQ(MaskTimes(LogBytes()),
              "#### hh:mm:ss \t: Some Stage ( S.SSS sec )\r\n"
              "\t\t\t Key : 1\r\n"
              "\t\t\t Other : 2\r\n"
              "#### hh:mm:ss \t: Some Stage ( S.SSS sec )\r\n");
}

TEST_F(StageReportTest, TimeRunsFromTheReportsBeginningInSeconds) {
    SharedConfiguredState().SaveLog = 1;
    const auto begin = std::chrono::steady_clock::now();
    const StageReport report = StageReport::BeginConfigured(Log());
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    report.Log(kStageLine, {});
    const std::chrono::duration<double> longest = std::chrono::steady_clock::now() - begin;
    const std::string log = LogBytes();
    std::smatch match;
    ASSERT_TRUE(std::regex_search(log, match, std::regex("\\( ([0-9]+\\.[0-9]{3}) sec")));
    const double seconds = std::stod(match[1]);
    // A tick counter may stand still for 16 ms.
    EXPECT_GE(seconds, 0.060 - 0.017);
    EXPECT_LE(seconds, longest.count() + 0.017);
}

TEST_F(StageReportTest, MissingMemoryNeverComesOut) {
    SharedConfiguredState().SaveLog = 1;
    SharedConfiguredState().SaveImage = 1;
    const ShownMessages messages;  // no message goes to a person
    const std::wstring logPath = folder_.Wide(L"log.txt");
    const std::wstring curvePath = folder_.Wide(L"curve.txt");
    const std::wstring backupFolder = folder_.Wide(L"Keep");
    const std::wstring section = L"Molar";
    const std::vector<uint16_t> pixels(4, 7);
    const int64_t failures = SweepMemory(
        [&] {
            Log().Open(logPath, OpenMode::AppendExclusive);
            WriteLogHead(Log(), kConfiguredStartLine, LocalTime(), L"1.0", section);
            const StageReport report = StageReport::BeginConfigured(Log());
            report.Dump(L"%02d_A_frame_with_a_long_name.raw", pixels.data(), 2, 2);
            report.DumpBeside(L"%02d_A_frame_with_a_long_name.raw", pixels.data(), 2, 2);
            report.Log(kStageLine, {LogLine(L"\t\t\t A key with a long name : %d, %d\r\n", {1, 2})});
            WriteCurveFile(curvePath, 0, 3, pixels);
            WriteBackupSet(backupFolder, section, pixels.data(), pixels.data(), 2, 2, kTwelveBitWindow);
            WriteLogEnd(Log(), kConfiguredEndLine, LocalTime(), 1.0);
            Log().Close();
        },
        [&](int64_t n, bool hasThrown) { EXPECT_FALSE(hasThrown) << "without request " << n; });
    EXPECT_GT(failures, 10);
}

TEST_F(StageReportTest, ClosedLogIsNoHindrance) {
    SharedConfiguredState().SaveLog = 1;
    LogFile closed;
    StageReport::BeginConfigured(closed).Log(kStageLine, {LogLine(L"\t\t\t Key : 1\r\n", {})});
    EXPECT_FALSE(closed.IsOpen());
    EXPECT_EQ(LogBytes(), "");
}

TEST(StageReportOfTheFixedChain, LogAsksTheSwitchOfTheRecord) {
    FixedRun run;
    StageReport::BeginFixed(run.Log(), run.dumpCounter, run.settings)
        .Log(L"#### %02d:%02d:%02d \t: Some Stage ( %d ms )\r\n", {LogLine(L"x\r\n", {})});
    EXPECT_EQ(run.LogText(), "");
}

TEST(StageReport, DumpsAsItsChainDoes) {
    constexpr uint16_t kPixel = 0x1234;
    ConfiguredRun configured;
    FixedRun fixed;
    SharedConfiguredState().SaveImage = 1;
    SharedConfiguredState().DumpNumber = 41;
    SharedFixedState().SaveImage = 1;
    StageReport::BeginConfigured(configured.Log()).Dump(L"%02d_Stage.raw", &kPixel, 1, 1);
    StageReport::BeginFixed(fixed.Log(), fixed.dumpCounter, fixed.settings)
        .Dump(L"%02d_Stage.raw", &kPixel, 1, 1);
    EXPECT_THAT(configured.DumpedNames(), testing::ElementsAre("41_stage.raw"));
    EXPECT_THAT(fixed.DumpedNames(), testing::ElementsAre("05_stage.raw"));
}

TEST(StageReportOfTheFixedChain, LogCountsMilliseconds) {
    FixedRun run;
    run.settings.SAVE_LOG = 1;
    const StageReport report = StageReport::BeginFixed(run.Log(), run.dumpCounter, run.settings);
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    report.Log(L"#### %02d:%02d:%02d \t: Some Stage ( %d ms )\r\n", {LogLine(L"\t\t\t Key : 1\r\n", {})});
    const std::string log = run.LogText();
    std::smatch match;
    ASSERT_TRUE(std::regex_match(
        log, match,
        std::regex(
            "#### [0-9]{2}:[0-9]{2}:[0-9]{2} \t: Some Stage \\( ([0-9]+) ms \\)\r\n\t\t\t Key : 1\r\n")));
    // A tick counter may stand still for 16 ms.
    EXPECT_GE(std::stoi(match[1]), 60 - 17);
}

}  // namespace
}  // namespace vastrelline
