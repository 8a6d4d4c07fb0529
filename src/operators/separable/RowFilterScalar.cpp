// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstddef>

#include "operators/separable/RowFilter.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

void FilterRowsScalar(const RowFilterCall& call) {
    ScratchVector<uint16_t> pixels(static_cast<size_t>(call.width) * static_cast<size_t>(call.height));
    const FrameView<uint16_t> frame(pixels.data(), call.width, call.height);
    for (int32_t y = 0; y < call.height; ++y) std::copy_n(call.sourceRow(y), call.width, frame.Row(y));
    FilterFrameScalar({pixels.data(), call.width, call.height, call.maxValue, call.kernel, call.edges});
    for (int32_t y = 0; y < call.height; ++y) call.takeRow(y, frame.Row(y));
}

}  // namespace vastrelline
