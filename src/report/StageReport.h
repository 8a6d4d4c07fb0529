// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "config/FixedSettings.h"
#include "report/LogFile.h"
#include "report/LogLine.h"
#include "report/RunDumps.h"

namespace vastrelline {

// What every stage does around its core in the same way: it takes the start tick, dumps the frame and writes
// its lines to the log. Dump and Log come in the order of each stage.
class StageReport : public RunDumps {
public:
    // For a stage of the configured chain, begun when the stage has read its keys: the switch of the log is
    // process-wide, and time is counted in seconds.
    static StageReport BeginConfigured(LogFile& log);

    // For a stage of the fixed chain, begun at its entry: the switch of the log stands in the run's settings,
    // and time is counted in milliseconds.
    static StageReport BeginFixed(LogFile& log, int32_t& dumpCounter, const FixedSettings& settings);

    // Takes the end tick. If logging is on: writes the stage's line, then its parameter lines.
    //
    // stageLine   takes hour, minute, second and the elapsed time, as
    //             "#### %02d:%02d:%02d \t: Gamma Curve ( %.03lf sec )\r\n" in the configured chain and
    //             "#### %02d:%02d:%02d \t: Gamma Curve ( %d ms )\r\n" in the fixed one
    void Log(std::wstring_view stageLine, std::initializer_list<LogLine> parameterLines) const;

private:
    enum class TimeUnit { Seconds, Milliseconds };

    StageReport(const RunDumps& dumps, LogFile& log, bool isLogging, TimeUnit timeUnit);

    uint32_t startTick_;
    LogFile& log_;
    bool isLogging_;
    TimeUnit timeUnit_;
};

}  // namespace vastrelline
