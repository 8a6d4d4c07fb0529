// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "stages/hdr/FusionKernels.h"

namespace vastrelline {
namespace {

constexpr FusionMix kMix = {17, 40, 0.7F, 0.4F};

// Two frames and what the kernels make of them, row by row.
struct Fusion {
    explicit Fusion(const FusionKernels& form)
        : kernels(form),
          frame(MakeNoiseFrame()),
          other(frame.pixels.rbegin(), frame.pixels.rend()),
          pixels(frame.pixels.size()) {
        floats.assign(frame.pixels.begin(), frame.pixels.end());
    }

    // Calls `run` with the place of each row.
    template <typename Run>
    void ForEachRow(benchmark::State& state, Run run) {
        const auto width = static_cast<size_t>(frame.width);
        for (auto _ : state) {
            for (size_t start = 0; start + width <= frame.pixels.size(); start += width) run(start);
            benchmark::ClobberMemory();
        }
        ReportPixels(state, frame);
    }

    const FusionKernels& kernels;
    BenchFrame frame;
    std::vector<uint16_t> other;
    std::vector<float> floats;
    std::vector<uint16_t> pixels;
};

void BenchWidenRow(benchmark::State& state, const FusionKernels& kernels) {
    Fusion f(kernels);
    f.ForEachRow(state, [&](size_t row) {
        f.kernels.widenRow(f.frame.pixels.data() + row, 40, f.frame.width, f.floats.data() + row);
    });
}

void BenchMixRows(benchmark::State& state, const FusionKernels& kernels) {
    Fusion f(kernels);
    f.ForEachRow(state, [&](size_t row) {
        f.kernels.mixRows(f.frame.pixels.data() + row, f.other.data() + row, kMix, f.frame.width,
                          f.floats.data() + row);
    });
}

// The steps of the coarse blur have 13 to some 45.
constexpr int32_t kTaps = 16;

void BenchCombine(benchmark::State& state, const FusionKernels& kernels, bool isPairs) {
    Fusion f(kernels);
    const auto width = static_cast<size_t>(f.frame.width);
    const std::vector<float> weights(2 * kTaps, 0.03F);
    const std::vector<float> source(width + 2 * kTaps, 7.0F);
    std::vector<const float*> rows;
    for (size_t t = 0; t < 2 * size_t{kTaps}; ++t) rows.push_back(source.data() + t);
    f.ForEachRow(state, [&](size_t row) {
        float* out = f.floats.data() + row;
        if (isPairs) {
            f.kernels.combinePairs(rows.data(), weights.data(), kTaps, f.frame.width, out);
        } else {
            f.kernels.combineRows(rows.data(), weights.data(), kTaps, f.frame.width, out);
        }
    });
}

void BenchCombineRows(benchmark::State& state, const FusionKernels& kernels) {
    BenchCombine(state, kernels, false);
}

void BenchCombinePairs(benchmark::State& state, const FusionKernels& kernels) {
    BenchCombine(state, kernels, true);
}

void BenchSumLayers(benchmark::State& state, const FusionKernels& kernels) {
    Fusion f(kernels);
    const std::vector<float> fine(static_cast<size_t>(f.frame.width), 500.0F);
    std::vector<float> coarse(fine.size());
    FusionRange range{};
    f.ForEachRow(state, [&](size_t row) {
        f.kernels.sumLayers(f.frame.pixels.data() + row, f.other.data() + row, kMix, fine.data(),
                            f.frame.width, coarse.data(), range);
    });
}

void BenchTurnRow(benchmark::State& state, const FusionKernels& kernels) {
    Fusion f(kernels);
    const std::vector<double> cosines(static_cast<size_t>(f.frame.width), 0.6);
    const std::vector<double> sines(cosines.size(), 0.8);
    std::vector<double> sums(2 * size_t{kPartialTurns});
    f.ForEachRow(state, [&](size_t row) {
        f.kernels.turnRow(f.frame.pixels.data() + row, cosines.data(), sines.data(), f.frame.width,
                          sums.data());
    });
}

void BenchTurnRowPair(benchmark::State& state, const FusionKernels& kernels) {
    Fusion f(kernels);
    std::vector<double> real(static_cast<size_t>(f.frame.width));
    std::vector<double> imaginary(real.size());
    f.ForEachRow(state, [&](size_t row) {
        f.kernels.turnRowPair(f.frame.pixels.data() + row, f.other.data() + row, 0.6, 0.8, f.frame.width,
                              real.data(), imaginary.data());
    });
}

void BenchStretchRow(benchmark::State& state, const FusionKernels& kernels) {
    Fusion f(kernels);
    const FusionStretch stretch = {0, kBenchMaxValue, 0.9, 0.01, 41, 3700};
    f.ForEachRow(state, [&](size_t row) {
        f.kernels.stretchRow(f.floats.data() + row, stretch, f.frame.width, f.pixels.data() + row);
    });
}

const bool kRegistered = [] {
    for (const FusionVariant& variant : FusionVariants()) {
        const std::string name = std::string("FusionKernels/") + variant.name;
        const auto add = [&](const char* what, void (*bench)(benchmark::State&, const FusionKernels&)) {
            benchmark::RegisterBenchmark((name + what).c_str(), bench, *variant.run)
                ->Unit(benchmark::kMillisecond);
        };
        add("/WidenRow", BenchWidenRow);
        add("/MixRows", BenchMixRows);
        add("/CombineRows", BenchCombineRows);
        add("/CombinePairs", BenchCombinePairs);
        add("/SumLayers", BenchSumLayers);
        add("/TurnRow", BenchTurnRow);
        add("/TurnRowPair", BenchTurnRowPair);
        add("/StretchRow", BenchStretchRow);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
