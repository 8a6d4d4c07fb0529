// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "config/DoseRecord.h"

namespace vastrelline {

// Decides from a histogram whether the exposure was too low, and fills the record.
//
// image, width, height, maxValue   without effect
// histogram                        one bin per level; bins that do not exist count as empty
// threshold                        levels below it are the object
// lowThreshold                     strictly above this share of object pixels below level 100 the exposure
//                                  was low
// Returns                          LowExposure of the record
int32_t ClassifyExposure(const uint16_t* image, int32_t width, int32_t height,
                         std::span<const uint32_t> histogram, int32_t threshold, double lowThreshold,
                         int32_t maxValue, DoseRecord& record);

}  // namespace vastrelline
