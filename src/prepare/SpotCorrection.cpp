#include "prepare/SpotCorrection.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "image/AllocZeroed.h"
#include "image/FrameView.h"
#include "image/PixelRange.h"
#include "image/Truncate.h"

namespace vastrelline {

namespace {

// The exponent of a pixel, for each mean of the inverse around it up to `top`. A neighbourhood darker than
// half has an exponent below 1.
std::vector<float> BuildExponents(int32_t peak, int32_t top) {
    constexpr float kBase = 1.5F;
    const int32_t half = peak / 2;
    std::vector<float> exponents(static_cast<size_t>(top) + 1);
    for (int32_t mean = 0; mean <= top; ++mean) {
        const float e = static_cast<float>(half - mean) / static_cast<float>(half);
        exponents[static_cast<size_t>(mean)] = std::pow(kBase, e);
    }
    return exponents;
}

}  // namespace

void InvertToBuffer(const uint16_t* frame, uint16_t* inverse, uint16_t peak, size_t count) {
    for (size_t i = 0; i < count; ++i) inverse[i] = LowBits16(peak - frame[i]);
}

void SquareBoxMean(uint16_t* output, const uint16_t* input, int32_t maskSize, int32_t width, int32_t height) {
    const FrameView<const uint16_t> source(input, width, height);
    const FrameView<uint16_t> mean(output, width, height);
    std::copy(source.begin(), source.end(), mean.begin());
    const int32_t r = maskSize / 2;
    const int32_t first = r + 1;
    const int32_t lastRow = height - r - 1;
    const int32_t lastColumn = width - r - 1;
    if (maskSize < 1 || first > lastRow || first > lastColumn) return;

    // Whole numbers: sums that move with the square are the sums of the square.
    const uint64_t divisor = static_cast<uint64_t>(maskSize) * static_cast<uint64_t>(maskSize);
    std::vector<uint64_t> columnSums(static_cast<size_t>(width));
    for (int32_t y = first - r; y < first + r; ++y)
        for (int32_t x = 0; x < width; ++x) columnSums[static_cast<size_t>(x)] += source.Row(y)[x];
    for (int32_t y = first; y <= lastRow; ++y) {
        const uint16_t* entering = source.Row(y + r);
        for (int32_t x = 0; x < width; ++x) columnSums[static_cast<size_t>(x)] += entering[x];
        uint64_t sum = 0;
        for (int32_t x = first - r; x < first + r; ++x) sum += columnSums[static_cast<size_t>(x)];
        uint16_t* row = mean.Row(y);
        for (int32_t x = first; x <= lastColumn; ++x) {
            sum += columnSums[static_cast<size_t>(x) + static_cast<size_t>(r)];
            row[x] = static_cast<uint16_t>(sum / divisor);
            sum -= columnSums[static_cast<size_t>(x - r)];
        }
        const uint16_t* leaving = source.Row(y - r);
        for (int32_t x = 0; x < width; ++x) columnSums[static_cast<size_t>(x)] -= leaving[x];
    }
}

void ApplySpotCorrection(uint16_t* frame, int32_t maskSize, int32_t width, int32_t height,
                         float /*strength*/) {
    const FrameView<uint16_t> pixels(frame, width, height);
    const int32_t peak = MaxPixel(frame, width, height);
    // Half of them would be 0, and so would be the divisor of every exponent.
    if (peak <= 1) return;
    std::vector<uint16_t> inverse = AllocZeroed<uint16_t>(width, height);
    std::vector<uint16_t> localMean = AllocZeroed<uint16_t>(width, height);
    InvertToBuffer(frame, inverse.data(), static_cast<uint16_t>(peak), inverse.size());
    SquareBoxMean(localMean.data(), inverse.data(), maskSize, width, height);

    const std::vector<float> exponents = BuildExponents(peak, MaxPixel(localMean.data(), width, height));
    size_t i = 0;
    for (uint16_t& pixel : pixels) {
        const float x = static_cast<float>(pixel) / static_cast<float>(peak);
        const float power = std::pow(x, exponents[localMean[i++]]);
        pixel = LowBits16(TruncateToInt32(static_cast<double>(power) * peak));
    }
}

}  // namespace vastrelline
