// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "pixels/Truncate.h"
#include "stages/pyramid/BandKernels.h"

namespace vastrelline {

namespace {

void Subtract(uint16_t* level, const uint16_t* coarse, size_t count) {
    for (size_t i = 0; i < count; ++i) level[i] = LowBits16(level[i] - coarse[i]);
}

BandRange FindRange(const int16_t* band, size_t count, BandRange start) {
    BandRange range = start;
    for (size_t i = 0; i < count; ++i) {
        range.min = std::min<int32_t>(range.min, band[i]);
        range.max = std::max<int32_t>(range.max, band[i]);
    }
    return range;
}

std::vector<uint32_t> CountValues(const int16_t* band, size_t count, BandRange range) {
    std::vector<uint32_t> bins(static_cast<size_t>(range.max - range.min) + 1);
    for (size_t i = 0; i < count; ++i) ++bins[static_cast<size_t>(band[i] - range.min)];
    return bins;
}

void Remap(int16_t* band, size_t count, const int16_t* responses) {
    for (size_t i = 0; i < count; ++i) band[i] = responses[band[i]];
}

void Add(const uint16_t* coarse, const int16_t* band, size_t count, int32_t maxValue, uint16_t* sums) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t sum = coarse[i] + band[i];
        sums[i] = LowBits16(std::max(std::min(sum, maxValue), 0));
    }
}

}  // namespace

const BandKernels kBandKernelsScalar = {Subtract, FindRange, CountValues, Remap, Add};

}  // namespace vastrelline
