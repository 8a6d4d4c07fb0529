// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/GaussianSurface.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <mutex>
#include <numbers>

#include "elementary/Exponential.h"

namespace vastrelline {

namespace {

// Squares of the coordinates along one axis, and what each contributes to an entry as a factor.
struct AxisFactors {
    std::vector<double> squares;
    std::vector<double> factors;
};

AxisFactors MakeAxisFactors(int32_t count, double denominator) {
    AxisFactors axis;
    for (const float coordinate : MakeCentredCoordinates(count)) {
        axis.squares.push_back(static_cast<double>(coordinate) * coordinate);
        axis.factors.push_back(Exp(-axis.squares.back() / denominator));
    }
    return axis;
}

// The exponent of an entry, rounded to single precision twice on its way.
float RoundedExponent(double square, double denominator) {
    return static_cast<float>(static_cast<float>(square) / denominator);
}

// The entries of a row from x = first on. The roundings of the exponent change far entries by up to 1e-5 of
// them: so a product of two factors is put right by the exponential of what the roundings added, so small
// that its third power is lost. That and the roundings on the way, of exponents up to 104, come to less than
// 1e-13 of the entry: in a row where so much matters to a nearest float the exponential function decides.
void FillEntries(const AxisFactors& columns, size_t first, double rowSquare, double rowFactor,
                 double denominator, std::vector<float>& entries) {
    constexpr double kTolerance = 2e-13;
    const double inverse = 1.0 / denominator;
    const double* squares = columns.squares.data() + first;
    int32_t unsureCount = 0;
    for (size_t i = 0; i < entries.size(); ++i) {
        const double square = (squares[i] + rowSquare) * -1.0;
        const double rounded = static_cast<float>(square);
        const double exponent = rounded / denominator;
        const double added = (static_cast<float>(exponent) - exponent) + (rounded - square) * inverse;
        const double entry = columns.factors[first + i] * rowFactor * (1.0 + added * (1.0 + added * 0.5));
        const auto low = static_cast<float>(entry * (1.0 - kTolerance));
        const auto high = static_cast<float>(entry * (1.0 + kTolerance));
        entries[i] = low;
        unsureCount += low != high ? 1 : 0;
    }
    if (unsureCount == 0) return;
    for (size_t i = 0; i < entries.size(); ++i)
        entries[i] = Exp(RoundedExponent((squares[i] + rowSquare) * -1.0, denominator));
}

// The exponent of the largest power of two in a number above 0; that of the smallest normal one for less.
int BinaryExponent(float value) {
    constexpr uint32_t kFractionBits = 23;
    constexpr int kBias = 127;
    constexpr int kSmallestExponent = 1 - kBias;
    return std::max(static_cast<int>(std::bit_cast<uint32_t>(value) >> kFractionBits) - kBias,
                    kSmallestExponent);
}

// The largest exponent, sign changed, at which an entry still adds to a sum: half of the sum's last place,
// and a little beyond, for the entries' own rounding. A sum of 0 takes up to half of the smallest number.
double LargestExponentThatCounts(float sum) {
    constexpr int kHalfLastPlace = 24;
    constexpr double kSlack = 1e-2;
    return (kHalfLastPlace - BinaryExponent(sum)) * std::numbers::ln2 + kSlack;
}

}  // namespace

std::vector<float> MakeCentredCoordinates(int32_t count) {
    std::vector<float> coordinates(static_cast<size_t>(count));
    const int32_t half = count / 2;
    for (int32_t i = 0; i < count; ++i) {
        const double place = (static_cast<double>(i) + 1) - half;
        coordinates[static_cast<size_t>(i)] = static_cast<float>(place - 0.5);
    }
    return coordinates;
}

// Entries too small to change the sum are left out before they are made: the sum only grows, so what is lost
// at the start of a row is lost in all of it.
float SumGaussianSurface(int32_t width, int32_t height, double sigma) {
    const double denominator = sigma * 2.0 * sigma;
    const AxisFactors columns = MakeAxisFactors(width, denominator);
    const AxisFactors rows = MakeAxisFactors(height, denominator);
    const int32_t half = width / 2;
    const double centre = half - 0.5;
    std::vector<float> entries;
    float sum = 0;
    for (size_t y = 0; y < rows.squares.size(); ++y) {
        const double left = LargestExponentThatCounts(sum) * denominator - rows.squares[y];
        if (left < 0) continue;
        const double reach = std::sqrt(left) + 1;
        const auto first = static_cast<size_t>(std::max(0.0, std::floor(centre - reach)));
        const auto last = static_cast<size_t>(std::min(width - 1.0, std::ceil(centre + reach)));
        entries.resize(last - first + 1);
        FillEntries(columns, first, rows.squares[y], rows.factors[y], denominator, entries);
        for (const float entry : entries) sum += entry;
    }
    return sum;
}

float KeptSumOfGaussianSurface(int32_t width, int32_t height, double sigma) {
    struct KeptSum {
        int32_t width = 0;
        int32_t height = 0;
        double sigma = 0;
        float sum = 0;
    };
    static std::mutex mutex;
    static KeptSum kept;
    const std::lock_guard lock(mutex);
    if (kept.width != width || kept.height != height || kept.sigma != sigma)
        kept = {width, height, sigma, SumGaussianSurface(width, height, sigma)};
    return kept.sum;
}

}  // namespace vastrelline
