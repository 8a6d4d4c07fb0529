#include "detail/ResizeSchedule.h"

#include <cstddef>
#include <vector>

#include "image/Truncate.h"

namespace vastrelline {

namespace {

const uint16_t* SourceRow(const ResizeCall& call, int32_t y) {
    return call.source + static_cast<size_t>(y) * static_cast<size_t>(call.width);
}

uint16_t* ResultRow(const ResizeCall& call, int32_t y) {
    return call.result + static_cast<size_t>(y) * static_cast<size_t>(call.resultWidth);
}

void Halve(const ResizeCall& call, const ResizeKernels& kernels) {
    for (int32_t y = 0; y < call.resultHeight; ++y) {
        kernels.halveRow(SourceRow(call, 2 * y), call.resultWidth, ResultRow(call, y));
    }
}

void Double(const ResizeCall& call, const ResizeKernels& kernels) {
    const int32_t last = call.width - 1;
    for (int32_t y = 0; y < call.resultHeight; ++y) {
        const uint16_t* source = SourceRow(call, y / 2);
        uint16_t* result = ResultRow(call, y);
        if (y / 2 == call.height - 1) {
            kernels.repeatRow(source, call.width, result);
            continue;
        }
        if (y % 2 == 0) {
            kernels.doubleRow(source, call.width, result);
        } else {
            kernels.doubleBetweenRows(source, SourceRow(call, y / 2 + 1), call.width, result);
        }
        // The last column takes no part in any interpolation.
        uint16_t* end = result + call.resultWidth;
        end[-2] = source[last];
        end[-1] = source[last];
    }
}

// One row of the result between two source rows, in the definition's very operations.
void InterpolateRow(const ResizeCall& call, SourcePlace row, const std::vector<SourcePlace>& columns,
                    uint16_t* result) {
    const uint16_t* above = SourceRow(call, row.index);
    const uint16_t* below = SourceRow(call, row.index + 1);
    const double ay = row.rest;
    for (size_t x = 0; x < columns.size(); ++x) {
        const auto [ix, ax] = columns[x];
        if (ix < 0 || ix > call.width - 1) {
            result[x] = 0;
        } else if (ix == call.width - 1) {
            result[x] = above[ix];
        } else {
            const double sum = (1 - ax) * (1 - ay) * above[ix] + ax * (1 - ay) * above[ix + 1] +
                               ax * ay * below[ix + 1] + (1 - ax) * ay * below[ix];
            result[x] = LowBits16(TruncateToInt32(sum));
        }
    }
}

void Interpolate(const ResizeCall& call) {
    std::vector<SourcePlace> columns(static_cast<size_t>(call.resultWidth));
    for (int32_t x = 0; x < call.resultWidth; ++x)
        columns[static_cast<size_t>(x)] = SourcePlaceOf(x, call.scale);
    for (int32_t y = 0; y < call.resultHeight; ++y) {
        const SourcePlace row = SourcePlaceOf(y, call.scale);
        uint16_t* result = ResultRow(call, y);
        if (row.index >= 0 && row.index < call.height - 1) {
            InterpolateRow(call, row, columns, result);
            continue;
        }
        const bool isOutside = row.index != call.height - 1;
        for (size_t x = 0; x < columns.size(); ++x) {
            const int32_t ix = columns[x].index;
            const bool isZero = isOutside || ix < 0 || ix > call.width - 1;
            result[x] = isZero ? uint16_t{0} : SourceRow(call, row.index)[ix];
        }
    }
}

}  // namespace

void RunResizeSchedule(const ResizeCall& call, const ResizeKernels& kernels) {
    if (call.scale == 0.5) {
        Halve(call, kernels);
    } else if (call.scale == 2.0) {
        Double(call, kernels);
    } else {
        Interpolate(call);
    }
}

}  // namespace vastrelline
