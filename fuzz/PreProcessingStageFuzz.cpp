// SPDX-License-Identifier: Apache-2.0

// The core of the preProcessing stage on a small frame with settings from anywhere, and its fast forms
// against the plain one. The input's head is the frame, its tail picks size and settings, so that a change of
// the settings leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/InstructionSet.h"
#include "stages/pre_processing/PreProcessFrame.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

constexpr uint16_t kTopFloor = 4095;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    PreProcessingParams params;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 40;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    options.params.PREPROCESSING_ENHANCESCALE = tail.Take<double>();
    options.params.PREPROCESSING_GAUSSIANPOWER = tail.Take<double>();
    options.params.PREPROCESSING_AUMALPHA = tail.Take<double>();
    options.params.PREPROCESSING_AUMWEIGHT = tail.Take<double>();
    options.params.PREPROCESSING_AUMPOWER = tail.Take<double>();
    options.params.PREPROCESSING_AUMRANGE = tail.Take<double>();
    // Small numbers are more telling than most of those that eight bytes make.
    const uint8_t choice = tail.Take<uint8_t>();
    if (choice % 2 == 0) options.params.PREPROCESSING_ENHANCESCALE = choice / 16 * 0.25;
    if (choice % 4 < 2) options.params.PREPROCESSING_GAUSSIANPOWER = choice / 4 % 16 * 0.75;
    return options;
}

std::vector<uint16_t> Process(std::vector<uint16_t> pixels, const Options& options, InstructionSet set) {
    const ScopedInstructionSet limit(set);
    PreProcessFrame(pixels.data(), options.width, options.height, options.maxValue, options.params);
    return pixels;
}

// The darkest pixel above 0, from where no result reaches down.
uint16_t FloorOf(const std::vector<uint16_t>& pixels) {
    uint16_t floor = kTopFloor;
    for (const uint16_t pixel : pixels) floor = pixel > 0 ? std::min(floor, pixel) : floor;
    return floor;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    const std::vector<uint16_t> plain = Process(pixels, options, InstructionSet::Reference);
    for (const InstructionSet set :
         {InstructionSet::Baseline, InstructionSet::Avx2, InstructionSet::Avx512}) {
        Require(Process(pixels, options, set) == plain, "every form gives the same bits");
    }
    const uint16_t floor = FloorOf(pixels);
    for (const uint16_t pixel : plain) {
        Require(pixel >= floor, "no pixel is below the floor");
        Require(pixel <= std::max<int32_t>(options.maxValue, floor), "no pixel passes the limit");
    }
    options.params.PREPROCESSING_AUMALPHA = -3.0;
    options.params.PREPROCESSING_AUMWEIGHT = 1e300;
    options.params.PREPROCESSING_AUMPOWER = 0.5;
    options.params.PREPROCESSING_AUMRANGE = 0.0;
    Require(Process(pixels, options, InstructionSet::Avx512) == plain, "the map's keys have no effect");
    return 0;
}
