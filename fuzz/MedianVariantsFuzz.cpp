// SPDX-License-Identifier: Apache-2.0

// The median on a small frame with a window and rows from anywhere: every form against the plain one. The
// input's head is the frame, its tail picks size, window and rows, so that a change of these leaves the
// pixels where they are.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/median/MedianFilter.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace vastrelline;
    constexpr uint8_t kLargestWidth = 72;
    constexpr uint8_t kLargestHeight = 20;
    constexpr uint8_t kLargestWindow = 18;
    InputTail tail(data, size);
    const int32_t width = tail.Take<uint8_t>() % (kLargestWidth + 1);
    const int32_t height = tail.Take<uint8_t>() % (kLargestHeight + 1);
    const int32_t windowWidth = tail.Take<uint8_t>() % kLargestWindow + 1;
    const int32_t otherHeight = tail.Take<uint8_t>() % kLargestWindow + 1;
    const int32_t firstRow = tail.Take<int8_t>();
    const int32_t lastRow = tail.Take<int8_t>();
    const bool isSquare = tail.Take<uint8_t>() % 2 == 0;  // most networks are for squares
    const int32_t windowHeight = isSquare ? windowWidth : otherHeight;
    const std::vector<uint16_t> pixels = tail.TakeFrame(width, height);
    RequireEqualForms(MedianVariants(), [&](const MedianVariant& form) {
        Guarded<uint16_t> medians(pixels.size());
        FilterMedianWith(form, {pixels.data(), medians.Data(), width, height, windowWidth, windowHeight,
                                firstRow, lastRow});
        return medians;
    });
    return 0;
}
