// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "stages/pyramid/BandKernels.h"
#include "stages/pyramid/Pyramid.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr size_t kGuards = 16;
constexpr uint16_t kGuard = 0xA5C3;

// Values between guards.
std::vector<uint16_t> Guarded(const std::vector<uint16_t>& values) {
    std::vector<uint16_t> guarded(kGuards, kGuard);
    guarded.insert(guarded.end(), values.begin(), values.end());
    guarded.insert(guarded.end(), kGuards, kGuard);
    return guarded;
}

std::vector<int16_t> Signed(const std::vector<uint16_t>& values) {
    std::vector<int16_t> band;
    for (const uint16_t value : values) band.push_back(static_cast<int16_t>(value));
    return band;
}

// A response to every 16-bit value, the one for 0 in the middle.
std::vector<int16_t> MakeResponses() {
    std::vector<int16_t> responses;
    for (int32_t value = INT16_MIN; value <= INT16_MAX; ++value)
        responses.push_back(static_cast<int16_t>(value * 7 + 3));
    return responses;
}

std::vector<std::vector<uint16_t>> MakeContents(int32_t count) {
    Frame extremes = Noise(count, 1, 1, 20240511);
    for (uint16_t& value : extremes.pixels) value = value == 0 ? uint16_t{0x8000} : uint16_t{0x7FFF};
    return {Flat(count, 1, 0).pixels, Flat(count, 1, 65535).pixels, extremes.pixels,
            Noise(count, 1, 300, 3).pixels, Noise(count, 1, 65535, 4).pixels};
}

TEST(BandVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(BandVariants, {"scalar", "baseline", "avx2", "avx512"});
}

// One pick for the pyramid, one for each of two bands.
TEST(BandVariants, TheLastOneRuns) {
    Frame frame = Noise(9, 7, 4095, 5);
    ExpectLastFormRuns(BandVariants, 3, [&] {
        TonedFrame toned({frame.Data(), frame.width, frame.height});
        PyramidProcess(toned, 4095, BandCurve::Power, {}, {TailMode::Pass, true}, nullptr);
    });
}

TEST(BandKernels, SumsAndDifferencesAreThese) {
    for (const BandVariant& variant : BandVariants()) {
        std::vector<uint16_t> level = {5, 3, 65535, 0, 40000};
        const std::vector<uint16_t> coarse = {3, 5, 0, 65535, 4000};
        variant.run->subtract(level.data(), coarse.data(), level.size());
        EXPECT_EQ(Signed(level), (std::vector<int16_t>{2, -2, -1, 1, -29536})) << variant.name;
        const std::vector<int16_t> band = {2, -2, 1, 0, -32768, 100, -4095};
        const std::vector<uint16_t> below = {3, 1, 4095, 4095, 65535, 3995, 4095};
        std::vector<uint16_t> sums(band.size());
        variant.run->add(below.data(), band.data(), band.size(), 4095, sums.data());
        EXPECT_EQ(sums, (std::vector<uint16_t>{5, 0, 4095, 4095, 4095, 4095, 0})) << variant.name;
    }
}

TEST(BandKernels, RangeKeepsItsStartWhereNoValueIsBeyond) {
    for (const BandVariant& variant : BandVariants()) {
        const std::vector<int16_t> band = {50, 60, 55};
        const BandRange range = variant.run->findRange(band.data(), 3, {40, -40});
        EXPECT_EQ(std::make_pair(range.min, range.max), std::make_pair(40, 60)) << variant.name;
        const BandRange none = variant.run->findRange(band.data(), 0, {40, -40});
        EXPECT_EQ(std::make_pair(none.min, none.max), std::make_pair(40, -40)) << variant.name;
    }
}

TEST(BandKernels, EveryVariantGivesTheReferenceBitsAndWritesNothingElse) {
    const std::vector<int16_t> responses = MakeResponses();
    const BandKernels& reference = *BandVariants().front().run;
    for (int32_t count = 0; count <= 67; ++count) {
        const std::vector<uint16_t> coarse = Noise(count, 1, 65535, 5).pixels;
        for (const std::vector<uint16_t>& content : MakeContents(count)) {
            const auto run = [&](const BandKernels& kernels, auto kernel) {
                std::vector<uint16_t> values = Guarded(content);
                kernel(kernels, values.data() + kGuards, static_cast<size_t>(count));
                return values;
            };
            const auto subtract = [&](const BandKernels& kernels, uint16_t* values, size_t size) {
                kernels.subtract(values, coarse.data(), size);
            };
            const auto remap = [&](const BandKernels& kernels, uint16_t* values, size_t size) {
                kernels.remap(reinterpret_cast<int16_t*>(values), size, responses.data() + 32768);
            };
            const std::vector<int16_t> band = Signed(content);
            const BandRange range = reference.findRange(band.data(), band.size(), {9, -9});
            for (const BandVariant& variant : BandVariants().subspan(1)) {
                const BandKernels& kernels = *variant.run;
                SCOPED_TRACE(testing::Message() << variant.name << ' ' << count);
                ASSERT_EQ(run(reference, subtract), run(kernels, subtract));
                ASSERT_EQ(run(reference, remap), run(kernels, remap));
                for (const int32_t maxValue : {-1, 0, 4095, 65535, 100000}) {
                    const auto addInPlace = [&](const BandKernels& which, uint16_t* values, size_t size) {
                        which.add(coarse.data(), reinterpret_cast<int16_t*>(values), size, maxValue, values);
                    };
                    const auto addApart = [&](const BandKernels& which, uint16_t* values, size_t size) {
                        which.add(coarse.data(), band.data(), size, maxValue, values);
                    };
                    ASSERT_EQ(run(reference, addInPlace), run(kernels, addInPlace));
                    ASSERT_EQ(run(reference, addInPlace), run(kernels, addApart));
                }
                const BandRange found = kernels.findRange(band.data(), band.size(), {9, -9});
                ASSERT_EQ(std::make_pair(range.min, range.max), std::make_pair(found.min, found.max));
            }
        }
    }
}

TEST(BandKernels, EveryVariantCountsTheSame) {
    for (const auto& [first, steps] : {std::pair{-200, 400}, std::pair{100, 300}, std::pair{-500, 90}}) {
        std::vector<int16_t> band;
        for (const uint16_t value : Noise(999, 1, static_cast<uint16_t>(steps - 1), 6).pixels)
            band.push_back(static_cast<int16_t>(first + value));
        for (const BandVariant& variant : BandVariants()) {
            const std::vector<uint32_t> bins =
                variant.run->countValues(band.data(), band.size(), {first, first + steps - 1});
            ASSERT_EQ(bins.size(), static_cast<size_t>(steps));
            for (int32_t bin = 0; bin < steps; ++bin) {
                ASSERT_EQ(bins[static_cast<size_t>(bin)], std::count(band.begin(), band.end(), first + bin))
                    << variant.name << ' ' << first + bin;
            }
        }
    }
}

}  // namespace
}  // namespace vastrelline
