#include "operators/curves/LookupTable.h"

#include <algorithm>
#include <cstddef>

#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

// Eight pixels are read before the first is written: for all the compiler knows, they could be table entries.
void LookUp(const uint16_t* indices, size_t count, const uint16_t* table, uint16_t* pixels) {
    constexpr size_t kStep = 8;
    size_t i = 0;
    for (; i + kStep <= count; i += kStep) {
        uint16_t entries[kStep];
#pragma GCC unroll 8
        for (size_t k = 0; k < kStep; ++k) entries[k] = table[indices[i + k]];
#pragma GCC unroll 8
        for (size_t k = 0; k < kStep; ++k) pixels[i + k] = entries[k];
    }
    for (; i < count; ++i) pixels[i] = table[indices[i]];
}

}  // namespace

void ApplyLookupTable(uint16_t* pixels, int32_t width, int32_t height, std::span<const uint16_t> table) {
    if (table.empty()) return;
    const FrameView<uint16_t> frame(pixels, width, height);
    constexpr size_t kBlock = 512;
    const auto last = static_cast<uint16_t>(std::min<size_t>(table.size() - 1, kTopPixel));
    // The compiler clamps whole vectors of pixels to the table. Vectors of table entries, gathered, take
    // longer than single ones.
    uint16_t indices[kBlock];
    for (size_t start = 0; start < frame.Count(); start += kBlock) {
        uint16_t* block = frame.begin() + start;
        const size_t count = std::min(frame.Count() - start, kBlock);
        for (size_t i = 0; i < count; ++i) indices[i] = block[i] < last ? block[i] : last;
        LookUp(indices, count, table.data(), block);
    }
}

}  // namespace vastrelline
