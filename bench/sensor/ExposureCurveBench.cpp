// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "sensor/ExposureCurve.h"

namespace vastrelline {
namespace {

// From a frame whose corners have to be looked for. The copy into the scratch frame counts, for the curve
// changes the frame.
void BenchApplyExposureCurve(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    BenchFrame exposed = frame;
    SensorGeometry geometry{};
    geometry.Rotation = -10;
    geometry.RCCutOff = 150;
    for (auto _ : state) {
        exposed.pixels = frame.pixels;
        ApplyExposureCurve(exposed.pixels.data(), frame.width, frame.height, 250, 3800, 0.45, 0.6, L"",
                           &geometry);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchApplyExposureCurve)->Name("ExposureCurve/ApplyExposureCurve")->Unit(benchmark::kMicrosecond);

void BenchMeasureClipLevels(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    const std::vector<uint16_t> mask(frame.pixels.size());
    uint16_t low = 0;
    uint16_t high = 0;
    for (auto _ : state) {
        MeasureClipLevels(frame.pixels.data(), mask.data(), frame.width, frame.height, low, high);
        benchmark::DoNotOptimize(low);
        benchmark::DoNotOptimize(high);
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchMeasureClipLevels)->Name("ExposureCurve/MeasureClipLevels")->Unit(benchmark::kMicrosecond);

// The work does not grow with the frame, so this one tells its time only.
void BenchDetectCornerMask(benchmark::State& state) {
    BenchFrame frame = MakeNoiseFrame();
    frame.pixels.assign(frame.pixels.size(), 0);
    for (auto _ : state) {
        RowMask mask(frame.width, frame.height);
        DetectCornerMask(frame.pixels.data(), mask, 150, 170);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BenchDetectCornerMask)->Name("ExposureCurve/DetectCornerMask")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
