// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/BlurStep.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "elementary/Exponential.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

namespace {

// A Gaussian is cut off where 2e-9 of it lie outside: below what single precision can tell.
constexpr double kReachInSigmas = 6;

// A step whose new row i is the Gaussian mean, of density 1 / spacing, about the place centres[i] of old rows
// that lie `spacing` apart, times `scale`.
BlurStep MakeStep(const std::vector<double>& centres, int32_t oldRows, double spacing, double sigma,
                  double scale) {
    const double reach = kReachInSigmas * sigma;
    const double norm = scale * spacing / (std::sqrt(2 * std::numbers::pi) * sigma);
    BlurStep step{oldRows, static_cast<int32_t>(2 * reach / spacing) + 1, {}, {}};
    for (const double centre : centres) {
        const double first = std::ceil((centre - reach) / spacing);
        step.firstRows.push_back(static_cast<int32_t>(first));
        for (int32_t t = 0; t < step.taps; ++t) {
            const double distance = (centre - (first + t) * spacing) / sigma;
            step.weights.push_back(ExpTimes(-0.5 * distance * distance, norm));
        }
    }
    return step;
}

std::vector<double> MakeEvenPlaces(int32_t count, double spacing) {
    std::vector<double> places(static_cast<size_t>(count));
    for (size_t i = 0; i < places.size(); ++i) places[i] = static_cast<double>(i) * spacing;
    return places;
}

std::vector<double> MakeBlurredPlaces(int32_t count) {
    std::vector<double> places(static_cast<size_t>(CountBlurredPlaces(count)));
    for (size_t i = 0; i < places.size(); ++i) {
        places[i] = BlurredPlace(static_cast<int32_t>(i), count) + 0.5;
    }
    return places;
}

void PointAtOldRows(const BlurStep& step, int32_t newRow, const float* oldRows, int32_t width,
                    std::vector<const float*>& rows) {
    rows.resize(static_cast<size_t>(step.taps));
    int32_t place = step.firstRows[static_cast<size_t>(newRow)] % step.oldRows;
    if (place < 0) place += step.oldRows;
    for (const float*& row : rows) {
        row = oldRows + static_cast<size_t>(place) * static_cast<size_t>(width);
        if (++place == step.oldRows) place = 0;
    }
}

const float* WeightsOf(const BlurStep& step, int32_t newRow) {
    return step.weights.data() + static_cast<size_t>(newRow) * static_cast<size_t>(step.taps);
}

}  // namespace

int32_t BlurredPlace(int32_t index, int32_t count) {
    return count % 2 != 0 && index >= count / 2 ? index + 1 : index;
}

int32_t CountBlurredPlaces(int32_t count) { return count - count % 2; }

// A wide Gaussian is three narrower ones in turn, whose variances add up. The first leaves so little detail
// that few rows hold all of it, the second is done on those few, and the third goes back to all rows. With a
// sigma as large as the spacing, a Gaussian weakens what the few rows cannot tell apart to 3e-9.
std::vector<BlurStep> MakeBlurSteps(int32_t count, double sigma) {
    constexpr double kNarrowSigma = 8;   // pixels; below, one step is no slower
    constexpr double kRowsPerSigma = 4;  // of the few
    const double scale = std::sqrt(2 * std::numbers::pi) * sigma;
    const std::vector<double> places = MakeBlurredPlaces(count);
    if (sigma < kNarrowSigma) return {MakeStep(places, count, 1, sigma, scale)};
    const auto few = static_cast<int32_t>(std::ceil(count * kRowsPerSigma / sigma));
    const double spacing = static_cast<double>(count) / few;
    const double rest = std::sqrt(sigma * sigma - 2 * spacing * spacing);
    const std::vector<double> fewPlaces = MakeEvenPlaces(few, spacing);
    return {MakeStep(fewPlaces, count, 1, spacing, 1), MakeStep(fewPlaces, few, spacing, rest, 1),
            MakeStep(places, few, spacing, spacing, scale)};
}

void MakeStepRow(const BlurStep& step, const float* oldRows, int32_t width, int32_t newRow,
                 std::vector<const float*>& rows, const FusionKernels& kernels, float* out) {
    PointAtOldRows(step, newRow, oldRows, width, rows);
    kernels.combineRows(rows.data(), WeightsOf(step, newRow), step.taps, width, out);
}

// In strips so narrow that the old rows of a new one stay in the cache for the next.
ScratchVector<float> ApplyStep(const BlurStep& step, const float* oldRows, int32_t width,
                               const FusionKernels& kernels) {
    constexpr int32_t kStrip = 256;
    const auto stride = static_cast<size_t>(width);
    ScratchVector<float> newRows(step.firstRows.size() * stride);
    std::vector<const float*> rows;
    for (int32_t x = 0; x < width; x += kStrip) {
        float* out = newRows.data() + x;
        for (int32_t i = 0; i < step.NewRows(); ++i, out += stride) {
            PointAtOldRows(step, i, oldRows + x, width, rows);
            kernels.combineRows(rows.data(), WeightsOf(step, i), step.taps, std::min(kStrip, width - x), out);
        }
    }
    return newRows;
}

}  // namespace vastrelline
