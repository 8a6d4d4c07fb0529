// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/resample/Resize.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr size_t kGuards = 16;
constexpr uint16_t kGuard = 0xA5C3;

// Runs a variant into a result between guards and gives all of it back, guards included.
std::vector<uint16_t> Run(const ResizeVariant& variant, const Frame& source, double scale) {
    const auto width = static_cast<int32_t>(source.width * scale);
    const auto height = static_cast<int32_t>(source.height * scale);
    const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
    std::vector<uint16_t> result(count + 2 * kGuards, kGuard);
    variant.run({source.Data(), source.width, source.height, scale, result.data() + kGuards, width, height});
    return result;
}

void ExpectAllVariantsEqual(const Frame& source) {
    for (const double scale :
         {0.5, 2.0, 1.0, 1.0 / 3, 3.0, 4.0, 5.0, 7.0, 9.0, 0.7, 1.5, 1.0 / 7, 1.0 / 49, 2.5}) {
        const std::vector<uint16_t> expected = Run(ResizeVariants().front(), source, scale);
        EXPECT_EQ(kGuards,
                  static_cast<size_t>(std::count(expected.begin(), expected.begin() + kGuards, kGuard)));
        EXPECT_EQ(kGuards, static_cast<size_t>(std::count(expected.end() - kGuards, expected.end(), kGuard)));
        for (const ResizeVariant& variant : ResizeVariants().subspan(1)) {
            ASSERT_EQ(expected, Run(variant, source, scale))
                << variant.name << ' ' << source.width << " x " << source.height << ", scale " << scale;
        }
    }
}

Frame Extremes(int32_t width, int32_t height) {
    Frame frame = Noise(width, height, 1, 20240504);
    for (uint16_t& pixel : frame.pixels) pixel = pixel == 0 ? uint16_t{0} : uint16_t{65535};
    return frame;
}

TEST(ResizeVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(ResizeVariants, {"scalar", "baseline", "avx2"});
}

TEST(ResizeVariants, TheLastOneRuns) {
    Frame frame = Noise(12, 9, 4095, 5);
    ExpectLastFormRuns(ResizeVariants, 1, [&] { ResizeBilinear(frame.Data(), 12, 9, 0.5); });
    // Down and up again.
    ExpectLastFormRuns(ResizeVariants, 2, [&] { ReducedScaleGaussian(frame.Data(), 12, 9, 4095, 3.0, 3); });
}

TEST(ResizeVariants, EverySmallSideGivesTheReferenceBits) {
    for (int32_t side = 1; side <= 70; ++side) {
        for (const int32_t other : {1, 2, 5}) {
            ExpectAllVariantsEqual(Noise(side, other, 65535, 20240505));
            ExpectAllVariantsEqual(Noise(other, side, 65535, 20240506));
        }
        ExpectAllVariantsEqual(Extremes(side, 4));
        ExpectAllVariantsEqual(Flat(side, 4, 65535));
        ExpectAllVariantsEqual(Flat(side, 4, 0));
        if (HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace vastrelline
