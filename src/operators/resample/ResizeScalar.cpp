// SPDX-License-Identifier: Apache-2.0
#include <cstddef>

#include "operators/resample/Resize.h"
#include "operators/resample/ResizeSchedule.h"
#include "pixels/Truncate.h"

namespace vastrelline {

void ResizeFrameScalar(const ResizeCall& call) {
    const auto at = [&](int32_t x, int32_t y) {
        return call.source[static_cast<size_t>(y) * static_cast<size_t>(call.width) + static_cast<size_t>(x)];
    };
    for (int32_t y = 0; y < call.resultHeight; ++y) {
        const auto [iy, ay] = SourcePlaceOf(y, call.scale);
        for (int32_t x = 0; x < call.resultWidth; ++x) {
            const auto [ix, ax] = SourcePlaceOf(x, call.scale);
            uint16_t& result = call.result[static_cast<size_t>(y) * static_cast<size_t>(call.resultWidth) +
                                           static_cast<size_t>(x)];
            if (iy < 0 || ix < 0 || iy > call.height - 1 || ix > call.width - 1) {
                result = 0;
            } else if (iy == call.height - 1 || ix == call.width - 1) {
                result = at(ix, iy);
            } else {
                const double sum = (1 - ax) * (1 - ay) * at(ix, iy) + ax * (1 - ay) * at(ix + 1, iy) +
                                   ax * ay * at(ix + 1, iy + 1) + (1 - ax) * ay * at(ix, iy + 1);
                result = LowBits16(TruncateToInt32(sum));
            }
        }
    }
}

}  // namespace vastrelline
