// SPDX-License-Identifier: Apache-2.0
#include <cstddef>

#include "operators/separable/HalvingFilter.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

void FilterAndHalveScalar(const HalvingCall& call) {
    const auto width = static_cast<size_t>(call.width);
    ScratchVector<uint16_t> filtered(call.source, call.source + width * static_cast<size_t>(call.height));
    FilterFrameScalar({filtered.data(), call.width, call.height, call.maxValue, call.kernel, call.edges});
    uint16_t* result = call.result;
    for (int32_t y = 0; y < call.height / 2; ++y) {
        for (size_t x = 0; x < width / 2; ++x)
            *result++ = filtered[2 * static_cast<size_t>(y) * width + 2 * x];
    }
}

}  // namespace vastrelline
