// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "operators/box_mean/BoxMean.h"
#include "operators/box_mean/BoxMeanSchedule.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr size_t kGuards = 32;
constexpr uint16_t kGuard = 0xA5C3;

// Runs a variant into a result between guards, once from a frame of exact size and once in place, and gives
// all of both back, guards included.
std::vector<uint16_t> Run(const BoxMeanVariant& variant, const Frame& frame, int32_t radius) {
    const size_t count = frame.pixels.size();
    std::vector<uint16_t> results(2 * count + 3 * kGuards, kGuard);
    uint16_t* apart = results.data() + kGuards;
    uint16_t* inPlace = apart + count + kGuards;
    std::copy(frame.pixels.begin(), frame.pixels.end(), inPlace);
    variant.run({frame.Data(), apart, frame.width, frame.height, radius});
    variant.run({inPlace, inPlace, frame.width, frame.height, radius});
    return results;
}

void ExpectAllVariantsEqual(const Frame& frame, int32_t radius) {
    const std::vector<uint16_t> expected = Run(BoxMeanVariants().front(), frame, radius);
    for (const BoxMeanVariant& variant : BoxMeanVariants().subspan(1)) {
        ASSERT_EQ(expected, Run(variant, frame, radius))
            << variant.name << ' ' << frame.width << " x " << frame.height << ", radius " << radius;
    }
}

Frame Extremes(int32_t width, int32_t height, uint16_t top) {
    Frame frame = Noise(width, height, 1, 20240504);
    for (uint16_t& pixel : frame.pixels) pixel = pixel == 0 ? uint16_t{0} : top;
    return frame;
}

TEST(BoxMeanVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(BoxMeanVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(BoxMeanVariants, TheLastOneRuns) {
    Frame frame = Noise(9, 7, 4095, 5);
    Frame means(9, 7);
    ExpectLastFormRuns(BoxMeanVariants, 1, [&] { BoxMean(frame.Data(), means.Data(), 9, 7, 2); });
    ExpectLastFormRuns(BoxMeanVariants, 1, [&] { BoxMeanInPlace(frame.Data(), 9, 7, 2); });
}

TEST(BoxMeanVariants, EverySmallSideGivesTheReferenceBits) {
    for (int32_t side = 1; side <= 70; ++side) {
        for (const int32_t radius : {1, 2, 7, 40}) {
            ExpectAllVariantsEqual(Noise(side, 6, 65535, 20240505), radius);
            ExpectAllVariantsEqual(Noise(5, side, 4095, 20240506), radius);
        }
        ExpectAllVariantsEqual(Flat(side, 4, 65535), 3);
        ExpectAllVariantsEqual(Flat(side, 4, 0), 3);
        if (HasFatalFailure()) return;
    }
}

// Sums are held in 32 bits up to the radius 16383, in 64 beyond.
TEST(BoxMeanVariants, BothSidesOfTheRangeOfSumsGiveTheReferenceBits) {
    for (const uint16_t top : {uint16_t{4095}, uint16_t{65535}}) {
        for (const int32_t radius :
             {1, 3, 7, 8, 9, 31, 16382, 16383, 16384, std::numeric_limits<int32_t>::max()}) {
            ExpectAllVariantsEqual(Noise(67, 19, top, 20240507), radius);
            ExpectAllVariantsEqual(Extremes(131, 5, top), radius);
            ExpectAllVariantsEqual(Flat(33, 3, top), radius);
            if (HasFatalFailure()) return;
        }
    }
}

// The product is to equal the quotient for each sum below 2^31; it errs, if at all, just below or at a whole
// multiple of the window, and the more so the larger the multiple.
TEST(BoxMeanVariants, DivisionByAProductIsExact) {
    for (int32_t window = 3; window <= 32767; window += 2) {
        const auto [factor, shift] = MakeWindowDivision(window);
        const auto divisor = static_cast<uint32_t>(window);
        const uint32_t largest = (uint32_t{1} << 31U) / divisor * divisor;
        for (const uint32_t sum :
             {0U, divisor - 1, divisor, largest / 2 / divisor * divisor, largest - divisor, largest - 1}) {
            ASSERT_EQ(uint64_t{sum} * factor >> 32U >> shift, sum / divisor) << sum << " / " << divisor;
        }
    }
}

// For each window the brightest frame that 16 bits are used for, so with all sums that can come of it.
TEST(BoxMeanVariants, NarrowDivisionByAProductIsExact) {
    for (const int32_t window : {3, 5, 7, 9, 11, 13, 15, 17, 31, 33, 63, 65, 255, 257, 1001, 21845, 32767}) {
        int32_t largestPixel = 0xFFFF / window;
        std::optional<WindowDivision> division = MakeNarrowWindowDivision(window, largestPixel);
        while (!division && largestPixel > 0) division = MakeNarrowWindowDivision(window, --largestPixel);
        ASSERT_TRUE(division.has_value()) << window;
        for (int32_t sum = 0; sum <= window * largestPixel; ++sum) {
            ASSERT_EQ(DivideByWindow(static_cast<uint16_t>(sum), *division), sum / window)
                << sum << " / " << window;
        }
    }
}

TEST(BoxMeanVariants, NarrowSumsServeTwelveBitsUpToRadiusSeven) {
    for (int32_t radius = 1; radius <= 7; ++radius)
        EXPECT_TRUE(MakeNarrowWindowDivision(2 * radius + 1, 4095)) << radius;
    EXPECT_FALSE(MakeNarrowWindowDivision(17, 4095));
    EXPECT_TRUE(MakeNarrowWindowDivision(3, 21845));
    EXPECT_FALSE(MakeNarrowWindowDivision(3, 21846));
    EXPECT_FALSE(MakeNarrowWindowDivision(32767, 65535));
    // 43687 * 6 is below 2^18, 43694 * 6 is not: here the product gives out before the 16 bits do.
    EXPECT_TRUE(MakeNarrowWindowDivision(7, 6241));
    EXPECT_FALSE(MakeNarrowWindowDivision(7, 6242));
}

// The brightest pixel stands at each place of a row and decides between sums of 16 bits and of 32.
TEST(BoxMeanVariants, BothSidesOfNarrowSumsGiveTheReferenceBits) {
    for (const auto& [radius, top] :
         {std::pair{1, 21845}, {1, 21846}, {7, 4369}, {7, 4370}, {3, 6241}, {3, 6242}}) {
        const auto brightest = static_cast<uint16_t>(top);
        ExpectAllVariantsEqual(Flat(75, 9, brightest), radius);
        ExpectAllVariantsEqual(Extremes(75, 9, brightest), radius);
        ExpectAllVariantsEqual(Noise(75, 9, brightest, 20240514), radius);
        for (int32_t x = 0; x < 40; ++x)
            ExpectAllVariantsEqual(Impulse(40, 3, x, x % 3, brightest, 100), radius);
        if (HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace vastrelline
