// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "support/BenchSize.h"

namespace vastrelline {

constexpr uint16_t kBenchMaxValue = 4095;  // 12 bits

struct BenchFrame {
    int32_t width;
    int32_t height;
    std::vector<uint16_t> pixels;
};

// The frame that pixel benchmarks work on: noise over all of 0..kBenchMaxValue, the same in every run. Noise
// is the hard case for tables and branches; of real frames each pixel is near to the last one.
inline BenchFrame MakeNoiseFrame() {
    const BenchSize size = FrameSizeOfBench();
    std::mt19937 random(20240501);
    BenchFrame frame{size.width, size.height, {}};
    frame.pixels.resize(static_cast<size_t>(size.width) * static_cast<size_t>(size.height));
    for (uint16_t& pixel : frame.pixels) pixel = static_cast<uint16_t>((random() >> 8U) & kBenchMaxValue);
    return frame;
}

// Noise on a slope over half of the range: neighbourhoods differ from each other as those of real frames do,
// and what a filter takes off them is as narrow.
inline BenchFrame MakeSoftFrame() {
    BenchFrame frame = MakeNoiseFrame();
    const size_t count = frame.pixels.size();
    for (size_t i = 0; i < count; ++i) {
        frame.pixels[i] = static_cast<uint16_t>(frame.pixels[i] / 16 + i * (kBenchMaxValue / 2) / count);
    }
    return frame;
}

// Reports the pixels per second of a benchmark that goes over the whole frame once per iteration.
inline void ReportPixels(benchmark::State& state, const BenchFrame& frame) {
    state.counters["pixels_per_second"] = benchmark::Counter(static_cast<double>(frame.pixels.size()),
                                                             benchmark::Counter::kIsIterationInvariantRate);
}

}  // namespace vastrelline
