// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "stages/hdr/BlurStep.h"
#include "stages/hdr/CoarseBlur.h"
#include "stages/hdr/FineBlur.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

TEST(BlurredPlace, OddCountsLoseTheirMiddle) {
    const auto placesOf = [](int32_t count) {
        std::vector<int32_t> places;
        for (int32_t i = 0; i < CountBlurredPlaces(count); ++i) places.push_back(BlurredPlace(i, count));
        return places;
    };
    EXPECT_EQ(placesOf(6), (std::vector<int32_t>{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(placesOf(7), (std::vector<int32_t>{0, 1, 2, 4, 5, 6}));
    EXPECT_EQ(placesOf(1), std::vector<int32_t>{});
}

// The blur by its definition, in doubles: all places of one axis, for an impulse at `impulse`.
std::vector<double> BlurImpulse(int32_t count, int32_t impulse, double sigma) {
    std::vector<double> blurred;
    for (int32_t i = 0; i < CountBlurredPlaces(count); ++i) {
        double sum = 0;
        for (int32_t round = -1; round <= 1; ++round) {
            const double distance = BlurredPlace(i, count) - impulse + 0.5 + round * count;
            sum += std::exp(-distance * distance / (2 * sigma * sigma));
        }
        blurred.push_back(sum);
    }
    return blurred;
}

struct BlurCase {
    int32_t width;
    int32_t height;
    double sigma;
};

// One step below a sigma of 8, three above.
constexpr BlurCase kBlurs[] = {{30, 31, 2},    {41, 40, 2},  {150, 170, 7}, {161, 181, 8},
                               {200, 210, 10}, {31, 700, 2}, {301, 320, 15}};

TEST(CoarseBlur, SpreadsAnImpulseRoundTheFrame) {
    for (const BlurCase& c : kBlurs) {
        for (const auto& [left, top] : {std::pair{0, 0}, std::pair{c.width / 2, c.height - 1}}) {
            std::vector<float> image(static_cast<size_t>(c.width) * static_cast<size_t>(c.height));
            image[static_cast<size_t>(top * c.width + left)] = 1;
            CoarseBlur blur(image.data(), c.width, c.height, c.sigma, kFusionKernelsScalar);
            const std::vector<double> across = BlurImpulse(c.width, left, c.sigma);
            const std::vector<double> down = BlurImpulse(c.height, top, c.sigma);
            std::vector<float> row(across.size());
            double largestError = 0;
            for (size_t y = 0; y < down.size(); ++y) {
                blur.MakeRow(static_cast<int32_t>(y), row.data());
                for (size_t x = 0; x < row.size(); ++x)
                    largestError = std::max(largestError, std::fabs(row[x] - across[x] * down[y]));
            }
            EXPECT_LT(largestError, 3e-7) << c.width << " x " << c.height << ", sigma " << c.sigma;
        }
    }
}

TEST(FineBlur, SpreadsAnImpulseRoundTheFrame) {
    for (const auto& [width, height] : {std::pair{30, 30}, std::pair{33, 31}, std::pair{64, 35}}) {
        for (const auto& [left, top] : {std::pair{0, 0}, std::pair{width - 1, height / 2}}) {
            const Frame frame = Impulse(width, height, left, top, 65535, 100);
            FineBlur blur({frame.Data(), width, height}, 100, 1, 1.0 / 65435, kFusionKernelsScalar);
            const std::vector<double> across = BlurImpulse(width, left, 1);
            const std::vector<double> down = BlurImpulse(height, top, 1);
            double largestError = 0;
            for (size_t y = 0; y < down.size(); ++y) {
                const float* row = blur.MakeRow(static_cast<int32_t>(y));
                for (size_t x = 0; x < across.size(); ++x)
                    largestError = std::max(largestError, std::fabs(row[x] - across[x] * down[y]));
            }
            EXPECT_LT(largestError, 2e-7) << width << " x " << height;
        }
    }
}

}  // namespace
}  // namespace vastrelline
