// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "stages/adaptive_smoothing/SavgolKernel.h"
#include "stages/adaptive_smoothing/SavgolSmooth.h"

namespace vastrelline {
namespace {

// Width and degree as profiles have them.
void BenchSavgolSmooth(benchmark::State& state) {
    BenchFrame frame = MakeNoiseFrame();
    const auto mask = static_cast<int32_t>(state.range(0));
    const auto order = static_cast<int32_t>(state.range(1));
    for (auto _ : state) {
        SavgolSmooth(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, mask, order);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchSavgolSmooth)
    ->Name("SavgolSmooth/frame")
    ->Args({7, 2})
    ->Args({15, 4})
    ->Args({31, 4})
    ->Unit(benchmark::kMillisecond);

void BenchSavgolKernel(benchmark::State& state) {
    const auto mask = static_cast<int32_t>(state.range(0));
    std::vector<double> coefficients(static_cast<size_t>(mask) + 1);
    for (auto _ : state) {
        SavgolKernel(coefficients.data(), mask, 4);
        benchmark::DoNotOptimize(coefficients.data());
    }
}
BENCHMARK(BenchSavgolKernel)->Name("SavgolSmooth/kernel")->Arg(15)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
