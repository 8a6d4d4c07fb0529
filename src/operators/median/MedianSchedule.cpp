// SPDX-License-Identifier: Apache-2.0
#include "operators/median/MedianSchedule.h"

#include <algorithm>

#include "pixels/ScratchVector.h"

namespace vastrelline {

void RunMedianSchedule(const MedianCall& call, std::span<const MedianKernel> kernels, size_t lanes,
                       size_t scratchPixels) {
    const auto isForCall = [&](const MedianKernel& kernel) {
        return kernel.windowWidth == call.windowWidth && kernel.windowHeight == call.windowHeight;
    };
    const auto kernel = std::find_if(kernels.begin(), kernels.end(), isForCall);
    const int32_t columns = call.width - 2 * (call.windowWidth / 2);
    const bool isLargeEnough = call.firstRow < call.lastRow && columns >= static_cast<int32_t>(lanes);
    if (kernel == kernels.end() || !isLargeEnough) {
        FilterMedianCounted(call);
        return;
    }
    ScratchVector<uint16_t> scratch(scratchPixels);
    kernel->run(call, scratch.data());
}

}  // namespace vastrelline
