// SPDX-License-Identifier: Apache-2.0
#include "chains/TonedCopy.h"

#include <algorithm>
#include <cstddef>
#include <functional>

namespace vastrelline {

namespace {

bool AreApart(const uint16_t* first, const uint16_t* second, size_t count) {
    const std::less_equal<const uint16_t*> isUpTo;
    return isUpTo(first + count, second) || isUpTo(second + count, first);
}

}  // namespace

void CopyTonedInput(const DriverCall& call, std::optional<TonedFrame>& output) {
    const FrameView<uint16_t> pixels(call.output, call.width, call.height);
    if (call.tonedInput != nullptr && AreApart(call.input, call.output, pixels.Count())) {
        output.emplace(*call.tonedInput, pixels);
        return;
    }
    if (call.tonedInput != nullptr) call.tonedInput->Read();
    std::copy_n(call.input, pixels.Count(), call.output);
    output.emplace(pixels);
}

}  // namespace vastrelline
