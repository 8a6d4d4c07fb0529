// SPDX-License-Identifier: Apache-2.0

// The local deviation of a small frame and the blend by it with weights from anywhere: every form of both
// against the definition. The input's head is the frame, its tail picks size and weights, so that a change of
// these leaves the pixels where they are.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "stages/adaptive_smoothing/LocalDeviation.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace vastrelline;
    constexpr uint16_t kLargestWidth = 210;  // a strip is 192 columns wide
    constexpr uint8_t kLargestHeight = 24;
    InputTail tail(data, size);
    const int32_t width = tail.Take<uint8_t>() % kLargestWidth + 1;
    const int32_t height = tail.Take<uint8_t>() % kLargestHeight + 1;
    // Up to 2^14 either way; those of the smoothing lie between 0 and 1.
    const double scale = tail.Take<uint8_t>() % 2 == 0 ? 1.0 / 32768 : 0.5;
    std::vector<double> weights(kTopDeviationLevel + 1);
    const int32_t slope = tail.Take<int16_t>();
    const int32_t offset = tail.Take<int16_t>();
    for (size_t level = 0; level < weights.size(); ++level) {
        const auto step = static_cast<int32_t>(level % 64);
        weights[level] = static_cast<int16_t>(offset + step * slope) * scale;
    }
    const std::vector<uint16_t> pixels = tail.TakeFrame(width, height);

    RequireEqualForms(DeviationVariants(), [&](const DeviationVariant& form) {
        Guarded<uint16_t> levels(pixels.size());
        form.run->quantise({pixels.data(), width, height, kDeviationRadius, levels.Data()});
        return levels;
    });
    const std::vector<uint16_t> smooth(pixels.rbegin(), pixels.rend());
    std::vector<uint16_t> levels = pixels;
    for (uint16_t& level : levels) level %= kTopDeviationLevel + 1;
    RequireEqualForms(DeviationVariants(), [&](const DeviationVariant& form) {
        Guarded<uint16_t> blended(pixels);
        form.run->blend(
            {blended.Data(), smooth.data(), levels.data(), weights, static_cast<int64_t>(pixels.size())});
        return blended;
    });
    return 0;
}
