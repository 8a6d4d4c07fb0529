// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <cstddef>

#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "pixels/Truncate.h"
#include "stages/adaptive_smoothing/BandMean.h"
#include "stages/adaptive_smoothing/LocalDeviation.h"

namespace vastrelline {

namespace {

// In 32 signed bits, which a pixel above 46340 leaves.
double SquareOf(uint16_t pixel) { return static_cast<int32_t>(uint32_t{pixel} * pixel); }

}  // namespace

void LocalDeviation(const uint16_t* image, const double* squares, double* output, int32_t width,
                    int32_t height, int32_t radius, int32_t top, int32_t bottom) {
    const FrameView<double> deviations(output, width, height);
    ScratchVector<double> squareMeans(deviations.Count(), 0.0);
    ScratchVector<double> means(deviations.Count(), 0.0);
    BandMeanDoubles(squares, squareMeans.data(), width, height, top, bottom, radius);
    BandMeanPixels(image, means.data(), width, height, top, bottom, radius);
    const FrameView<const double> squareMeanFrame(squareMeans.data(), width, height);
    const FrameView<const double> meanFrame(means.data(), width, height);
    for (int32_t y = top; y <= bottom; ++y) {
        for (int32_t x = radius; x <= width - radius - 1; ++x) {
            const double mean = meanFrame.Row(y)[x];
            const double variance = squareMeanFrame.Row(y)[x] - mean * mean;
            deviations.Row(y)[x] = variance > 0 ? std::sqrt(variance) : 0.0;
        }
    }
}

void QuantiseDeviationScalar(const DeviationCall& call) {
    const FrameView<const uint16_t> image(call.image, call.width, call.height);
    ScratchVector<double> deviations(image.Count(), 0.0);
    ScratchVector<double> squares(image.Count(), 0.0);
    std::transform(image.begin(), image.end(), squares.begin(), SquareOf);
    LocalDeviation(call.image, squares.data(), deviations.data(), call.width, call.height, call.radius,
                   call.radius, call.height - call.radius - 1);
    double largest = -1000000.0;
    double smallest = 1000000.0;
    for (const double deviation : deviations) {
        largest = std::max(largest, deviation);
        smallest = std::min(smallest, deviation);
    }
    const double range = largest - smallest;
    if (!(range > 0)) return;
    for (size_t i = 0; i < deviations.size(); ++i) {
        const double share = (deviations[i] - smallest) / range;
        call.levels[i] = LowBits16(TruncateToInt32(std::max(share, 0.0) * kTopDeviationLevel));
    }
}

void BlendByLevelScalar(const BlendCall& call) {
    for (int64_t i = 0; i < call.count; ++i) {
        const double weight = call.weights[call.levels[i]];
        const double mixed = call.smooth[i] * (1.0 - weight) + call.pixels[i] * weight;
        call.pixels[i] = LowBits16(TruncateToInt32(mixed));
    }
}

}  // namespace vastrelline
