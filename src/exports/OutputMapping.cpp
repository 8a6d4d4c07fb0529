// SPDX-License-Identifier: Apache-2.0
#include "exports/OutputMapping.h"

#include <array>

#include "operators/curves/LookupTable.h"
#include "pixels/Truncate.h"

namespace vastrelline {

void ApplyOutputMapping(uint16_t* pixels, int32_t width, int32_t height) {
    constexpr int32_t kWindowWidth = 10000;
    constexpr int32_t kLevel = 2000;
    constexpr int32_t kTopValue = 4095;
    constexpr int32_t kHalfWidth = kWindowWidth / 2;
    constexpr int32_t kBottom = kLevel - kHalfWidth;
    // The window's ends lie outside the table, so every entry is on the ramp.
    static_assert(kBottom < 0 && kTopValue < kLevel + kHalfWidth);

    std::array<uint16_t, kTopValue + 1> table{};
    for (int32_t i = 0; i <= kTopValue; ++i) {
        const double ramp = (i - kBottom) / static_cast<double>(kWindowWidth) * kTopValue;
        table[static_cast<size_t>(i)] = LowBits16(TruncateToInt32(ramp));
    }
    ApplyLookupTable(pixels, width, height, table);
}

}  // namespace vastrelline
