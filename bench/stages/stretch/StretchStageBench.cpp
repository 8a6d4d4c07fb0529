// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "operators/curves/LinearCurve.h"
#include "operators/curves/LookupTable.h"
#include "operators/curves/StretchCurve.h"
#include "operators/curves/TonedFrame.h"
#include "pixels/Truncate.h"
#include "stages/stretch/HistogramSegments.h"
#include "stages/stretch/StretchParams.h"
#include "stages/stretch/StretchSegments.h"

namespace vastrelline {
namespace {

constexpr int32_t kLimit = 50;

void BenchFindStretchSegments(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    StretchSegment segment;
    for (auto _ : state) {
        FindStretchSegments(frame.pixels.data(), segment, frame.width, frame.height, kBenchMaxValue, 0,
                            kBenchMaxValue, kLimit);
        benchmark::DoNotOptimize(segment);
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchFindStretchSegments)->Name("StretchCurve/FindStretchSegments")->Unit(benchmark::kMicrosecond);

void BenchMarkDarkTail(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> mask(frame.pixels.size());
    for (auto _ : state) {
        MarkDarkTail(frame.pixels.data(), mask.data(), frame.width, frame.height, 900);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchMarkDarkTail)->Name("StretchCurve/MarkDarkTail")->Unit(benchmark::kMicrosecond);

// Mode 2 with its second step, on a fresh frame each time.

StretchParams BothValleysParams() {
    StretchParams params;
    params.STRETCH_SEPARATION_CNT = static_cast<int32_t>(StretchMode::BothValleys);
    return params;
}

// Every function looks at the pixels for itself.
void RunOverPixels(BenchFrame& frame) {
    const StretchParams params = BothValleysParams();
    uint16_t* const pixels = frame.pixels.data();
    int32_t low = 0;
    int32_t top = 0;
    FindOccupiedRange(pixels, frame.width, frame.height, kBenchMaxValue, kLimit, low, top);
    StretchSegment segment;
    FindStretchSegments(pixels, segment, frame.width, frame.height, kBenchMaxValue, 0, top,
                        params.STRETCH_LIMITBIN);
    const int32_t leftLen = std::min(params.LEFT_LEN_LIMIT, segment.left);
    const int32_t rightLen = std::min(params.RIGHT_LEN_LIMIT, kBenchMaxValue - segment.right);
    const std::vector<int32_t> table =
        BuildStretchCurve(pixels, frame.width, frame.height, kBenchMaxValue, segment.left, segment.right, 4.0,
                          4.0, leftLen, kBenchMaxValue + 1 - leftLen - rightLen, rightLen);
    std::vector<uint16_t> entries(table.size());
    std::transform(table.begin(), table.end(), entries.begin(), LowBits16);
    ApplyLookupTable(pixels, frame.width, frame.height, entries);
    ApplyLookupTable(
        pixels, frame.width, frame.height,
        BuildLinearCurve(pixels, frame.width, frame.height, kBenchMaxValue, kBenchMaxValue, 0, 0));
}

// Counted once and mapped once.
void RunPlanned(BenchFrame& frame) {
    TonedFrame plan({frame.pixels.data(), frame.width, frame.height});
    AddStretchCurve(plan, kBenchMaxValue, BuildSegmentCurve(plan, kBenchMaxValue, BothValleysParams()).curve);
    AddRestretch(plan, kBenchMaxValue, 2);
    plan.Read();
}

void BenchWholeStage(benchmark::State& state, void (*run)(BenchFrame& frame)) {
    const BenchFrame original = MakeNoiseFrame();
    BenchFrame frame = original;
    for (auto _ : state) {
        state.PauseTiming();
        frame.pixels = original.pixels;
        state.ResumeTiming();
        run(frame);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK_CAPTURE(BenchWholeStage, overPixels, RunOverPixels)
    ->Name("StretchCurve/stage/overPixels")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BenchWholeStage, planned, RunPlanned)
    ->Name("StretchCurve/stage/planned")
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
