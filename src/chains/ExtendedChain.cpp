// SPDX-License-Identifier: Apache-2.0
#include "chains/ExtendedChain.h"

#include "chains/StageListDriver.h"

namespace vastrelline {

ReturnCode RunExtendedChain(const DriverCall& call, const std::wstring& sensorFolder, int32_t sensorMode) {
    return DriveStageList(call,
                          {.stages = AllStages(), .sensorFolder = sensorFolder, .sensorMode = sensorMode});
}

}  // namespace vastrelline
