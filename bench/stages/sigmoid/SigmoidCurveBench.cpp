// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include "BenchFrames.h"
#include "stages/sigmoid/SigmoidCurve.h"

namespace vastrelline {
namespace {

constexpr int32_t kLimitBin = 10;

void BenchBuildSigmoidCurve(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state)
        benchmark::DoNotOptimize(BuildSigmoidCurve(frame.pixels.data(), frame.width, frame.height,
                                                   kBenchMaxValue, kBenchMaxValue, 0.0, kLimitBin));
    ReportPixels(state, frame);
}
BENCHMARK(BenchBuildSigmoidCurve)->Name("SigmoidCurve/BuildSigmoidCurve")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
