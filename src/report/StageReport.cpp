// SPDX-License-Identifier: Apache-2.0
#include "report/StageReport.h"

#include "config/ConfiguredState.h"
#include "platform/Clock.h"
#include "platform/TextFormat.h"
#include "report/TellIfPossible.h"

namespace vastrelline {

StageReport StageReport::BeginConfigured(LogFile& log) {
    return {Configured(), log, SharedConfiguredState().SaveLog != 0, TimeUnit::Seconds};
}

StageReport StageReport::BeginFixed(LogFile& log, int32_t& dumpCounter, const FixedSettings& settings) {
    return {Fixed(dumpCounter), log, settings.SAVE_LOG != 0, TimeUnit::Milliseconds};
}

StageReport::StageReport(const RunDumps& dumps, LogFile& log, bool isLogging, TimeUnit timeUnit)
    : RunDumps(dumps), startTick_(TickCount()), log_(log), isLogging_(isLogging), timeUnit_(timeUnit) {}

void StageReport::Log(std::wstring_view stageLine, std::initializer_list<LogLine> parameterLines) const {
    const uint32_t elapsedMs = TickCount() - startTick_;
    if (!isLogging_) return;
    const FormatArgument elapsed = timeUnit_ == TimeUnit::Seconds
                                       ? FormatArgument(elapsedMs / 1000.0)
                                       : FormatArgument(static_cast<int32_t>(elapsedMs));
    const CalendarTime now = LocalTime();
    TellIfPossible([&] {
        WriteLogText(&log_, FormatText(stageLine, {now.hour, now.minute, now.second, elapsed}));
        for (const LogLine& line : parameterLines) WriteLogText(&log_, line.Text());
    });
}

}  // namespace vastrelline
