#include <benchmark/benchmark.h>

#include <cstdint>

#include "BenchFrames.h"
#include "stages/clahe/DarkArea.h"
#include "support/BenchSets.h"

namespace vastrelline {
namespace {

// Of noise each second or third pixel is dark, which is the hard case for the mask's smoothing; of a soft
// frame one area is, as in a radiograph.
void BenchCorrectDarkArea(benchmark::State& state, BenchFrame (*makeFrame)()) {
    const BenchFrame before = makeFrame();
    BenchFrame frame = before;
    for (auto _ : state) {
        frame.pixels = before.pixels;
        CorrectDarkArea(frame.pixels.data(), before.pixels.data(), frame.width, frame.height, kBenchMaxValue);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    RegisterForAllSets("DarkArea", "noise", BenchCorrectDarkArea, MakeNoiseFrame);
    RegisterForAllSets("DarkArea", "soft", BenchCorrectDarkArea, MakeSoftFrame);
    return true;
}();

}  // namespace
}  // namespace vastrelline
