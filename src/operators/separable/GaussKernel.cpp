// SPDX-License-Identifier: Apache-2.0
#include "operators/separable/GaussKernel.h"

#include <cmath>
#include <stdexcept>

#include "elementary/Exponential.h"
#include "pixels/Truncate.h"

namespace vastrelline {

int32_t GaussMaskSize(double sigma) {
    // The kernel reaches this far on each side. Widths, and so all results, follow from it: never retune.
    constexpr double kReachInSigmas = 2.5;
    return WrappingAdd(TruncateToInt32(2.0 * std::ceil(kReachInSigmas * sigma)), 1);
}

std::vector<double> MakeGaussKernel(int32_t& outSize, double sigma) {
    constexpr double kTwoPi = 6.283185307179586;
    const int32_t size = GaussMaskSize(sigma);
    if (size < 1) throw std::length_error("MakeGaussKernel: no kernel");
    const int32_t half = size / 2;
    const double denominator = -2.0 * sigma * sigma;
    const double norm = 1.0 / (std::sqrt(kTwoPi) * sigma);
    std::vector<double> kernel(static_cast<size_t>(size));
    double sum = 0.0;
    int64_t i = -half;  // 64 bits, for the square of a very wide kernel's end does not fit 32
    for (double& tap : kernel) {
        const int64_t square = i * i;
        ++i;
        tap = Exp(static_cast<double>(square) / denominator) * norm;
        sum += tap;
    }
    for (double& tap : kernel) tap /= sum;
    outSize = size;
    return kernel;
}

}  // namespace vastrelline
