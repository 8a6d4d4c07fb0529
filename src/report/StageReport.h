#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "report/LogFile.h"

namespace vastrelline {

// What every stage of the configured chain does around its core in the same way: it takes the start tick,
// dumps the frame and writes its lines to the log. Made when the stage has read its keys; Dump
// and Log come in the order of each stage.
class ConfiguredStageReport {
public:
    ConfiguredStageReport();  // takes the start tick

    // If image saving is on: dumps the frame under the process-wide dump number and steps that number.
    //
    // nameFormat   takes the number, as "%02d_Result_Gamma.raw"
    static void Dump(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width, int32_t height);

    // The same without stepping: the next dump shares the number.
    static void DumpBeside(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width,
                           int32_t height);

    // Takes the end tick. If logging is on: writes the stage's line, then its parameter lines.
    //
    // stageLine   takes hour, minute, second and the elapsed seconds, as
    //             "#### %02d:%02d:%02d \t: Gamma Curve ( %.03lf sec )\r\n"
    void Log(LogFile& log, std::wstring_view stageLine,
             std::initializer_list<std::wstring> parameterLines) const;

private:
    uint32_t startTick_;
};

// The same for the stages of the fixed chain: the dump number belongs to the run, the switch of the log
// stands in the run's settings, and time is counted in milliseconds. Made at the entry of the stage.
class FixedStageReport {
public:
    FixedStageReport();  // takes the start tick

    // If image saving is on: dumps the frame under the run's dump number and steps that number.
    static void Dump(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width, int32_t height,
                     int32_t& dumpCounter);

    // The same without stepping: the next dump shares the number.
    static void DumpBeside(std::wstring_view nameFormat, const uint16_t* pixels, int32_t width,
                           int32_t height, int32_t dumpCounter);

    // Takes the end tick. If logging is on: writes the stage's line, then its parameter lines.
    //
    // saveLog     the run's switch; 0 writes nothing
    // stageLine   takes hour, minute, second and the elapsed milliseconds, as
    //             "#### %02d:%02d:%02d \t: Gamma Curve ( %d ms )\r\n"
    void Log(LogFile& log, int32_t saveLog, std::wstring_view stageLine,
             std::initializer_list<std::wstring> parameterLines) const;

private:
    uint32_t startTick_;
};

}  // namespace vastrelline
