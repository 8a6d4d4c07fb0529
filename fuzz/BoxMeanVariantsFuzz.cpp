// SPDX-License-Identifier: Apache-2.0

// The box mean on a small frame with a radius from anywhere, into another frame and in place: every form
// against the definition. The input's head is the frame, its tail picks size and radius, so that a change of
// these leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "operators/box_mean/BoxMean.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace vastrelline;
    constexpr uint8_t kLargestWidth = 140;
    constexpr uint8_t kLargestHeight = 24;
    InputTail tail(data, size);
    const int32_t width = tail.Take<uint8_t>() % kLargestWidth + 1;
    const int32_t height = tail.Take<uint8_t>() % kLargestHeight + 1;
    // Radii about the frame's size, those where the sums grow out of their lanes, and all others.
    const int32_t radii[] = {tail.Take<uint8_t>() % 32 + 1, tail.Take<uint16_t>() + 1,
                             std::max(tail.Take<int32_t>() & std::numeric_limits<int32_t>::max(), 1)};
    const int32_t radius = radii[tail.Take<uint8_t>() % 3];
    const std::vector<uint16_t> pixels = tail.TakeFrame(width, height);
    RequireEqualForms(BoxMeanVariants(), [&](const BoxMeanVariant& form) {
        Guarded<uint16_t> means(pixels.size());
        form.run({pixels.data(), means.Data(), width, height, radius});
        return means;
    });
    RequireEqualForms(BoxMeanVariants(), [&](const BoxMeanVariant& form) {
        Guarded<uint16_t> frame(pixels);
        form.run({frame.Data(), frame.Data(), width, height, radius});
        return frame;
    });
    return 0;
}
