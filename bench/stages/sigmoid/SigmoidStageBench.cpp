// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>

#include "BenchFrames.h"
#include "stages/sigmoid/SigmoidStage.h"

namespace vastrelline {
namespace {

constexpr int32_t kLimitBin = 10;

void BenchApplySigmoidCurve(benchmark::State& state) {
    BenchFrame frame = MakeNoiseFrame();
    // Noise drifts to the curve's ends from iteration to iteration, which changes no step of the work but
    // the number of exponentials.
    for (auto _ : state) {
        ApplySigmoidCurve(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, kBenchMaxValue, 0.0,
                          kLimitBin, 0, L"", 0);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchApplySigmoidCurve)->Name("SigmoidCurve/ApplySigmoidCurve")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
