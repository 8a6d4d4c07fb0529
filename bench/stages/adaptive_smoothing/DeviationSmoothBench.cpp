// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>

#include "BenchFrames.h"
#include "stages/adaptive_smoothing/DeviationSmooth.h"

namespace vastrelline {
namespace {

void BenchDeviationWeightedSmooth(benchmark::State& state, double sigma) {
    const BenchFrame noise = MakeNoiseFrame();
    BenchFrame frame = noise;
    for (auto _ : state) {
        // Each pass would leave less noise to the next.
        std::copy(noise.pixels.begin(), noise.pixels.end(), frame.pixels.begin());
        DeviationWeightedSmooth(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, sigma, 4);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const char* sigma : {"1", "3", "15"}) {
        benchmark::RegisterBenchmark((std::string("DeviationSmooth/whole/sigma") + sigma).c_str(),
                                     BenchDeviationWeightedSmooth, std::stod(sigma))
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
