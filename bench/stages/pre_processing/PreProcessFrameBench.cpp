// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>

#include "BenchFrames.h"
#include "stages/pre_processing/PreProcessFrame.h"
#include "support/BenchSets.h"

namespace vastrelline {
namespace {

// The whole of the stage's core, at the defaults of its keys.
void BenchPreProcessFrame(benchmark::State& state) {
    const BenchFrame source = MakeNoiseFrame();
    BenchFrame frame = source;
    for (auto _ : state) {
        // What a run leaves has less noise than it found. The copy is a small share of the time.
        frame.pixels = source.pixels;
        PreProcessFrame(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, {});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    RegisterForAllSets("PreProcessing", "defaults", BenchPreProcessFrame);
    return true;
}();

}  // namespace
}  // namespace vastrelline
