// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vastrelline {

// Complex values with their parts in lines of their own, so that loops over them become vectors.
struct SplitLine {
    std::vector<double> real;
    std::vector<double> imaginary;

    void Resize(size_t count) {
        real.resize(count);
        imaginary.resize(count);
    }
    std::complex<double> Get(size_t i) const { return {real[i], imaginary[i]}; }
    void Set(size_t i, std::complex<double> value) {
        real[i] = value.real();
        imaginary[i] = value.imag();
    }
};

// The discrete Fourier transform of one line of any length, in double precision: entry k of the result is the
// sum of line[x] * exp(-2 * pi * i * k * x / length), unscaled. Lengths with large prime factors take no
// longer than others.
class LineTransform {
public:
    explicit LineTransform(int32_t length);  // 1 or more

    // `line` has as many entries as the transform is long.
    std::vector<std::complex<double>> Forward(const std::vector<std::complex<double>>& line) const;

private:
    std::vector<std::complex<double>> chirp_;
    SplitLine turns_;
    SplitLine filter_;
};

// a * b in its plain form, with finite parts the one that the standard library's own product has, too. That
// one then looks for infinities, by a function of the compiler's runtime, and is several times as slow.
inline std::complex<double> Multiply(std::complex<double> a, std::complex<double> b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// exp(2 * pi * i * step / count), for whole numbers of any size.
std::complex<double> UnitRoot(uint64_t step, uint64_t count);

}  // namespace vastrelline
