// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "operators/tile_equalise/ClaheFrame.h"
#include "platform/InstructionSet.h"
#include "stages/hdr/FusionKernels.h"
#include "stages/hdr/GaussianSurface.h"
#include "stages/hdr/HdrFrame.h"
#include "stages/hdr/LayerFusion.h"
#include "support/TransformFusion.h"

namespace vastrelline {
namespace {

constexpr int32_t kBlockSize = 128;
constexpr int32_t kBins = 256;
constexpr double kSlope = 1.375;

// Cut down at the right and at the bottom, so that sizes with large primes can stand beside their neighbours.
BenchFrame MakeFrame(int32_t fewerColumns, int32_t fewerRows) {
    BenchFrame frame = MakeNoiseFrame();
    frame.width -= fewerColumns;
    frame.height -= fewerRows;
    frame.pixels.resize(static_cast<size_t>(frame.width) * static_cast<size_t>(frame.height));
    return frame;
}

void BenchHdr(benchmark::State& state, InstructionSet set, int32_t fewerColumns, int32_t fewerRows) {
    const BenchFrame original = MakeFrame(fewerColumns, fewerRows);
    const ScopedInstructionSet limit(set);
    BenchFrame frame = original;
    for (auto _ : state) {
        state.PauseTiming();
        frame.pixels = original.pixels;
        state.ResumeTiming();
        HdrFrame(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, kBlockSize, kBins, kSlope, 1,
                 1, 0.9F, 0.005F, 0.3F, 0.3F, 20);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

void BenchFusion(benchmark::State& state, InstructionSet set, int32_t fewerColumns, int32_t fewerRows) {
    const BenchFrame original = MakeFrame(fewerColumns, fewerRows);
    BenchFrame hed = original;
    ClaheFrame(hed.pixels.data(), hed.width, hed.height, kBenchMaxValue, kBlockSize, kBins, kSlope);
    const ScopedInstructionSet limit(set);
    BenchFrame frame = original;
    for (auto _ : state) {
        state.PauseTiming();
        frame.pixels = original.pixels;
        state.ResumeTiming();
        FuseLayers(frame.pixels.data(), hed.pixels.data(), frame.width, frame.height, 0, kBenchMaxValue, 1, 1,
                   0.9F, 0.005F, 0.3F, 0.3F, 20);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

// The plain form, on transforms of the whole image, equalisation included.
void BenchHdrByTransforms(benchmark::State& state, int32_t fewerColumns, int32_t fewerRows) {
    const BenchFrame original = MakeFrame(fewerColumns, fewerRows);
    BenchFrame normal = original;
    for (auto _ : state) {
        state.PauseTiming();
        normal.pixels = original.pixels;
        BenchFrame hed = original;
        state.ResumeTiming();
        ClaheFrame(hed.pixels.data(), hed.width, hed.height, kBenchMaxValue, kBlockSize, kBins, kSlope);
        by_transforms::FuseLayers<float>(normal.pixels, hed.pixels, normal.width, normal.height,
                                         {0, kBenchMaxValue});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, normal);
}

void BenchSurfaceSum(benchmark::State& state) {
    const BenchFrame frame = MakeFrame(0, 0);
    for (auto _ : state) benchmark::DoNotOptimize(SumGaussianSurface(frame.width, frame.height, 65));
    ReportPixels(state, frame);
}

struct BenchCut {
    const char* name;
    int32_t fewerColumns;
    int32_t fewerRows;
};

// Of 1300 x 1668: itself, odd sizes, and the next primes.
constexpr BenchCut kCuts[] = {{"whole", 0, 0}, {"odd", 1, 1}, {"prime", 3, 5}};

const bool kRegistered = [] {
    for (const BenchCut& cut : kCuts) {
        const auto add = [&](const std::string& name, auto function, auto... arguments) {
            benchmark::RegisterBenchmark((name + "/" + cut.name).c_str(), function, arguments...,
                                         cut.fewerColumns, cut.fewerRows)
                ->Unit(benchmark::kMillisecond);
        };
        add("HdrFrame/transforms", BenchHdrByTransforms);
        for (const FusionVariant& variant : FusionVariants()) {
            add(std::string("HdrFrame/") + variant.name, BenchHdr, variant.needs);
            add(std::string("LayerFusion/") + variant.name, BenchFusion, variant.needs);
        }
    }
    benchmark::RegisterBenchmark("GaussianSurface/sum", BenchSurfaceSum)->Unit(benchmark::kMillisecond);
    return true;
}();

}  // namespace
}  // namespace vastrelline
