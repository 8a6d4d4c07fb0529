// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <string>

#include "BenchFrames.h"
#include "operators/curves/ClippedRamp.h"

namespace vastrelline {
namespace {

void BenchClippedRamp(benchmark::State& state, const ClippedRampVariant& variant) {
    const ClippedRamp clippedInversion{100, 3800, 3995, true};
    BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state) {
        variant.run(frame.pixels.data(), frame.pixels.size(), clippedInversion);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const ClippedRampVariant& variant : ClippedRampVariants()) {
        benchmark::RegisterBenchmark((std::string("ClippedRamp/") + variant.name).c_str(), BenchClippedRamp,
                                     variant)
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
