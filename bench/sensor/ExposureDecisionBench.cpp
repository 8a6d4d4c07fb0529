// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "operators/histogram/Histogram.h"
#include "sensor/ExposureDecision.h"

namespace vastrelline {
namespace {

// The work does not grow with the frame, so this one tells its time only.
void BenchClassifyExposure(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    const std::vector<uint32_t> histogram =
        BuildHistogram(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue);
    DoseRecord record;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ClassifyExposure(frame.pixels.data(), frame.width, frame.height, histogram,
                                                  kBenchMaxValue, 0.5, kBenchMaxValue, record));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BenchClassifyExposure)->Name("ExposureDecision/ClassifyExposure")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
