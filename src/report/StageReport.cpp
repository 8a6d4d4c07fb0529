#include "report/StageReport.h"

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "platform/Clock.h"
#include "platform/TextFormat.h"
#include "report/RawDump.h"

namespace vastrelline {

namespace {

template <typename Elapsed>
void WriteStageLines(LogFile& log, std::wstring_view stageLine, Elapsed elapsed,
                     std::initializer_list<std::wstring> parameterLines) {
    const CalendarTime now = LocalTime();
    WriteLogText(&log, FormatText(stageLine, {now.hour, now.minute, now.second, elapsed}));
    for (const std::wstring& line : parameterLines) WriteLogText(&log, line);
}

}  // namespace

ConfiguredStageReport::ConfiguredStageReport() : startTick_(TickCount()) {}

void ConfiguredStageReport::Dump(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width,
                                 int32_t height) {
    ConfiguredState& state = SharedConfiguredState();
    if (state.SaveImage == 0) return;
    DumpNumbered(state.WritePath, nameFormat, state.DumpNumber, pixels, width, height);
}

void ConfiguredStageReport::DumpBeside(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width,
                                       int32_t height) {
    const ConfiguredState& state = SharedConfiguredState();
    if (state.SaveImage == 0) return;
    int32_t number = state.DumpNumber;
    DumpNumbered(state.WritePath, nameFormat, number, pixels, width, height);
}

void ConfiguredStageReport::Log(LogFile& log, std::wstring_view stageLine,
                                std::initializer_list<std::wstring> parameterLines) const {
    const uint32_t elapsedMs = TickCount() - startTick_;
    if (SharedConfiguredState().SaveLog == 0) return;
    WriteStageLines(log, stageLine, elapsedMs / 1000.0, parameterLines);
}

FixedStageReport::FixedStageReport() : startTick_(TickCount()) {}

void FixedStageReport::Dump(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width,
                            int32_t height, int32_t& dumpCounter) {
    const FixedState& state = SharedFixedState();
    if (state.SaveImage == 0) return;
    DumpNumbered(state.WritePath, nameFormat, dumpCounter, pixels, width, height);
}

void FixedStageReport::DumpBeside(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width,
                                  int32_t height, int32_t dumpCounter) {
    Dump(nameFormat, pixels, width, height, dumpCounter);
}

void FixedStageReport::Log(LogFile& log, int32_t saveLog, std::wstring_view stageLine,
                           std::initializer_list<std::wstring> parameterLines) const {
    const uint32_t elapsedMs = TickCount() - startTick_;
    if (saveLog == 0) return;
    WriteStageLines(log, stageLine, static_cast<int32_t>(elapsedMs), parameterLines);
}

}  // namespace vastrelline
