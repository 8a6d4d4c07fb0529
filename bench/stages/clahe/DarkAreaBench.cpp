// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

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

// The mixing alone, with every level of a mask in turn.
void BenchMix(benchmark::State& state, const DarkAreaVariant& variant) {
    const BenchFrame before = MakeNoiseFrame();
    BenchFrame frame = before;
    std::vector<uint16_t> mask(frame.pixels.size());
    for (size_t i = 0; i < mask.size(); ++i) mask[i] = static_cast<uint16_t>(i % 256);
    for (auto _ : state) {
        variant.run->mix(frame.pixels.data(), before.pixels.data(), mask.data(), mask.size(), kBenchMaxValue);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    RegisterForAllSets("DarkArea", "noise", BenchCorrectDarkArea, MakeNoiseFrame);
    RegisterForAllSets("DarkArea", "soft", BenchCorrectDarkArea, MakeSoftFrame);
    for (const DarkAreaVariant& variant : DarkAreaVariants()) {
        benchmark::RegisterBenchmark((std::string("DarkArea/mix/") + variant.name).c_str(), BenchMix, variant)
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
