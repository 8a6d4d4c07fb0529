// SPDX-License-Identifier: Apache-2.0

// The resampling of a small frame at a scale from anywhere: every form against the definition. The input's
// head is the frame, its tail picks size and scale, so that a change of these leaves the pixels where they
// are.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/resample/Resize.h"
#include "pixels/Truncate.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

// Half and double have loops of their own, thirds of pixels are whole places again.
double TakeScale(InputTail& tail) {
    constexpr double kLargestScale = 6.0;
    const uint8_t choice = tail.Take<uint8_t>();
    const double scale = tail.Take<double>();
    switch (choice % 4) {
        case 0:
            return choice / 4 % 7 + 1;
        case 1:
            return 1.0 / (choice / 4 % 9 + 1);
        case 2:
            return choice / 4 * 0.07 + 0.03;
        default:
            return scale > 0 && scale < kLargestScale ? scale : 1.0;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr uint8_t kLargestSide = 70;
    InputTail tail(data, size);
    const int32_t width = tail.Take<uint8_t>() % kLargestSide + 1;
    const int32_t height = tail.Take<uint8_t>() % kLargestSide + 1;
    const double scale = TakeScale(tail);
    const int32_t resultWidth = TruncateToInt32(width * scale);
    const int32_t resultHeight = TruncateToInt32(height * scale);
    if (resultWidth < 1 || resultHeight < 1) return 0;
    const std::vector<uint16_t> pixels = tail.TakeFrame(width, height);
    RequireEqualForms(ResizeVariants(), [&](const ResizeVariant& form) {
        Guarded<uint16_t> result(static_cast<size_t>(resultWidth) * static_cast<size_t>(resultHeight));
        form.run({pixels.data(), width, height, scale, result.Data(), resultWidth, resultHeight});
        return result;
    });
    return 0;
}
