// SPDX-License-Identifier: Apache-2.0

// The core of the pyramid stage on a small frame with settings from anywhere, and its fast forms against the
// plain one. The input's head is the frame, its tail picks size and settings, so that a change of the
// settings leaves the pixels where they are.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/InstructionSet.h"
#include "stages/pyramid/Pyramid.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    BandCurve curve;
    PyramidForm form;
    PyramidParams params;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 40;
    constexpr int32_t kMostLayers = 6;  // more takes long, and is no other
    constexpr double kWidestSigma = 8.0;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    options.curve = static_cast<BandCurve>(tail.Take<uint8_t>() % 6);
    const uint8_t form = tail.Take<uint8_t>();
    options.form = {static_cast<TailMode>(form % 4), form >= 128};
    options.params.PYRAMID_LAYER = tail.Take<int8_t>() % (kMostLayers + 1);
    options.params.GAUSSIAN_SIZE = tail.Take<double>();
    if (options.params.GAUSSIAN_SIZE > kWidestSigma) {
        options.params.GAUSSIAN_SIZE = std::fmod(options.params.GAUSSIAN_SIZE, kWidestSigma);
    }
    options.params.APPLY_VARIABLE_RATIO = tail.Take<uint8_t>() % 2;
    options.params.ENHANCED_RATIO = tail.Take<double>();
    options.params.NOISE_WIDTH = tail.Take<double>();
    options.params.APPLY_DIFF_ENHANCE = tail.Take<uint8_t>() % 4;
    options.params.NOISE_CUTLIMIT = tail.Take<double>();
    // Small numbers are more telling than most of those that eight bytes make.
    const uint8_t choice = tail.Take<uint8_t>();
    if (choice % 2 == 0) options.params.GAUSSIAN_SIZE = choice / 2 % 8 * 0.4;
    if (choice >= 64) options.params.ENHANCED_RATIO = choice / 16 * 0.3;
    if (choice >= 128) options.params.NOISE_CUTLIMIT = choice % 16 * 0.05;
    return options;
}

std::vector<uint16_t> Process(std::vector<uint16_t> pixels, const Options& options, InstructionSet set) {
    const ScopedInstructionSet limit(set);
    TonedFrame toned({pixels.data(), options.width, options.height});
    PyramidProcess(toned, options.maxValue, options.curve, options.params, options.form, nullptr);
    return pixels;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    const std::vector<uint16_t> plain = Process(pixels, options, InstructionSet::Reference);
    for (const InstructionSet set :
         {InstructionSet::Baseline, InstructionSet::Avx2, InstructionSet::Avx512}) {
        Require(Process(pixels, options, set) == plain, "every form gives the same bits");
    }
    if (options.params.PYRAMID_LAYER < 2) {
        Require(plain == pixels, "without a band the frame stays");
    } else {
        for (const uint16_t pixel : plain) Require(pixel <= options.maxValue, "no pixel passes the limit");
    }
    return 0;
}
