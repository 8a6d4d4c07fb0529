// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "platform/InstructionSet.h"
#include "sensor/MaskedPixels.h"
#include "support/MaskFrames.h"

namespace vastrelline {
namespace {

// Two triangular corners at the top, as rounded ones lie in a frame.
std::vector<uint16_t> MakeCorners(const BenchFrame& frame) {
    constexpr int32_t kCorner = 150;
    std::vector<uint16_t> mask(frame.pixels.size());
    for (int32_t y = 0; y < kCorner && y < frame.height; ++y) {
        for (int32_t x = 0; x < kCorner - y && x < frame.width; ++x) {
            uint16_t* const row = mask.data() + static_cast<ptrdiff_t>(y) * frame.width;
            row[x] = kMasked;
            row[frame.width - 1 - x] = kMasked;
        }
    }
    return mask;
}

void BenchFill(benchmark::State& state, InstructionSet set) {
    const ScopedInstructionSet limit(set);
    BenchFrame frame = MakeNoiseFrame();
    const std::vector<uint16_t> mask = MakeCorners(frame);
    for (auto _ : state) {
        FillMaskedPixels(frame.pixels.data(), mask.data(), frame.width, frame.height, kBenchMaxValue);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

void BenchRestore(benchmark::State& state, InstructionSet set, int32_t flag) {
    const ScopedInstructionSet limit(set);
    BenchFrame frame = MakeNoiseFrame();
    const RowMask mask = MaskOfFrame(MakeCorners(frame).data(), frame.width, frame.height);
    for (auto _ : state) {
        RestoreMaskedPixels(frame.pixels.data(), mask, flag);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const MaskedPixelsVariant& variant : MaskedPixelsVariants()) {
        const std::string form = variant.name;
        benchmark::RegisterBenchmark(("MaskedPixels/fill/" + form).c_str(), BenchFill, variant.needs)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("MaskedPixels/restore/" + form).c_str(), BenchRestore, variant.needs, 1)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("MaskedPixels/restore_bright/" + form).c_str(), BenchRestore,
                                     variant.needs, 0)
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
