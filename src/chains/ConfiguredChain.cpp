// SPDX-License-Identifier: Apache-2.0
#include "chains/ConfiguredChain.h"

#include "chains/StageListDriver.h"

namespace vastrelline {

ReturnCode RunConfiguredChain(const DriverCall& call, const SensorGeometry* geometry) {
    return DriveStageList(call, {.stages = ConfiguredStages(), .geometry = geometry});
}

}  // namespace vastrelline
