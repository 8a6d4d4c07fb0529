#pragma once

#include <cstdint>
#include <span>

#include "config/StageId.h"
#include "report/LogFile.h"

namespace vastrelline {

// What a stage of the configured chain works on.
struct StageCall {
    uint16_t* frame;  // width * height pixels, changed in place
    int32_t width;
    int32_t height;
    int32_t pixelCount;  // width * height
    int32_t maxValue;    // the largest pixel value that a stage may write
    LogFile& log;
    int32_t position;  // in the stage list, from 0; names the stage's keys
};

// One row of the stage table.
struct StageEntry {
    StageId id;
    void (*run)(const StageCall& call);
};

// The stages that a stage list of the configured chain may name: all but the HDR stage.
std::span<const StageEntry> ConfiguredStages();

// The stages that lists of the low-exposure and the extended chain may name.
std::span<const StageEntry> AllStages();

// Runs the stage of a number. A number that is not in the table is passed over.
void RunStage(std::span<const StageEntry> stages, int32_t stageNumber, const StageCall& call);

}  // namespace vastrelline
