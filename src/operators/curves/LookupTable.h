// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace vastrelline {

// Replaces every pixel by the table entry at its value, in place. A pixel beyond the table takes the last
// entry; an empty table leaves the frame as it is.
void ApplyLookupTable(uint16_t* pixels, int32_t width, int32_t height, std::span<const uint16_t> table);

}  // namespace vastrelline
