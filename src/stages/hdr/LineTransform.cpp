// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/LineTransform.h"

#include <bit>
#include <numbers>
#include <utility>

#include "elementary/SineCosine.h"

namespace vastrelline {

namespace {

using Complex = std::complex<double>;

void ReverseBits(std::vector<double>& values) {
    size_t reversed = 0;
    for (size_t i = 1; i < values.size(); ++i) {
        size_t bit = values.size() / 2;
        for (; (reversed & bit) != 0; bit /= 2) reversed ^= bit;
        reversed ^= bit;
        if (i < reversed) std::swap(values[i], values[reversed]);
    }
}

// One step of the transform: joins pairs of transforms of `half` values each.
void JoinHalves(SplitLine& values, size_t start, size_t half, const SplitLine& turns) {
    double* const evenReal = values.real.data() + start;
    double* const evenImaginary = values.imaginary.data() + start;
    double* const oddReal = evenReal + half;
    double* const oddImaginary = evenImaginary + half;
    // The turns of one step lie side by side, where the sizes of the steps before it end.
    const double* const turnReal = turns.real.data() + half;
    const double* const turnImaginary = turns.imaginary.data() + half;
    for (size_t k = 0; k < half; ++k) {
        const double real = oddReal[k] * turnReal[k] - oddImaginary[k] * turnImaginary[k];
        const double imaginary = oddReal[k] * turnImaginary[k] + oddImaginary[k] * turnReal[k];
        oddReal[k] = evenReal[k] - real;
        oddImaginary[k] = evenImaginary[k] - imaginary;
        evenReal[k] += real;
        evenImaginary[k] += imaginary;
    }
}

// The transform of a power of two of values, in place; turns[half + k] is exp(-pi * i * k / half).
void TransformPowerOfTwo(SplitLine& values, const SplitLine& turns) {
    ReverseBits(values.real);
    ReverseBits(values.imaginary);
    const size_t count = values.real.size();
    for (size_t half = 1; half < count; half *= 2) {
        for (size_t start = 0; start < count; start += 2 * half) JoinHalves(values, start, half, turns);
    }
}

}  // namespace

Complex UnitRoot(uint64_t step, uint64_t count) {
    const double angle =
        2 * std::numbers::pi * static_cast<double>(step % count) / static_cast<double>(count);
    return {Cos(angle), Sin(angle)};
}

// After k * x = (k * k + x * x - (k - x) * (k - x)) / 2 the transform is a convolution with a chirp, and that
// is done by transforms of a power of two that is long enough not to wrap around.
LineTransform::LineTransform(int32_t length) : chirp_(static_cast<size_t>(length)) {
    const size_t count = chirp_.size();
    const size_t padded = std::bit_ceil(2 * count);
    for (size_t k = 0; k < count; ++k) chirp_[k] = std::conj(UnitRoot(uint64_t{k} * k, 2 * uint64_t{count}));
    turns_.Resize(padded);
    for (size_t k = 0; k < padded / 2; ++k) turns_.Set(padded / 2 + k, std::conj(UnitRoot(k, padded)));
    // Shorter steps take every second turn of the next longer one.
    for (size_t half = padded / 4; half >= 1; half /= 2) {
        for (size_t k = 0; k < half; ++k) turns_.Set(half + k, turns_.Get(2 * half + 2 * k));
    }
    filter_.Resize(padded);
    for (size_t k = 0; k < count; ++k) {
        filter_.Set(k, std::conj(chirp_[k]));
        filter_.Set((padded - k) % padded, std::conj(chirp_[k]));
    }
    TransformPowerOfTwo(filter_, turns_);
}

std::vector<Complex> LineTransform::Forward(const std::vector<Complex>& line) const {
    const size_t padded = filter_.real.size();
    SplitLine values;
    values.Resize(padded);
    for (size_t x = 0; x < line.size(); ++x) values.Set(x, Multiply(line[x], chirp_[x]));
    TransformPowerOfTwo(values, turns_);
    // The way back is the way there with real and imaginary parts swapped, before and after.
    for (size_t k = 0; k < padded; ++k) {
        const Complex product = Multiply(values.Get(k), filter_.Get(k));
        values.Set(k, {product.imag(), product.real()});
    }
    TransformPowerOfTwo(values, turns_);
    std::vector<Complex> result(line.size());
    const double scale = 1.0 / static_cast<double>(padded);
    for (size_t k = 0; k < result.size(); ++k) {
        const Complex swapped = values.Get(k);
        result[k] = Multiply(Complex(swapped.imag() * scale, swapped.real() * scale), chirp_[k]);
    }
    return result;
}

}  // namespace vastrelline
