#include "diagnostics/StageReport.h"

#include "config/ConfiguredState.h"
#include "diagnostics/RawDump.h"
#include "platform/Clock.h"
#include "platform/TextFormat.h"

namespace vastrelline {

ConfiguredStageReport::ConfiguredStageReport() : startTick_(TickCount()) {}

void ConfiguredStageReport::Dump(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width,
                                 int32_t height) {
    ConfiguredState& state = SharedConfiguredState();
    if (state.SaveImage == 0) return;
    DumpNumbered(state.WritePath, nameFormat, state.DumpNumber, pixels, width, height);
}

void ConfiguredStageReport::Log(LogFile& log, std::wstring_view stageLine,
                                std::initializer_list<std::wstring> parameterLines) const {
    const uint32_t elapsedMs = TickCount() - startTick_;
    if (SharedConfiguredState().SaveLog == 0) return;
    const CalendarTime now = LocalTime();
    WriteLogText(&log, FormatText(stageLine, {now.hour, now.minute, now.second, elapsedMs / 1000.0}));
    for (const std::wstring& line : parameterLines) WriteLogText(&log, line);
}

}  // namespace vastrelline
