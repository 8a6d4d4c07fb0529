#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <regex>
#include <string>
#include <thread>

#include "config/ConfiguredState.h"
#include "report/StageReport.h"
#include "support/FixedRun.h"
#include "support/MaskedLog.h"
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
    std::filesystem::path At(const std::string& name) const { return folder_.Path() / name; }
    size_t CountFiles() const {
        size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path()))
            if (entry.path().extension() == ".raw") ++count;
        return count;
    }

private:
    ConfiguredState before_ = SharedConfiguredState();
    TemporaryFolder folder_;
    LogFile log_;
};

TEST_F(StageReportTest, DumpIsNothingWhileSavingIsOff) {
    constexpr std::array<uint16_t, 1> kPixel = {0x1234};
    const int32_t number = SharedConfiguredState().DumpNumber;
    ConfiguredStageReport::Dump(L"%02d_Stage.raw", kPixel.data(), 1, 1);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, number);
    EXPECT_EQ(CountFiles(), 0U);
}

TEST_F(StageReportTest, DumpTakesTheProcessWideNumberAndStepsIt) {
    constexpr std::array<uint16_t, 1> kPixel = {0x1234};
    SharedConfiguredState().SaveImage = 2;  // any number but 0
    SharedConfiguredState().DumpNumber = 41;
    ConfiguredStageReport::Dump(L"%02d_Stage.raw", kPixel.data(), 1, 1);
    ConfiguredStageReport::Dump(L"%02d_Other.raw", kPixel.data(), 1, 1);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 43);
    EXPECT_EQ(ReadBytes(At("41_stage.raw")), "\x34\x12");
    EXPECT_EQ(ReadBytes(At("42_other.raw")), "\x34\x12");
}

TEST_F(StageReportTest, LogIsNothingWhileLoggingIsOff) {
    ConfiguredStageReport().Log(Log(), kStageLine, {L"\t\t\t Key : 1\r\n"});
    EXPECT_EQ(LogBytes(), "");
}

TEST_F(StageReportTest, LogIsTheStageLineAndItsParameterLinesInOrder) {
    SharedConfiguredState().SaveLog = 1;
    ConfiguredStageReport().Log(Log(), kStageLine, {L"\t\t\t Key : 1\r\n", L"\t\t\t Other : 2\r\n"});
    ConfiguredStageReport().Log(Log(), kStageLine, {});
    EXPECT_EQ(MaskTimes(LogBytes()),
              "#### hh:mm:ss \t: Some Stage ( S.SSS sec )\r\n"
              "\t\t\t Key : 1\r\n"
              "\t\t\t Other : 2\r\n"
              "#### hh:mm:ss \t: Some Stage ( S.SSS sec )\r\n");
}

TEST_F(StageReportTest, TimeRunsFromTheReportsBeginningInSeconds) {
    SharedConfiguredState().SaveLog = 1;
    const auto begin = std::chrono::steady_clock::now();
    const ConfiguredStageReport report;
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    report.Log(Log(), kStageLine, {});
    const std::chrono::duration<double> longest = std::chrono::steady_clock::now() - begin;
    const std::string log = LogBytes();
    std::smatch match;
    ASSERT_TRUE(std::regex_search(log, match, std::regex("\\( ([0-9]+\\.[0-9]{3}) sec")));
    const double seconds = std::stod(match[1]);
    // A tick counter may stand still for 16 ms.
    EXPECT_GE(seconds, 0.060 - 0.017);
    EXPECT_LE(seconds, longest.count() + 0.017);
}

TEST_F(StageReportTest, ClosedLogIsNoHindrance) {
    SharedConfiguredState().SaveLog = 1;
    LogFile closed;
    ConfiguredStageReport().Log(closed, kStageLine, {L"\t\t\t Key : 1\r\n"});
    EXPECT_FALSE(closed.IsOpen());
    EXPECT_EQ(LogBytes(), "");
}

TEST_F(StageReportTest, DumpBesideLeavesTheNumberToTheNextDump) {
    constexpr std::array<uint16_t, 1> kPixel = {0x1234};
    SharedConfiguredState().DumpNumber = 41;
    ConfiguredStageReport::DumpBeside(L"%02d_Off.raw", kPixel.data(), 1, 1);
    SharedConfiguredState().SaveImage = 1;
    ConfiguredStageReport::DumpBeside(L"%02d_Stage.raw", kPixel.data(), 1, 1);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 41);
    EXPECT_EQ(ReadBytes(At("41_stage.raw")), "\x34\x12");
    EXPECT_EQ(CountFiles(), 1U);
}

TEST(FixedStageReport, DumpIsNothingWhileSavingIsOff) {
    constexpr std::array<uint16_t, 1> kPixel = {0x1234};
    FixedRun run;
    FixedStageReport::Dump(L"%02d_Stage.raw", kPixel.data(), 1, 1, run.dumpCounter);
    FixedStageReport::DumpBeside(L"%02d_Stage.raw", kPixel.data(), 1, 1, run.dumpCounter);
    EXPECT_EQ(run.dumpCounter, 5);
    EXPECT_THAT(run.DumpedNames(), testing::IsEmpty());
}

TEST(FixedStageReport, DumpTakesTheRunsNumberAndStepsIt) {
    constexpr std::array<uint16_t, 1> kPixel = {0x1234};
    FixedRun run;
    SharedFixedState().SaveImage = 1;
    const int32_t processNumber = SharedConfiguredState().DumpNumber;
    FixedStageReport::DumpBeside(L"%02d_Beside.raw", kPixel.data(), 1, 1, run.dumpCounter);
    FixedStageReport::Dump(L"%02d_Stage.raw", kPixel.data(), 1, 1, run.dumpCounter);
    EXPECT_EQ(run.dumpCounter, 6);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, processNumber);
    EXPECT_THAT(run.DumpedNames(), testing::ElementsAre("05_beside.raw", "05_stage.raw"));
    EXPECT_EQ(run.Dumped("05_stage.raw"), "\x34\x12");
}

TEST(FixedStageReport, LogAsksTheSwitchOfTheRecord) {
    FixedRun run;
    FixedStageReport().Log(run.Log(), 0, L"#### %02d:%02d:%02d \t: Some Stage ( %d ms )\r\n", {L"x\r\n"});
    EXPECT_EQ(run.LogText(), "");
}

TEST(FixedStageReport, LogCountsMilliseconds) {
    FixedRun run;
    const FixedStageReport report;
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    report.Log(run.Log(), 1, L"#### %02d:%02d:%02d \t: Some Stage ( %d ms )\r\n", {L"\t\t\t Key : 1\r\n"});
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
