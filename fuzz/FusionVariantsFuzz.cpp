// SPDX-License-Identifier: Apache-2.0

// The row kernels of the layer fusion with rows and weights from anywhere: every form of each against the
// definition. The input's head are the pixels, its tail picks the rest, so that a change of that leaves the
// pixels where they are.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "stages/hdr/FusionKernels.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

constexpr int32_t kMostRows = 12;

struct Input {
    int32_t count;
    std::vector<uint16_t> a;
    std::vector<uint16_t> b;
    FusionMix mix;
    FusionStretch stretch;
    int32_t taps;  // up to half of kMostRows
    std::vector<float> weights;
    std::vector<std::vector<float>> rows;  // kMostRows
    std::vector<const float*> rowStarts;
    double cosine;
    double sine;
};

// Weights of the fusion are finite, and what is no number never meets another one of other bits.
float TakeFinite(InputTail& tail) {
    const float value = tail.Take<float>();
    return std::isfinite(value) ? value : 1.0F;
}

Input TakeInput(InputTail& tail) {
    constexpr uint8_t kMostPixels = 140;
    Input input{};
    input.count = tail.Take<uint8_t>() % (kMostPixels + 1);
    input.taps = tail.Take<uint8_t>() % (kMostRows / 2 + 1);
    input.mix.firstOffset = tail.Take<uint16_t>();
    input.mix.secondOffset = tail.Take<uint16_t>();
    input.mix.first = TakeFinite(tail);
    input.mix.second = TakeFinite(tail);
    input.stretch.shift = tail.Take<double>();
    input.stretch.largest = tail.Take<double>();
    input.stretch.range = tail.Take<double>();
    input.stretch.low = tail.Take<double>();
    input.stretch.min = tail.Take<int32_t>();
    input.stretch.max = tail.Take<int32_t>();
    for (int32_t t = 0; t < kMostRows; ++t) input.weights.push_back(tail.Take<int16_t>() / 8192.0F);
    input.cosine = tail.Take<int16_t>() / 32768.0;
    input.sine = tail.Take<int16_t>() / 32768.0;
    const float scale = TakeFinite(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(input.count, 2);
    const auto middle = pixels.begin() + input.count;
    input.a.assign(pixels.begin(), middle);
    input.b.assign(middle, pixels.end());
    for (int32_t r = 0; r < kMostRows; ++r) {
        std::vector<float>& row = input.rows.emplace_back();
        for (size_t x = 0; x < input.a.size(); ++x) {
            const int32_t level = r % 2 == 0 ? input.a[x] : input.b[input.b.size() - 1 - x];
            row.push_back(static_cast<float>(level - 3000 * r) / 4096.0F * scale);
        }
    }
    for (const std::vector<float>& row : input.rows) input.rowStarts.push_back(row.data());
    return input;
}

// A kernel that writes a row of floats.
template <typename Kernel>
void TestFloats(const Input& input, Kernel kernel) {
    RequireEqualForms(FusionVariants(), [&](const FusionVariant& form) {
        Guarded<float> out(input.rows[1]);
        kernel(*form.run, out.Data());
        return out;
    });
}

void TestRows(const Input& input) {
    TestFloats(input, [&](const FusionKernels& kernels, float* out) {
        kernels.widenRow(input.a.data(), input.mix.firstOffset, input.count, out);
    });
    TestFloats(input, [&](const FusionKernels& kernels, float* out) {
        kernels.mixRows(input.a.data(), input.b.data(), input.mix, input.count, out);
    });
    TestFloats(input, [&](const FusionKernels& kernels, float* out) {
        kernels.combineRows(input.rowStarts.data(), input.weights.data(), 2 * input.taps, input.count, out);
    });
    TestFloats(input, [&](const FusionKernels& kernels, float* out) {
        kernels.combinePairs(input.rowStarts.data(), input.weights.data(), input.taps, input.count, out);
    });
}

void TestSums(const Input& input) {
    TestFloats(input, [&](const FusionKernels& kernels, float* out) {
        FusionRange range{};
        kernels.sumLayers(input.a.data(), input.b.data(), input.mix, input.rows[0].data(), input.count, out,
                          range);
    });
    RequireEqualForms(FusionVariants(), [&](const FusionVariant& form) {
        std::vector<float> out = input.rows[1];
        FusionRange range{};
        form.run->sumLayers(input.a.data(), input.b.data(), input.mix, input.rows[0].data(), input.count,
                            out.data(), range);
        return Guarded<float>({range.lowest, range.highest});
    });
}

void TestTurns(const Input& input) {
    const std::vector<double> cosines(input.rows[2].begin(), input.rows[2].end());
    const std::vector<double> sines(input.rows[3].begin(), input.rows[3].end());
    RequireEqualForms(FusionVariants(), [&](const FusionVariant& form) {
        Guarded<double> sums(2 * size_t{kPartialTurns});
        form.run->turnRow(input.a.data(), cosines.data(), sines.data(), input.count, sums.Data());
        return sums;
    });
    for (const bool isReal : {true, false}) {
        RequireEqualForms(FusionVariants(), [&](const FusionVariant& form) {
            Guarded<double> real(cosines);
            Guarded<double> imaginary(sines);
            form.run->turnRowPair(input.a.data(), input.b.data(), input.cosine, input.sine, input.count,
                                  real.Data(), imaginary.Data());
            return isReal ? real : imaginary;
        });
    }
}

void TestStretch(const Input& input) {
    RequireEqualForms(FusionVariants(), [&](const FusionVariant& form) {
        Guarded<uint16_t> pixels(input.a.size());
        form.run->stretchRow(input.rows[0].data(), input.stretch, input.count, pixels.Data());
        return pixels;
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Input input = TakeInput(tail);
    TestRows(input);
    TestSums(input);
    TestTurns(input);
    TestStretch(input);
    return 0;
}
