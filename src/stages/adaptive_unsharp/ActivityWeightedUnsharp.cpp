// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/ActivityWeightedUnsharp.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>

#include "operators/box_mean/BoxMean.h"
#include "pixels/ClampPixel.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "pixels/Truncate.h"
#include "stages/adaptive_unsharp/DetailLoops.h"
#include "stages/adaptive_unsharp/ValueHistogram.h"
#include "stages/adaptive_unsharp/WeightTable.h"

namespace vastrelline {

namespace {

// So short in all results that they follow from it: never to be made exact.
constexpr double kPi = 3.14159;

using Pixels = ScratchVector<uint16_t>;

Pixels MakeBoxMean(const FrameView<const uint16_t>& frame, int32_t radius) {
    Pixels means(frame.Count());
    BoxMean(frame.begin(), means.data(), frame.Width(), frame.Height(), radius);
    return means;
}

int32_t LimitToInt32(int64_t radius) {
    return static_cast<int32_t>(std::min<int64_t>(radius, std::numeric_limits<int32_t>::max()));
}

// How much a frame's detail of the radius's size varies around each pixel.
Pixels MeasureActivity(const FrameView<const uint16_t>& frame, int32_t radius) {
    constexpr double kClippedFraction = 0.0001;
    const int64_t wide = 2 * int64_t{radius};
    Pixels band = MakeBoxMean(frame, radius);
    Pixels activity = MakeBoxMean(frame, LimitToInt32(wide));
    FastestOf(DetailVariants()).run->takeMagnitude(band.data(), activity.data(), band.size());
    BoxMean(band.data(), activity.data(), frame.Width(), frame.Height(), LimitToInt32(radius / 3 + wide));
    ClipHistogramTails(activity.data(), kClippedFraction, frame.Width(), frame.Height());
    return activity;
}

// Rises over the lower range of brightness, stays near 1, and falls to 0 over the top quarter.
std::optional<WeightTable> MakeBrightnessTable(const uint16_t* base, int32_t width, int32_t height) {
    std::optional<WeightTable> table =
        MakeSineWeightTable(base, width, height, -kPi / 2, kPi / 2 + kPi / 100.0 * 10.0, 10, 50);
    if (!table.has_value()) return table;
    const int32_t start = TruncateToInt32(table->count * 0.75);
    const int32_t length = table->count - start - 1;
    for (int32_t j = 1; j <= length; ++j) {
        table->values[static_cast<size_t>(start) + static_cast<size_t>(j)] =
            (1 - static_cast<double>(j) / length) * table->values[static_cast<size_t>(start)];
    }
    return table;
}

// Falls from 1 at the lowest activity to 0 at the middle of its range, and stays there.
std::optional<WeightTable> MakeActivityTable(const Pixels& activity, int32_t width, int32_t height) {
    return MakeSineWeightTable(activity.data(), width, height, kPi / 2, kPi * 1.5, 0, 50);
}

// Adds detail and applies the limit; false if a table is missing, and nothing was done.
bool AddDetail(const FrameView<uint16_t>& frame, int32_t maxValue, const Pixels& activity,
               const DetailTerm& first, const DetailTerm& second) {
    const auto brightnessTable = MakeBrightnessTable(first.smooth, frame.Width(), frame.Height());
    const auto activityTable = MakeActivityTable(activity, frame.Width(), frame.Height());
    if (!brightnessTable.has_value() || !activityTable.has_value()) return false;
    FastestOf(DetailVariants())
        .run->addWeighted({frame.begin(), activity.data(), frame.Count(), maxValue, first, second,
                           *brightnessTable, *activityTable});
    return true;
}

}  // namespace

void ActivityWeightedUnsharp(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, int32_t radius,
                             int32_t baseRadius, int32_t secondRadius, double gain, double secondGain) {
    const FrameView<uint16_t> frame(image, width, height);
    // Without a radius there is no activity, and so no table of it.
    if (radius > 0) {
        const FrameView<const uint16_t> source(image, width, height);
        const Pixels activity = MeasureActivity(source, radius);
        const Pixels base = MakeBoxMean(source, baseRadius);
        Pixels secondBase;
        DetailTerm second{nullptr, secondGain};
        if (secondRadius > 0 && secondGain > 0) {
            secondBase = MakeBoxMean(source, secondRadius);
            second.smooth = secondBase.data();
        }
        if (AddDetail(frame, maxValue, activity, {base.data(), gain}, second)) return;
    }
    for (uint16_t& pixel : frame) pixel = ClampToPixel(pixel, maxValue);
}

}  // namespace vastrelline
