// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "keys/KeyTable.h"

namespace vastrelline {

// The parts of the table that scripts/make-docs.py writes, each a file of its own. Ask KeyTable.h for them.

std::span<const Stage> StageRows1To4();
std::span<const Stage> StageRows5To8();
std::span<const Stage> StageRows9To13();
const Settings& CommonRows();
const Settings& FixedRows();
const Settings& SensorRows();
std::span<const FixedStep> FixedStepRows();
std::span<const int32_t> LowSequenceRows();

}  // namespace vastrelline
