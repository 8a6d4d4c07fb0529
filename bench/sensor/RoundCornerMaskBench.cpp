// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "sensor/RoundCornerMask.h"

namespace vastrelline {
namespace {

// The full sensor frame, turned by each of the codes.
template <typename Build>
void BenchMask(benchmark::State& state, const Build& build) {
    const BenchFrame frame = MakeNoiseFrame();
    const auto code = static_cast<int32_t>(state.range(0));
    const int32_t cutOff = std::min(159, std::min(frame.width, frame.height) / 2);
    const bool isTurned = code == kTurnedClockwise || code == kTurnedCounterclockwise;
    const int32_t width = isTurned ? frame.height : frame.width;
    const int32_t height = isTurned ? frame.width : frame.height;
    const CornerOutline outline(frame.width, frame.height, cutOff, cutOff);
    for (auto _ : state) build(outline, cutOff, code, width, height);
    ReportPixels(state, frame);
}

void BenchDrawRoundCorners(benchmark::State& state) {
    BenchMask(state, [](const CornerOutline& outline, int32_t, int32_t code, int32_t width, int32_t height) {
        benchmark::DoNotOptimize(DrawRoundCorners(outline, code, 0, 0, width, height));
    });
}
BENCHMARK(BenchDrawRoundCorners)
    ->Name("RoundCornerMask/DrawRoundCorners")
    ->DenseRange(kAsBuilt, kTurnedCounterclockwise)
    ->Unit(benchmark::kMicrosecond);

void BenchBuildRoundCornerMask(benchmark::State& state) {
    BenchMask(state,
              [](const CornerOutline& outline, int32_t cutOff, int32_t code, int32_t width, int32_t height) {
                  benchmark::DoNotOptimize(BuildRoundCornerMask(outline.FrameWidth(), outline.FrameHeight(),
                                                                cutOff, cutOff, code, 0, 0, width, height));
              });
}
BENCHMARK(BenchBuildRoundCornerMask)
    ->Name("RoundCornerMask/BuildRoundCornerMask")
    ->DenseRange(kAsBuilt, kTurnedCounterclockwise)
    ->Unit(benchmark::kMicrosecond);

// As once per run.
void BenchMarkRoundCorners(benchmark::State& state) {
    BenchMask(state, [&](const CornerOutline& outline, int32_t, int32_t code, int32_t width, int32_t height) {
        RowMask mask(width, height);
        MarkRoundCorners(mask, outline, code, 0, 0);
        benchmark::ClobberMemory();
    });
}
BENCHMARK(BenchMarkRoundCorners)
    ->Name("RoundCornerMask/MarkRoundCorners")
    ->DenseRange(kAsBuilt, kTurnedCounterclockwise)
    ->Unit(benchmark::kMicrosecond);

// The work does not grow with the frame, so this one tells its time only.
void BenchMarkCornerTriangles(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state) {
        RowMask mask(frame.width, frame.height);
        MarkCornerTriangles(frame.pixels.data(), mask);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BenchMarkCornerTriangles)
    ->Name("RoundCornerMask/MarkCornerTriangles")
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
