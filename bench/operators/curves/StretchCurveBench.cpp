// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include "BenchFrames.h"
#include "operators/curves/StretchCurve.h"

namespace vastrelline {
namespace {

// The table alone: one exponential for each level of the tails. The work does not grow with the frame.
void BenchBuildStretchCurve(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(
            BuildStretchCurve(0, kBenchMaxValue, kBenchMaxValue, {900, 3600, 4.0, 4.0, 900, 2701, 495}));
}
BENCHMARK(BenchBuildStretchCurve)->Name("StretchCurve/BuildStretchCurve")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
