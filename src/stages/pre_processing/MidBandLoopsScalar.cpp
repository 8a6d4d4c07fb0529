// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "pixels/ClampPixel.h"
#include "pixels/Truncate.h"
#include "stages/pre_processing/MidBandLoops.h"

namespace vastrelline {

namespace {

uint16_t FindFloor(const uint16_t* pixels, size_t count, uint16_t start) {
    uint16_t floor = start;
    for (size_t i = 0; i < count; ++i)
        if (pixels[i] > 0) floor = std::min(floor, pixels[i]);
    return floor;
}

void Subtract(const uint16_t* first, const uint16_t* base, size_t count, uint16_t* detail) {
    for (size_t i = 0; i < count; ++i) detail[i] = LowBits16(first[i] - base[i]);
}

void Boost(uint16_t* pixels, const uint16_t* smoothed, size_t count, int32_t maxValue, double gain) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t difference = pixels[i] - smoothed[i];
        pixels[i] = ClampToPixel(TruncateToInt32(smoothed[i] + difference * gain), maxValue);
    }
}

void AddFine(uint16_t* pixels, const uint16_t* smoothed, const uint16_t* boosted, size_t count,
             int32_t maxValue) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t fine = pixels[i] - smoothed[i];
        pixels[i] = ClampToPixel(boosted[i] + fine, maxValue);
    }
}

void Finish(const uint16_t* base, uint16_t* detail, size_t count, int32_t maxValue, uint16_t floor) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t sum = base[i] + detail[i];
        detail[i] = std::max(sum > maxValue ? base[i] : LowBits16(sum), floor);
    }
}

}  // namespace

const MidBandLoops kMidBandLoopsScalar = {FindFloor, Subtract, Boost, AddFine, Finish};

}  // namespace vastrelline
