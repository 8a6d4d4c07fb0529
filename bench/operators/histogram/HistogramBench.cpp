// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "operators/histogram/Histogram.h"

namespace vastrelline {
namespace {

void BenchBuildHistogram(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            BuildHistogram(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue));
    ReportPixels(state, frame);
}
BENCHMARK(BenchBuildHistogram)->Name("Histogram/BuildHistogram/noise")->Unit(benchmark::kMicrosecond);

// One level everywhere: each count has to wait for the one before it.
void BenchBuildHistogramOfFlatFrame(benchmark::State& state) {
    BenchFrame frame = MakeNoiseFrame();
    std::fill(frame.pixels.begin(), frame.pixels.end(), uint16_t{1000});
    for (auto _ : state)
        benchmark::DoNotOptimize(
            BuildHistogram(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue));
    ReportPixels(state, frame);
}
BENCHMARK(BenchBuildHistogramOfFlatFrame)
    ->Name("Histogram/BuildHistogram/flat")
    ->Unit(benchmark::kMicrosecond);

void BenchBuildUnclampedHistogram(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            BuildUnclampedHistogram(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue));
    ReportPixels(state, frame);
}
BENCHMARK(BenchBuildUnclampedHistogram)
    ->Name("Histogram/BuildUnclampedHistogram")
    ->Unit(benchmark::kMicrosecond);

// A frame of few pixels: what is left is the cost of the tables.
void BenchBuildHistogramOfSmallFrame(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    constexpr int32_t kSide = 32;
    for (auto _ : state)
        benchmark::DoNotOptimize(BuildHistogram(frame.pixels.data(), kSide, kSide, kBenchMaxValue));
}
BENCHMARK(BenchBuildHistogramOfSmallFrame)
    ->Name("Histogram/BuildHistogram/small")
    ->Unit(benchmark::kMicrosecond);

// The work does not grow with the frame, so this one tells its time only.
void BenchSmoothHistogram(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    const std::vector<uint32_t> histogram =
        BuildHistogram(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue);
    std::vector<uint32_t> smoothed(histogram.size());
    constexpr int32_t kWindow = 50;
    for (auto _ : state) {
        SmoothHistogram(histogram.data(), smoothed.data(), kBenchMaxValue + 1, kWindow);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BenchSmoothHistogram)->Name("Histogram/SmoothHistogram")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
