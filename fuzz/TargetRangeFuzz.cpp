// SPDX-License-Identifier: Apache-2.0

// The target range on a small frame with settings from anywhere: under every instruction set, and what holds
// for each result. The input's head is the frame, its tail picks size and settings.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "sensor/TargetRange.h"
#include "support/EverySet.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

constexpr int32_t kTop = 4095;

struct Options {
    int32_t width;
    int32_t height;
    int32_t targetRange;
    int32_t minimumValue;
    float maxCut;
    float minCut;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 32;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    const uint8_t choice = tail.Take<uint8_t>();
    options.targetRange = choice % 4 != 0 ? tail.Take<uint16_t>() % (kTop + 1) : tail.Take<int32_t>();
    options.minimumValue = choice / 4 % 4 != 0 ? tail.Take<int16_t>() : tail.Take<int32_t>();
    options.maxCut = choice / 16 % 2 != 0 ? tail.Take<uint8_t>() / 1024.0F : tail.Take<float>();
    options.minCut = choice / 32 % 2 != 0 ? tail.Take<uint8_t>() / 256.0F : tail.Take<float>();
    return options;
}

std::vector<uint16_t> Normalise(std::vector<uint16_t> pixels, const Options& o) {
    ApplyTargetRange(pixels.data(), o.width, o.height, o.targetRange, o.minimumValue, o.maxCut, o.minCut);
    return pixels;
}

void TestThreshold(const std::vector<uint16_t>& pixels, const Options& o) {
    std::vector<uint16_t> values = pixels;
    for (uint16_t& value : values) value &= kTop;
    const int32_t high = values.empty() ? 0 : *std::max_element(values.begin(), values.end());
    const int32_t threshold = FindIsodataThreshold(values.data(), o.width, o.height, kTop, 0.0001F, 0, high);
    Require(threshold >= 0 && threshold <= high, "a threshold lies among the levels looked at");
    std::vector<uint16_t> turned = values;
    if (turned.size() > 2) std::reverse(turned.begin() + 1, turned.end());
    Require(FindIsodataThreshold(turned.data(), o.width, o.height, kTop, 0.0001F, 0, high) == threshold,
            "the places of the values but the first make no difference");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    const std::vector<uint16_t> result =
        RequireEqualUnderEverySet([&] { return Normalise(pixels, options); });
    Require(Backwards(Normalise(Backwards(pixels), options)) == result,
            "the places of the pixels make no difference");
    if (result != pixels) {
        Require(*std::max_element(result.begin(), result.end()) <= kTop, "results are of 12 bits");
        Require(options.targetRange > 200, "the estimated range is 200 or more");
    }
    // All are multiplied by one factor, so that levels keep their order unless the factor leaves 32 bits.
    const bool isUsual = options.targetRange <= kTop;
    std::vector<size_t> order(pixels.size());
    for (size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::sort(order.begin(), order.end(), [&](size_t a, size_t b) { return pixels[a] < pixels[b]; });
    for (size_t i = 1; i < order.size(); ++i) {
        Require(!isUsual || result[order[i - 1]] <= result[order[i]], "a brighter pixel stays no darker");
        if (pixels[order[i - 1]] == pixels[order[i]])
            Require(result[order[i - 1]] == result[order[i]], "a pixel's level decides");
    }
    if (!order.empty() && pixels[order[0]] == 0) Require(result[order[0]] == 0, "black stays black");
    TestThreshold(pixels, options);
    return 0;
}
