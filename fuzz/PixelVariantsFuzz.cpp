// SPDX-License-Identifier: Apache-2.0

// The kernels that take a row of pixels or go over a frame from the first pixel to the last (range,
// clipped ramp, saturation cap, masked corners, dark area, pre-contrast, power of the spots, row of Sobel
// magnitudes) with arguments from anywhere: every form of each list against its definition. The input's head
// are the pixels, its tail picks the rest, so that a change of that leaves the pixels where they are.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/curves/ClippedRamp.h"
#include "operators/histogram/PixelRange.h"
#include "sensor/MaskedPixels.h"
#include "sensor/SaturationCap.h"
#include "sensor/SpotPower.h"
#include "stages/adaptive_unsharp/SobelMagnitude.h"
#include "stages/clahe/DarkArea.h"
#include "stages/pre_contrast/PreContrast.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

// Three rows, for the kernels that see so many; the others take the first or the first two.
struct Rows {
    int32_t count;
    std::vector<uint16_t> above;
    std::vector<uint16_t> centre;
    std::vector<uint16_t> below;
};

void TestRange(const std::vector<uint16_t>& pixels) {
    RequireEqualForms(PixelRangeVariants(), [&](const PixelRangeVariant& form) {
        const PixelRange range = form.run(pixels.data(), pixels.size());
        return Guarded<int32_t>({range.smallest, range.largest});
    });
}

void TestCap(const Rows& rows, int32_t saturationValue) {
    RequireEqualForms(SaturationCapVariants(), [&](const SaturationCapVariant& form) {
        Guarded<uint16_t> pixels(rows.above);
        form.run(pixels.Data(), pixels.Size(), saturationValue);
        return pixels;
    });
}

void TestRamp(const Rows& rows, uint16_t first, uint16_t second, uint16_t atLow) {
    const ClippedRamp ramp{std::min(first, second), std::max(first, second), atLow, first > second};
    RequireEqualForms(ClippedRampVariants(), [&](const ClippedRampVariant& form) {
        Guarded<uint16_t> pixels(rows.above);
        form.run(pixels.Data(), pixels.Size(), ramp);
        return pixels;
    });
}

// Masked where the row below is at or above a limit, so that all, some or single pixels are.
void TestMasked(const Rows& rows, uint16_t limit) {
    std::vector<uint16_t> mask = rows.below;
    for (uint16_t& pixel : mask) pixel = pixel >= limit ? kMasked : pixel;
    RequireEqualForms(MaskedPixelsVariants(), [&](const MaskedPixelsVariant& form) {
        Guarded<uint16_t> row(rows.above);
        form.run->fillRow(row.Data(), mask.data(), rows.count);
        return row;
    });
    RequireEqualForms(MaskedPixelsVariants(), [&](const MaskedPixelsVariant& form) {
        Guarded<uint16_t> row(rows.above);
        form.run->paint(row.Data(), mask.data(), mask.size(), limit);
        return row;
    });
}

void TestDarkArea(const Rows& rows, uint16_t threshold, int32_t maxValue) {
    RequireEqualForms(DarkAreaVariants(), [&](const DarkAreaVariant& form) {
        Guarded<uint16_t> mask(rows.above.size());
        form.run->mark(rows.above.data(), mask.Size(), threshold, mask.Data());
        return mask;
    });
    std::vector<uint16_t> levels = rows.below;
    for (uint16_t& level : levels) level %= 256;
    RequireEqualForms(DarkAreaVariants(), [&](const DarkAreaVariant& form) {
        Guarded<uint16_t> pixels(rows.above);
        form.run->mix(pixels.Data(), rows.centre.data(), levels.data(), levels.size(), maxValue);
        return pixels;
    });
}

void TestAmplify(const Rows& rows, int32_t maxValue, double ratio) {
    RequireEqualForms(AmplifyVariants(), [&](const AmplifyVariant& form) {
        Guarded<uint16_t> image(rows.above);
        form.run({image.Data(), rows.centre.data(), rows.centre.size(), maxValue, ratio});
        return image;
    });
}

void TestSobelRow(const Rows& rows) {
    if (rows.count < 3) return;
    RequireEqualForms(SobelRowVariants(), [&](const SobelRowVariant& form) {
        Guarded<uint16_t> magnitudes(static_cast<size_t>(rows.count) - 2);
        form.run(
            {rows.above.data(), rows.centre.data(), rows.below.data(), rows.count - 2, magnitudes.Data()});
        return magnitudes;
    });
}

// The exponents as they fall from the darkest mean to the brightest.
void TestSpotPower(const Rows& rows, int32_t peak, float steepness) {
    constexpr float kLargestExponent = 1.5F;
    std::vector<float> exponents(256);
    for (size_t i = 0; i < exponents.size(); ++i)
        exponents[i] = std::pow(kLargestExponent, 1.0F - steepness * static_cast<float>(i) / 256.0F);
    const SpotPowerTables tables = MakeSpotPowerTables(peak, exponents);
    std::vector<uint16_t> means = rows.centre;
    for (uint16_t& mean : means) mean %= 256;
    RequireEqualForms(SpotPowerVariants(), [&](const SpotPowerVariant& form) {
        Guarded<uint16_t> pixels(rows.above);
        std::for_each(pixels.Data(), pixels.Data() + pixels.Size(), [&](uint16_t& pixel) {
            pixel = static_cast<uint16_t>(std::min<int32_t>(pixel, peak));
        });
        form.run({pixels.Data(), means.data(), means.size()}, tables);
        return pixels;
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr uint16_t kLongestRow = 600;  // past a block of the power
    InputTail tail(data, size);
    const int32_t count = tail.Take<uint16_t>() % (kLongestRow + 1);
    const int32_t maxValue = tail.Take<uint8_t>() % 4 == 0 ? tail.Take<int32_t>() : tail.Take<uint16_t>();
    const double ratio = tail.Take<uint8_t>() % 4 == 0 ? tail.Take<double>() : tail.Take<int16_t>() / 4096.0;
    const int32_t peak = std::max<int32_t>(tail.Take<uint16_t>(), 2);
    const float steepness = static_cast<float>(tail.Take<uint8_t>()) / 32.0F;
    const std::vector<uint16_t> pixels = tail.TakeFrame(count, 3);
    const auto row = [&](int32_t y) {
        const auto first = pixels.begin() + ptrdiff_t{y} * count;
        return std::vector<uint16_t>(first, first + count);
    };
    const Rows rows = {count, row(0), row(1), row(2)};
    TestRange(rows.above);
    TestCap(rows, maxValue);
    TestRamp(rows, static_cast<uint16_t>(maxValue), static_cast<uint16_t>(peak),
             static_cast<uint16_t>(maxValue >> 16));
    TestMasked(rows, static_cast<uint16_t>(peak));
    TestDarkArea(rows, static_cast<uint16_t>(peak), maxValue);
    TestAmplify(rows, maxValue, ratio);
    TestSobelRow(rows);
    TestSpotPower(rows, peak, steepness);
    return 0;
}
