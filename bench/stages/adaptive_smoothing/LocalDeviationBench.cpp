// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "stages/adaptive_smoothing/LocalDeviation.h"

namespace vastrelline {
namespace {

void BenchQuantiseDeviation(benchmark::State& state, const DeviationVariant& variant) {
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> levels(frame.pixels.size());
    for (auto _ : state) {
        variant.run->quantise(
            {frame.pixels.data(), frame.width, frame.height, kDeviationRadius, levels.data()});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

void BenchBlendByLevel(benchmark::State& state, const DeviationVariant& variant) {
    BenchFrame frame = MakeNoiseFrame();
    const std::vector<uint16_t> smooth = frame.pixels;
    std::vector<double> weights(kTopDeviationLevel + 1);
    for (size_t level = 0; level < weights.size(); ++level) {
        weights[level] = static_cast<double>(level) / kTopDeviationLevel;
    }
    // As levels serve those of a real map: neighbours differ, and most are small.
    std::vector<uint16_t> levels(frame.pixels.size());
    std::transform(frame.pixels.begin(), frame.pixels.end(), levels.begin(),
                   [](uint16_t pixel) { return static_cast<uint16_t>(pixel / 4); });
    const auto count = static_cast<int64_t>(frame.pixels.size());
    for (auto _ : state) {
        variant.run->blend({frame.pixels.data(), smooth.data(), levels.data(), weights, count});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const DeviationVariant& variant : DeviationVariants()) {
        const std::string suffix = variant.name;
        benchmark::RegisterBenchmark(("LocalDeviation/QuantiseDeviation/" + suffix).c_str(),
                                     BenchQuantiseDeviation, variant)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("LocalDeviation/BlendByLevel/" + suffix).c_str(), BenchBlendByLevel,
                                     variant)
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
