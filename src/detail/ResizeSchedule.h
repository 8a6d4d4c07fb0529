#pragma once

#include <cmath>
#include <cstdint>

#include "detail/Resize.h"
#include "image/Truncate.h"

namespace vastrelline {

// Where a row or column of the result lies in the source.
struct SourcePlace {
    int32_t index;
    double rest;
};

inline SourcePlace SourcePlaceOf(int32_t position, double scale) {
    const double place = position / scale;
    const int32_t index = TruncateToInt32(std::floor(place));
    return {index, place - index};
}

// The loops over a row that halve and double a frame, for one instruction set. Those that double write twice
// `width` pixels; all but repeatRow leave out the last two.
struct ResizeKernels {
    void (*halveRow)(const uint16_t* source, int32_t count, uint16_t* result);
    void (*doubleRow)(const uint16_t* source, int32_t width, uint16_t* result);
    void (*doubleBetweenRows)(const uint16_t* above, const uint16_t* below, int32_t width, uint16_t* result);
    void (*repeatRow)(const uint16_t* source, int32_t width, uint16_t* result);
};

// The resampling with these loops. Scales other than 0.5 and 2 compute as the definition does, but work out
// the place of each column only once.
void RunResizeSchedule(const ResizeCall& call, const ResizeKernels& kernels);

}  // namespace vastrelline
