// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "operators/curves/LookupTable.h"

namespace vastrelline {
namespace {

void BenchApplyLookupTable(benchmark::State& state) {
    BenchFrame frame = MakeNoiseFrame();
    // Inverting the levels keeps noise noise, so that every iteration finds the same work.
    std::vector<uint16_t> negative(size_t{kBenchMaxValue} + 1);
    for (size_t level = 0; level < negative.size(); ++level)
        negative[level] = static_cast<uint16_t>(kBenchMaxValue - level);
    for (auto _ : state) {
        ApplyLookupTable(frame.pixels.data(), frame.width, frame.height, negative);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchApplyLookupTable)->Name("LookupTable/ApplyLookupTable")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
