// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "operators/median/MedianFilter.h"
#include "operators/median/MedianWindow.h"

namespace vastrelline {
namespace {

struct WindowSize {
    int32_t width;
    int32_t height;
};

void BenchMedian(benchmark::State& state, const MedianVariant& variant, WindowSize window) {
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> result(frame.pixels.size());
    for (auto _ : state) {
        FilterMedianWith(variant, {frame.pixels.data(), result.data(), frame.width, frame.height,
                                   window.width, window.height, 0, frame.height - 1});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

// As the stages call it.
void BenchInPlace(benchmark::State& state, int32_t (*filter)(uint16_t*, int32_t, int32_t, int32_t),
                  int32_t mask) {
    BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state) {
        filter(frame.pixels.data(), frame.width, frame.height, mask);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const WindowSize window :
         {WindowSize{3, 3}, WindowSize{5, 5}, WindowSize{7, 7}, WindowSize{9, 9}, WindowSize{15, 15},
          WindowSize{4, 4}, WindowSize{9, 1}, WindowSize{1, 9}, WindowSize{31, 31}, WindowSize{63, 63},
          WindowSize{65, 65}, WindowSize{127, 127}, WindowSize{301, 301}}) {
        const std::string size = std::to_string(window.width) + 'x' + std::to_string(window.height);
        for (const MedianVariant& variant : MedianVariants()) {
            // Gathering and sorting such windows takes minutes.
            if (variant.run == FilterMedianScalar && window.width > 15) continue;
            const std::string name = std::string("Median/") + variant.name + '/' + size;
            benchmark::RegisterBenchmark(name.c_str(), BenchMedian, variant, window)
                ->Unit(benchmark::kMillisecond);
        }
    }
    for (const int32_t mask : {3, 5, 9, 31, 301}) {
        const std::string name = "MedianSquare/" + std::to_string(mask);
        benchmark::RegisterBenchmark(name.c_str(), BenchInPlace, MedianSquare, mask)
            ->Unit(benchmark::kMillisecond);
    }
    for (const int32_t mask : {3, 5, 9}) {
        const std::string size = std::to_string(mask);
        benchmark::RegisterBenchmark(("MedianRows/" + size).c_str(), BenchInPlace, MedianRows, mask)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("MedianColumns/" + size).c_str(), BenchInPlace, MedianColumns, mask)
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
