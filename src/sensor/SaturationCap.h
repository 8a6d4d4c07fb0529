// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// Brings saturated pixels down to the brightest unsaturated one, in place: no pixel stays above the largest
// pixel that lies strictly below `saturationValue`. A frame without a pixel below it becomes all 0.
void CapSaturation(uint16_t* pixels, int32_t width, int32_t height, int32_t saturationValue);

// A form of the cap.
using SaturationCapVariant = Variant<void (*)(uint16_t* pixels, size_t count, int32_t saturationValue)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const SaturationCapVariant> SaturationCapVariants();

}  // namespace vastrelline
