// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include "BenchFrames.h"
#include "operators/curves/GammaCurve.h"

namespace vastrelline {
namespace {

void BenchBuildGammaCurve(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state)
        benchmark::DoNotOptimize(BuildGammaCurve(frame.pixels.data(), frame.width, frame.height,
                                                 kBenchMaxValue, kBenchMaxValue, 1.7, 0, 0));
    ReportPixels(state, frame);
}
BENCHMARK(BenchBuildGammaCurve)->Name("GammaCurve/BuildGammaCurve")->Unit(benchmark::kMicrosecond);

void BenchChooseGamma(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            ChooseGamma(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, 0.5));
    ReportPixels(state, frame);
}
BENCHMARK(BenchChooseGamma)->Name("GammaCurve/ChooseGamma")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
