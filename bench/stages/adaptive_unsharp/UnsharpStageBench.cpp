// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "stages/adaptive_unsharp/ActivityWeightedUnsharp.h"
#include "stages/adaptive_unsharp/EdgeWeightedUnsharp.h"
#include "stages/adaptive_unsharp/HistogramShapedUnsharp.h"

namespace vastrelline {
namespace {

// The methods whole, at keys of everyday use, on the frame as it comes: each run starts from a fresh copy,
// which is a small part of the time.
template <typename Sharpen>
void BenchMethod(benchmark::State& state, const Sharpen& sharpen) {
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> work(frame.pixels);
    for (auto _ : state) {
        std::copy(frame.pixels.begin(), frame.pixels.end(), work.begin());
        sharpen(work.data(), frame.width, frame.height);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

void BenchEdgeWeighted(benchmark::State& state) {
    const auto reduce = static_cast<int32_t>(state.range(0));
    BenchMethod(state, [&](uint16_t* pixels, int32_t width, int32_t height) {
        EdgeWeightedUnsharp(pixels, width, height, kBenchMaxValue, 3.0, 2.0, 50, reduce);
    });
}
BENCHMARK(BenchEdgeWeighted)
    ->Name("Unsharp/EdgeWeighted/reduce")
    ->Arg(-1)
    ->Arg(1)
    ->Arg(2)
    ->Arg(3)
    ->Unit(benchmark::kMillisecond);

void BenchHistogramShaped(benchmark::State& state) {
    BenchMethod(state, [](uint16_t* pixels, int32_t width, int32_t height) {
        HistogramShapedUnsharp(pixels, width, height, kBenchMaxValue, 3.0, 2.0, 50, nullptr);
    });
}
BENCHMARK(BenchHistogramShaped)->Name("Unsharp/HistogramShaped")->Unit(benchmark::kMillisecond);

void BenchActivityWeighted(benchmark::State& state) {
    BenchMethod(state, [](uint16_t* pixels, int32_t width, int32_t height) {
        ActivityWeightedUnsharp(pixels, width, height, kBenchMaxValue, 5, 10, 20, 2.0, 1.0);
    });
}
BENCHMARK(BenchActivityWeighted)->Name("Unsharp/ActivityWeighted")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vastrelline
