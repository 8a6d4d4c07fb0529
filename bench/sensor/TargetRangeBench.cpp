// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "sensor/TargetRange.h"

namespace vastrelline {
namespace {

// The copy into the scratch frame counts, for the scaling changes the frame.
void BenchApplyTargetRange(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    BenchFrame ranged = frame;
    // Above every range of 12 bits, so that the frame is scaled.
    constexpr int32_t kTargetRange = 4096;
    for (auto _ : state) {
        ranged.pixels = frame.pixels;
        ApplyTargetRange(ranged.pixels.data(), frame.width, frame.height, kTargetRange, 0, 0.001F, 0.001F);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchApplyTargetRange)->Name("TargetRange/ApplyTargetRange")->Unit(benchmark::kMicrosecond);

void BenchFindIsodataThreshold(benchmark::State& state) {
    // As the range normalisation calls it: 20 levels in a table of 12 bits.
    std::vector<uint16_t> levels;
    for (uint16_t i = 0; i < 20; ++i) levels.push_back(static_cast<uint16_t>(200 * i));
    for (auto _ : state)
        benchmark::DoNotOptimize(FindIsodataThreshold(levels.data(), 20, 1, 4095, 0.0001F, 0, 3800));
}
BENCHMARK(BenchFindIsodataThreshold)->Name("TargetRange/FindIsodataThreshold")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
