// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/LocalDeviationSchedule.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <vector>

#include "operators/histogram/PixelRange.h"
#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

constexpr int32_t kWindow = 2 * kDeviationRadius + 1;

// The memory of a strip. All is set at first: what lies beyond the last column takes part in vectors.
struct StripRows {
    using Row = std::array<double, kStripColumns>;

    // Means of a row stay until the row leaves the window, kWindow rows after it has entered.
    std::array<Row, kWindow + 1> means{};
    std::array<Row, kWindow + 1> squareMeans{};
    Row zeros{};
    Row sums{};
    Row squareSums{};
    Row variances{};
    Row largest{};
    RowScratch row{};
};

// The kernels, and of those for the means of a row the one that fits the frame.
struct ChosenKernels {
    const DeviationKernels& kernels;
    DeviationKernels::MeanOfRow meanOfRow;
};

// Where a strip lies: the columns of the result begin kDeviationRadius to the right of `left`, those of the
// image at `left`.
struct StripPlace {
    int32_t left;
    size_t count;  // of the result
};

// Goes down a strip of columns and hands each row of variances to `use`.
//
// With the band's displacement, the window of row y holds the row means of rows y - 6 to y. Rows above the
// band count as 0, and so do the last three rows of the band: they are pushed out at its lower end. The
// windows of the last rows get zeros in their place.
template <typename Use>
void WalkStrip(const FrameView<const uint16_t>& image, const StripPlace& place, const ChosenKernels& chosen,
               StripRows& strip, const Use& use) {
    const int32_t top = kDeviationRadius;
    const int32_t bottom = image.Height() - kDeviationRadius - 1;
    const auto slot = [](int32_t y) { return static_cast<size_t>(y % (kWindow + 1)); };
    strip.sums.fill(0.0);
    strip.squareSums.fill(0.0);
    for (int32_t y = top; y <= bottom; ++y) {
        ColumnSums pixels{strip.sums.data(), strip.zeros.data(), strip.zeros.data()};
        ColumnSums squares{strip.squareSums.data(), strip.zeros.data(), strip.zeros.data()};
        if (y <= bottom - kDeviationRadius) {
            double* means = strip.means[slot(y)].data();
            double* squareMeans = strip.squareMeans[slot(y)].data();
            chosen.meanOfRow(image.Row(y) + place.left, place.count, strip.row, means, squareMeans);
            pixels.entering = means;
            squares.entering = squareMeans;
        }
        if (y - kWindow >= top) {
            pixels.leaving = strip.means[slot(y - kWindow)].data();
            squares.leaving = strip.squareMeans[slot(y - kWindow)].data();
        }
        chosen.kernels.makeVariances(pixels, squares, place.count, strip.variances.data());
        use(y, strip.variances.data());
    }
}

// Calls `work` with the place of every strip.
template <typename Work>
void ForEachStrip(int32_t columns, const Work& work) {
    constexpr auto kColumns = static_cast<int32_t>(kStripColumns);
    for (int32_t left = 0; left < columns; left += kColumns) {
        work(StripPlace{left, static_cast<size_t>(std::min(kColumns, columns - left))});
    }
}

}  // namespace

// The frame is gone over twice, for the largest deviation and then for the levels: that is faster than to
// keep an image of doubles between. The sums of a row are of integers and exact in any order; those of
// a column are not and keep the order of the definition, one column in each lane.
void RunDeviationSchedule(const DeviationCall& call, const DeviationKernels& kernels) {
    assert(call.radius == kDeviationRadius);
    const FrameView<const uint16_t> image(call.image, call.width, call.height);
    const FrameView<uint16_t> levels(call.levels, call.width, call.height);
    const int32_t columns = call.width - 2 * kDeviationRadius;
    if (columns <= 0) return;
    const bool isNarrow = MaxPixel(call.image, call.width, call.height) <= kTopNarrowPixel;
    const ChosenKernels chosen = {kernels, isNarrow ? kernels.meanOfNarrowRow : kernels.meanOfRow};

    // The margins hold deviations of 0, so the smallest is 0; and as roots keep the order of their squares,
    // the root of the largest variance is the largest deviation.
    double largestVariance = 0.0;
    std::vector<StripRows> scratch(1);
    StripRows& strip = scratch.front();
    ForEachStrip(columns, [&](const StripPlace& place) {
        WalkStrip(image, place, chosen, strip, [&](int32_t /*y*/, const double* variances) {
            kernels.keepLargest(variances, place.count, strip.largest.data());
        });
    });
    for (const double variance : strip.largest) largestVariance = std::max(largestVariance, variance);
    if (!(largestVariance > 0)) return;

    const double largestDeviation = std::sqrt(largestVariance);
    ForEachStrip(columns, [&](const StripPlace& place) {
        WalkStrip(image, place, chosen, strip, [&](int32_t y, const double* variances) {
            kernels.quantise(variances, place.count, largestDeviation,
                             levels.Row(y) + place.left + kDeviationRadius);
        });
    });
}

}  // namespace vastrelline
