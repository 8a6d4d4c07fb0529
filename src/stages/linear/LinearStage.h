#pragma once

#include <cstdint>

#include "report/LogFile.h"

namespace vastrelline {

// The linear stage of the configured chain: maps the frame through a straight ramp, in place, and writes the
// curve file and its log lines as the run's switches ask. It writes no dump and does not step the dump
// number: its curve file carries the number of the next dump.
//
// stageNumber   the stage's position in the list, which names its keys
void RunLinearStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                    int32_t stageNumber);

}  // namespace vastrelline
