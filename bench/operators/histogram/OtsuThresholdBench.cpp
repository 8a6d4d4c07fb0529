// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include "BenchFrames.h"
#include "operators/histogram/OtsuThreshold.h"

namespace vastrelline {
namespace {

void BenchComputeOtsuThreshold(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            ComputeOtsuThreshold(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue));
    ReportPixels(state, frame);
}
BENCHMARK(BenchComputeOtsuThreshold)
    ->Name("OtsuThreshold/ComputeOtsuThreshold")
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
