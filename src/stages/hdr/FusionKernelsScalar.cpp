// SPDX-License-Identifier: Apache-2.0
#include <cstddef>

#include "pixels/Truncate.h"
#include "stages/hdr/FusionKernels.h"

namespace vastrelline {

namespace {

void WidenRow(const uint16_t* pixels, int32_t offset, int32_t count, float* out) {
    for (int32_t x = 0; x < count; ++x) out[x] = static_cast<float>(pixels[x] - offset);
}

float Mix(uint16_t a, uint16_t b, const FusionMix& mix) {
    return static_cast<float>(a - mix.firstOffset) * mix.first +
           static_cast<float>(b - mix.secondOffset) * mix.second;
}

void MixRows(const uint16_t* a, const uint16_t* b, const FusionMix& mix, int32_t count, float* out) {
    for (int32_t x = 0; x < count; ++x) out[x] = Mix(a[x], b[x], mix);
}

void CombineRows(const float* const* rows, const float* weights, int32_t taps, int32_t count, float* out) {
    for (int32_t x = 0; x < count; ++x) {
        float sum = 0;
        for (int32_t t = 0; t < taps; ++t) sum += rows[t][x] * weights[t];
        out[x] = sum;
    }
}

void CombinePairs(const float* const* rows, const float* weights, int32_t pairs, int32_t count, float* out) {
    for (int32_t x = 0; x < count; ++x) {
        float sum = 0;
        for (int32_t k = 0; k < pairs; ++k) {
            const float* const* pair = rows + ptrdiff_t{2} * k;
            sum += (pair[0][x] + pair[1][x]) * weights[k];
        }
        out[x] = sum;
    }
}

void SumLayers(const uint16_t* a, const uint16_t* b, const FusionMix& mix, const float* fine, int32_t count,
               float* out, FusionRange& range) {
    for (int32_t x = 0; x < count; ++x) {
        out[x] = Mix(a[x], b[x], mix) - fine[x] - out[x];
        if (out[x] < range.lowest) range.lowest = out[x];
        if (out[x] > range.highest) range.highest = out[x];
    }
}

void TurnRow(const uint16_t* pixels, const double* cosines, const double* sines, int32_t count,
             double* sums) {
    for (int32_t i = 0; i < 2 * kPartialTurns; ++i) sums[i] = 0;
    for (int32_t x = 0; x < count / kPartialTurns * kPartialTurns; ++x) {
        sums[x % kPartialTurns] += cosines[x] * pixels[x];
        sums[kPartialTurns + x % kPartialTurns] += sines[x] * pixels[x];
    }
}

void TurnRowPair(const uint16_t* above, const uint16_t* below, double cosine, double sine, int32_t count,
                 double* real, double* imaginary) {
    for (int32_t x = 0; x < count; ++x) {
        real[x] += cosine * (above[x] + below[x]);
        imaginary[x] += sine * (above[x] - below[x]);
    }
}

void StretchRow(const float* sums, const FusionStretch& stretch, int32_t count, uint16_t* out) {
    for (int32_t x = 0; x < count; ++x) out[x] = StretchPixel(sums[x], stretch);
}

}  // namespace

uint16_t StretchPixel(double sum, const FusionStretch& stretch) {
    const double stretched = (sum + stretch.shift) / stretch.largest * stretch.range + stretch.low;
    const int32_t value = TruncateToInt32(kFusionScale * stretched);
    return ClampToRange(value, stretch);
}

const FusionKernels kFusionKernelsScalar = {WidenRow,  MixRows, CombineRows, CombinePairs,
                                            SumLayers, TurnRow, TurnRowPair, StretchRow};

}  // namespace vastrelline
