// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "sensor/CornerMask.h"

namespace vastrelline {
namespace {

void BenchBuildMaskFromGeometry(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    SensorGeometry geometry{};
    geometry.FrameWidth = frame.width;
    geometry.FrameHeight = frame.height;
    geometry.RCCutOff = std::min(159, std::min(frame.width, frame.height) / 2);
    geometry.RCCutOffR = geometry.RCCutOff;
    for (auto _ : state) {
        RowMask mask(frame.width, frame.height);
        BuildMaskFromGeometry(frame.pixels.data(), mask, geometry);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchBuildMaskFromGeometry)
    ->Name("CornerMask/BuildMaskFromGeometry")
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
