// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_processing/PreProcessingStage.h"

#include "config/ConfiguredState.h"
#include "report/RunDumps.h"
#include "stages/pre_processing/PreProcessFrame.h"
#include "stages/pre_processing/PreProcessingParams.h"

namespace vastrelline {

void PreProcessingStage(uint16_t* image, int32_t maxValue, int32_t width, int32_t height,
                        LogFile& /*logFile*/, int32_t position) {
    const ConfiguredState& state = SharedConfiguredState();
    const PreProcessingParams params = ReadPreProcessingParams(state.IniPath, state.SectionName, position);
    PreProcessFrame(image, width, height, maxValue, params);
    RunDumps::Configured().Dump(L"%02d_Preprocessing.raw", image, width, height);
}

}  // namespace vastrelline
