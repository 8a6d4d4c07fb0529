// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include "BenchFrames.h"
#include "stages/pyramid/Pyramid.h"
#include "support/BenchSets.h"

namespace vastrelline {
namespace {

void BenchPyramid(benchmark::State& state, PyramidForm form) {
    const BenchFrame source = MakeSoftFrame();
    BenchFrame frame = source;
    for (auto _ : state) {
        frame.pixels = source.pixels;
        TonedFrame toned({frame.pixels.data(), frame.width, frame.height});
        PyramidProcess(toned, kBenchMaxValue, BandCurve::Power, {}, form, nullptr);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    RegisterForAllSets("Pyramid", "configured", BenchPyramid, PyramidForm{TailMode::Pass, true});
    RegisterForAllSets("Pyramid", "fixed", BenchPyramid, PyramidForm{TailMode::Remove, false});
    return true;
}();

}  // namespace
}  // namespace vastrelline
