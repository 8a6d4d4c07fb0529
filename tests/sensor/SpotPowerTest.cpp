// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "sensor/SpotCorrection.h"
#include "sensor/SpotPower.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr size_t kGuards = 40;
constexpr uint16_t kGuard = 0xA5C3;

// Runs a form over pixels between guards and gives all of them back, guards included.
std::vector<uint16_t> Run(const SpotPowerVariant& variant, const std::vector<uint16_t>& pixels,
                          const std::vector<uint16_t>& means, const SpotPowerTables& tables) {
    std::vector<uint16_t> result(kGuards, kGuard);
    result.insert(result.end(), pixels.begin(), pixels.end());
    result.insert(result.end(), kGuards, kGuard);
    variant.run({result.data() + kGuards, means.data(), pixels.size()}, tables);
    return result;
}

void ExpectAllVariantsEqual(const std::vector<uint16_t>& pixels, const std::vector<uint16_t>& means,
                            const SpotPowerTables& tables) {
    const std::vector<uint16_t> expected = Run(SpotPowerVariants().front(), pixels, means, tables);
    for (const SpotPowerVariant& variant : SpotPowerVariants().subspan(1)) {
        ASSERT_EQ(expected, Run(variant, pixels, means, tables))
            << variant.name << ", " << pixels.size() << " pixels, peak " << tables.peak;
    }
}

// Exponents from 1.5 down to about 0.1, as means from 0 to two and a quarter peaks have them.
std::vector<float> ExponentsOf(int32_t count) {
    std::vector<float> exponents;
    for (int32_t i = 0; i < count; ++i)
        exponents.push_back(std::pow(1.5F, 1 - 6.5F * static_cast<float>(i) / static_cast<float>(count)));
    return exponents;
}

// 0.25 to the power 1.5 is 0.125, to 0.5 it is 0.5; the ends stay.
TEST(SpotPower, RaisesTheShareOfThePeak) {
    const SpotPowerTables tables = MakeSpotPowerTables(100, {1.5F, 0.5F, 1.0F});
    for (const SpotPowerVariant& variant : SpotPowerVariants()) {
        std::vector<uint16_t> pixels{25, 25, 37, 0, 0, 100, 100};
        const std::vector<uint16_t> means{0, 1, 2, 0, 1, 0, 1};
        variant.run({pixels.data(), means.data(), pixels.size()}, tables);
        pixels.erase(pixels.begin() + 2);  // 37 as a float share of 100 may fall just below itself
        EXPECT_EQ(pixels, (std::vector<uint16_t>{12, 50, 0, 0, 100, 100})) << variant.name;
    }
}

TEST(SpotPowerVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(SpotPowerVariants, {"scalar", "baseline", "avx2"});
}

TEST(SpotPowerVariants, TheLastOneRuns) {
    Frame frame = Noise(9, 7, 4095, 5);
    ExpectLastFormRuns(SpotPowerVariants, 1,
                       [&] { ApplySpotCorrection(frame.Data(), 3, frame.width, frame.height, 1.5F); });
}

TEST(SpotPower, EveryLengthGivesTheReferenceBits) {
    const SpotPowerTables tables = MakeSpotPowerTables(4095, ExponentsOf(256));
    for (int32_t width = 0; width <= 40; ++width)
        ExpectAllVariantsEqual(Noise(width, 1, 4095, 1).pixels, Noise(width, 1, 255, 2).pixels, tables);
    for (const int32_t width : {511, 512, 513, 1023, 1024, 1025})
        ExpectAllVariantsEqual(Noise(width, 1, 4095, 3).pixels, Noise(width, 1, 255, 4).pixels, tables);
}

// All levels with several exponents each; in a dark frame powers lie near whole numbers more often.
TEST(SpotPower, EveryLevelGivesTheReferenceBits) {
    for (const int32_t peak : {2, 3, 4, 7, 100, 255, 1000, 4095, 16383, 65535}) {
        const SpotPowerTables tables = MakeSpotPowerTables(peak, ExponentsOf(512));
        for (int32_t pass = 0; pass < (peak < 300 ? 64 : 2); ++pass) {
            std::vector<uint16_t> pixels;
            for (int32_t level = 0; level <= peak; ++level) pixels.push_back(static_cast<uint16_t>(level));
            const auto count = static_cast<int32_t>(pixels.size());
            ExpectAllVariantsEqual(pixels, Noise(count, 1, 511, static_cast<uint32_t>(pass)).pixels, tables);
        }
        if (HasFatalFailure()) return;
    }
}

// The exponent 1 gives whole numbers, or falls short of them by a rounding.
TEST(SpotPower, WholePowersGiveTheReferenceBits) {
    for (const int32_t peak : {100, 4095, 65535}) {
        const SpotPowerTables tables = MakeSpotPowerTables(peak, {1.0F, 0.5F});
        std::vector<uint16_t> pixels;
        for (int32_t level = 0; level <= peak; ++level) pixels.push_back(static_cast<uint16_t>(level));
        for (const uint16_t mean : {uint16_t{0}, uint16_t{1}})
            ExpectAllVariantsEqual(pixels, std::vector<uint16_t>(pixels.size(), mean), tables);
    }
}

}  // namespace
}  // namespace vastrelline
