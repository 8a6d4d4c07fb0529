// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "sensor/SpotCorrection.h"

namespace vastrelline {
namespace {

constexpr int32_t kMaskSize = 15;  // as the exports ask for

void BenchApplySpotCorrection(benchmark::State& state) {
    const BenchFrame original = MakeNoiseFrame();
    BenchFrame frame = original;
    for (auto _ : state) {
        state.PauseTiming();
        frame.pixels = original.pixels;
        state.ResumeTiming();
        ApplySpotCorrection(frame.pixels.data(), kMaskSize, frame.width, frame.height, 1.5F);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchApplySpotCorrection)->Name("SpotCorrection/whole")->Unit(benchmark::kMillisecond);

void BenchSquareBoxMean(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> means(frame.pixels.size());
    for (auto _ : state) {
        SquareBoxMean(means.data(), frame.pixels.data(), kMaskSize, frame.width, frame.height);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchSquareBoxMean)->Name("SpotCorrection/SquareBoxMean")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vastrelline
