// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

#include "stages/hdr/GaussianSurface.h"

namespace vastrelline {
namespace {

TEST(GaussianSurface, CoordinatesLieHalfAPixelBesideTheCentre) {
    EXPECT_EQ(MakeCentredCoordinates(4), (std::vector<float>{-1.5F, -0.5F, 0.5F, 1.5F}));
    EXPECT_EQ(MakeCentredCoordinates(5), (std::vector<float>{-1.5F, -0.5F, 0.5F, 1.5F, 2.5F}));
    EXPECT_EQ(MakeCentredCoordinates(1), (std::vector<float>{0.5F}));
}

// Every entry, added in order.
float SumPlainly(int32_t width, int32_t height, double sigma) {
    float sum = 0;
    for (const double y : MakeCentredCoordinates(height)) {
        for (const double x : MakeCentredCoordinates(width)) {
            const auto square = static_cast<float>((x * x + y * y) * -1.0);
            sum += static_cast<float>(std::exp(double{static_cast<float>(square / (sigma * 2.0 * sigma))}));
        }
    }
    return sum;
}

TEST(GaussianSurface, SumIsTheRunningSingleOne) {
    struct Case {
        int32_t width;
        int32_t height;
        double sigma;
    };
    for (const Case& c :
         {Case{1, 1, 1}, Case{2, 1, 1}, Case{30, 30, 1}, Case{31, 33, 2}, Case{60, 40, 1}, Case{40, 101, 2},
          Case{300, 220, 11}, Case{201, 207, 10}, Case{21, 20, 40}, Case{500, 45, 2}, Case{150, 200, 30}}) {
        const float plain = SumPlainly(c.width, c.height, c.sigma);
        EXPECT_EQ(SumGaussianSurface(c.width, c.height, c.sigma), plain) << c.width << " x " << c.height;
    }
}

TEST(GaussianSurface, FourEntriesOfOneValue) {
    // exp(-(0.25 + 0.25) / 2), four times.
    EXPECT_FLOAT_EQ(SumGaussianSurface(2, 2, 1), static_cast<float>(4 * std::exp(-0.25)));
}

// The entries far out are lost in a sum of thousands. In exact arithmetic it would be the square of the
// integral, 2 * pi * sigma * sigma.
TEST(GaussianSurface, WideSumFallsShort) {
    const double exact = 2 * std::numbers::pi * 65 * 65;
    const double error = SumGaussianSurface(1300, 1668, 65) / exact - 1;
    EXPECT_LT(error, -2e-4);
    EXPECT_GT(error, -5e-4);
}

TEST(GaussianSurface, KeptSumIsThatOfTheSurfaceAskedFor) {
    struct Case {
        int32_t width;
        int32_t height;
        double sigma;
    };
    const Case cases[] = {{60, 40, 3}, {40, 60, 3}, {60, 41, 3}, {61, 41, 3}, {61, 41, 2.5}, {60, 40, 3}};
    for (const Case& c : cases) {
        const float sum = SumGaussianSurface(c.width, c.height, c.sigma);
        for (int32_t time = 0; time < 2; ++time)
            EXPECT_EQ(KeptSumOfGaussianSurface(c.width, c.height, c.sigma), sum) << c.width << ' ' << time;
    }
}

}  // namespace
}  // namespace vastrelline
