// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include "BenchFrames.h"
#include "stages/gamma/GammaStage.h"

namespace vastrelline {
namespace {

void BenchApplyGammaCurve(benchmark::State& state) {
    BenchFrame frame = MakeNoiseFrame();
    // The exponent 1 keeps noise noise, so that every iteration finds the same work.
    for (auto _ : state) {
        ApplyGammaCurve(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, kBenchMaxValue, 1.0,
                        0, 0, 0, L"", 0);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchApplyGammaCurve)->Name("GammaCurve/ApplyGammaCurve")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
