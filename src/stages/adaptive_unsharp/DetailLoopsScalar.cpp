// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdlib>

#include "pixels/ClampPixel.h"
#include "pixels/Truncate.h"
#include "stages/adaptive_unsharp/DetailLoops.h"

namespace vastrelline {

namespace {

void BlendByEdges(const EdgeBlendCall& call) {
    for (size_t i = 0; i < call.count; ++i) {
        const int32_t detail = call.original[i] - call.base[i];
        const double sharpened = call.base[i] + detail * call.gains[call.pixels[i]];
        call.pixels[i] = ClampToPixel(TruncateToInt32(sharpened), call.maxValue);
    }
}

void ScaleDetail(const uint16_t* pixels, const uint16_t* smooth, size_t count, uint16_t* detail) {
    for (size_t i = 0; i < count; ++i) {
        const auto difference = static_cast<int16_t>(LowBits16(pixels[i] - smooth[i]));
        detail[i] = static_cast<uint16_t>(std::clamp(difference + kZeroDetail, 0, kTopDetail));
    }
}

void AddShaped(const ShapedDetailCall& call) {
    for (size_t i = 0; i < call.count; ++i) {
        double sum = call.smooth[i] + call.enhanced[call.detail[i]];
        if (call.mask != nullptr) {
            const double weight = std::clamp(call.mask[i] / 255.0, 0.0, 1.0);
            sum = call.pixels[i] * weight + sum * (1 - weight);
        }
        call.pixels[i] = ClampToPixel(TruncateToInt32(sum), call.maxValue);
    }
}

void AddFinest(uint16_t* image, const uint16_t* base, const uint16_t* shaped, size_t count,
               int32_t maxValue) {
    for (size_t i = 0; i < count; ++i) image[i] = ClampToPixel(shaped[i] + (image[i] - base[i]), maxValue);
}

void TakeMagnitude(uint16_t* band, const uint16_t* wide, size_t count) {
    for (size_t i = 0; i < count; ++i) band[i] = static_cast<uint16_t>(std::abs(band[i] - wide[i]));
}

void ClampToLevels(uint16_t* pixels, size_t count, uint16_t low, uint16_t high) {
    std::for_each(pixels, pixels + count, [=](uint16_t& pixel) { pixel = std::clamp(pixel, low, high); });
}

int32_t DetailOf(const DetailTerm& term, size_t i, uint16_t pixel, double weight) {
    return term.smooth == nullptr ? 0 : TruncateToInt32((pixel - term.smooth[i]) * weight * term.gain);
}

void AddWeighted(const WeightedDetailCall& call) {
    for (size_t i = 0; i < call.count; ++i) {
        uint16_t& pixel = call.pixels[i];
        const double weight =
            WeightAt(call.first.smooth[i], call.activity[i], call.brightnessTable, call.activityTable);
        if (weight > 0) {
            const int32_t detail =
                WrappingAdd(DetailOf(call.first, i, pixel, weight), DetailOf(call.second, i, pixel, weight));
            pixel = LowBits16(WrappingAdd(pixel, detail));
        }
        pixel = ClampToPixel(pixel, call.maxValue);
    }
}

}  // namespace

const DetailLoops kDetailLoopsScalar = {BlendByEdges,  ScaleDetail,   AddShaped,  AddFinest,
                                        TakeMagnitude, ClampToLevels, AddWeighted};

}  // namespace vastrelline
