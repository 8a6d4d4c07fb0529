// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "stages/hdr/FusionKernels.h"
#include "stages/hdr/LayerFusion.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr size_t kGuards = 16;
constexpr int32_t kRows = 7;

template <typename Value>
std::vector<uint8_t> BytesOf(const std::vector<Value>& values) {
    std::vector<uint8_t> bytes(values.size() * sizeof(Value));
    std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

// What the kernels read: rows of pixels and floats of exactly the width, so that a read past the end is seen.
struct KernelInput {
    int32_t count;
    std::vector<uint16_t> a;
    std::vector<uint16_t> b;
    std::vector<std::vector<float>> rows;
    std::vector<double> cosines;
    std::vector<double> sines;
    std::vector<float> weights;
};

KernelInput MakeInput(std::mt19937& random, int32_t count, bool extreme) {
    const auto number = [&] { return static_cast<double>(random()) / 4294967296.0 - 0.4; };
    KernelInput input{count, {}, {}, {}, {}, {}, {}};
    for (int32_t x = 0; x < count; ++x) {
        const auto level = static_cast<uint16_t>(random() >> 16U);
        input.a.push_back(extreme ? (level % 2 != 0 ? 65535 : 0) : level);
        input.b.push_back(static_cast<uint16_t>(random() >> 20U));
        input.cosines.push_back(number());
        input.sines.push_back(number());
    }
    for (int32_t r = 0; r < 2 * kRows; ++r) {
        std::vector<float> row;
        for (int32_t x = 0; x < count; ++x)
            row.push_back(static_cast<float>(number() * (extreme ? 1e38 : 3)));
        input.rows.push_back(row);
        input.weights.push_back(static_cast<float>(number()));
    }
    return input;
}

// Runs every kernel once, each into a row between guards; all that they wrote, guards included.
std::vector<uint8_t> RunAll(const FusionKernels& kernels, const KernelInput& input) {
    const auto count = static_cast<size_t>(input.count);
    std::vector<uint8_t> all;
    const auto keep = [&](const auto& values) {
        const std::vector<uint8_t> bytes = BytesOf(values);
        all.insert(all.end(), bytes.begin(), bytes.end());
    };
    std::vector<const float*> rows;
    for (const std::vector<float>& row : input.rows) rows.push_back(row.data());
    const FusionMix mix = {17, 4095, 0.3F, -0.7F};
    const auto floats = [&](auto run) {
        std::vector<float> out(count + 2 * kGuards, 1234.5F);
        run(out.data() + kGuards);
        keep(out);
    };
    floats([&](float* out) { kernels.widenRow(input.a.data(), 40000, input.count, out); });
    floats([&](float* out) { kernels.mixRows(input.a.data(), input.b.data(), mix, input.count, out); });
    floats([&](float* out) {
        kernels.combineRows(rows.data(), input.weights.data(), 2 * kRows, input.count, out);
    });
    floats([&](float* out) {
        kernels.combinePairs(rows.data(), input.weights.data(), kRows, input.count, out);
    });
    FusionRange range = {1e3F, -1e3F};
    floats([&](float* out) {
        kernels.sumLayers(input.a.data(), input.b.data(), mix, rows[0], input.count, out, range);
    });
    keep(std::vector<float>{range.lowest, range.highest});
    std::vector<double> sums(2 * size_t{kPartialTurns} + 2 * kGuards, 5);
    kernels.turnRow(input.a.data(), input.cosines.data(), input.sines.data(), input.count,
                    sums.data() + kGuards);
    keep(sums);
    std::vector<double> real(count + 2 * kGuards, 0.1);
    std::vector<double> imaginary(count + 2 * kGuards, 0.2);
    kernels.turnRowPair(input.a.data(), input.b.data(), 0.3, -0.7, input.count, real.data() + kGuards,
                        imaginary.data() + kGuards);
    keep(real);
    keep(imaginary);
    std::vector<float> sumsToStretch = input.rows[0];
    if (count > 2) {
        sumsToStretch[1] = std::numeric_limits<float>::quiet_NaN();
        sumsToStretch[2] = std::numeric_limits<float>::infinity();
    }
    for (const FusionStretch& stretch :
         {FusionStretch{0.4, 3, 0.9, 0.01, 41, 3700}, FusionStretch{0, 0, 1, 0, 0, 65535},
          FusionStretch{0, 1, 1, 0, -70000, 70000}}) {
        std::vector<uint16_t> pixels(count + 2 * kGuards, 0xA5C3);
        kernels.stretchRow(sumsToStretch.data(), stretch, input.count, pixels.data() + kGuards);
        keep(pixels);
    }
    return all;
}

TEST(FusionKernels, EveryVariantGivesTheReferenceBitsAndWritesNothingElse) {
    std::mt19937 random(20240602);
    for (const int32_t count : {0, 1, 2, 3, 7, 8, 9, 15, 16, 17, 31, 32, 33, 63, 64, 65, 127, 129, 200}) {
        for (const bool extreme : {false, true}) {
            const KernelInput input = MakeInput(random, count, extreme);
            const std::vector<uint8_t> expected = RunAll(*FusionVariants().front().run, input);
            for (const FusionVariant& variant : FusionVariants())
                EXPECT_EQ(RunAll(*variant.run, input), expected) << variant.name << ' ' << count;
        }
    }
}

TEST(FusionVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(FusionVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(FusionVariants, TheLastOneRuns) {
    Frame normal = Noise(64, 75, 4095, 3);
    const Frame hed = Noise(64, 75, 4095, 4);
    ExpectLastFormRuns(FusionVariants, 1, [&] {
        FuseLayers(normal.Data(), hed.Data(), 64, 75, 0, 4095, 1, 1, 0.9F, 1, 0.3F, 0.3F, 1);
    });
}

TEST(FusionKernels, WholeFusionIsTheSameOnEveryInstructionSet) {
    for (const auto& [width, height] : {std::pair{64, 75}, std::pair{161, 165}, std::pair{97, 54}}) {
        const Frame normal = Noise(width, height, 4095, 3);
        const Frame hed = Noise(width, height, 4095, 4);
        const auto fused = [&](InstructionSet set) {
            const ScopedInstructionSet limit(set);
            Frame frame = normal;
            EXPECT_EQ(
                FuseLayers(frame.Data(), hed.Data(), width, height, 0, 4095, 1, 1, 0.9F, 1, 0.3F, 0.3F, 1),
                1);
            return frame;
        };
        const Frame expected = fused(InstructionSet::Reference);
        for (const InstructionSet set :
             {InstructionSet::Baseline, InstructionSet::Avx2, InstructionSet::Avx512})
            EXPECT_THAT(fused(set), EqualsFrame(expected));
    }
}

TEST(StretchPixel, TruncatesAndHoldsToTheRange) {
    const FusionStretch stretch = {1, 4, 2, 0.25, 1100, 5000};
    EXPECT_EQ(StretchPixel(-1, stretch), 1100);  // 4095 * 0.25 is 1023
    EXPECT_EQ(StretchPixel(0, stretch), 3071);   // 4095 * (1 / 4 * 2 + 0.25) is 3071.25
    EXPECT_EQ(StretchPixel(3, stretch), 5000);   // 4095 * 2.25 is 9213
    EXPECT_EQ(StretchPixel(std::nan(""), stretch), 1100);
    EXPECT_EQ(StretchPixel(1e300, stretch), 1100);  // no 32 bits hold it
}

}  // namespace
}  // namespace vastrelline
