// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "chains/DriverCall.h"
#include "chains/ReturnCode.h"

namespace vastrelline {

// Driver of the extended chain: the configured chain for a caller that names the sensor itself and may hand
// over a frame of twice the resolution. Its lists may hold the HDR stage.
//
// sensorFolder   the folder of the sensor's profile; empty: as the plain sensor profile names it
// sensorMode     2: a frame of twice the resolution; any other value has no effect
// Returns        as RunConfiguredChain
ReturnCode RunExtendedChain(const DriverCall& call, const std::wstring& sensorFolder, int32_t sensorMode);

}  // namespace vastrelline
