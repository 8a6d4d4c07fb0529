// SPDX-License-Identifier: Apache-2.0
#include "operators/curves/LookupTable.h"

#include <algorithm>
#include <cstddef>

#include "operators/histogram/PixelRange.h"
#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

// Eight pixels are read before the first is written: for all the compiler knows, they could be table entries.
void LookUp(uint16_t* pixels, size_t count, const uint16_t* table) {
    constexpr size_t kStep = 8;
    size_t i = 0;
    for (; i + kStep <= count; i += kStep) {
        uint16_t entries[kStep];
#pragma GCC unroll 8
        for (size_t k = 0; k < kStep; ++k) entries[k] = table[pixels[i + k]];
#pragma GCC unroll 8
        for (size_t k = 0; k < kStep; ++k) pixels[i + k] = entries[k];
    }
    for (; i < count; ++i) pixels[i] = table[pixels[i]];
}

}  // namespace

void ApplyLookupTable(uint16_t* pixels, int32_t width, int32_t height, std::span<const uint16_t> table) {
    if (table.empty()) return;
    const FrameView<uint16_t> frame(pixels, width, height);
    constexpr size_t kBlock = 2048;
    const auto last = static_cast<uint16_t>(std::min<size_t>(table.size() - 1, kTopPixel));
    // To see that no pixel lies beyond the table takes less than to clamp them all. Vectors of table entries,
    // gathered, take longer than single ones.
    for (size_t start = 0; start < frame.Count(); start += kBlock) {
        uint16_t* block = frame.begin() + start;
        const size_t count = std::min(frame.Count() - start, kBlock);
        if (FindPixelRange(block, static_cast<int32_t>(count), 1).largest > last) {
            for (size_t i = 0; i < count; ++i) block[i] = block[i] < last ? block[i] : last;
        }
        LookUp(block, count, table.data());
    }
}

}  // namespace vastrelline
