// SPDX-License-Identifier: Apache-2.0
#include "phantom/PhantomTexture.h"

#include <algorithm>
#include <cmath>

#include "phantom/PhantomRandom.h"

namespace vastrelline {
namespace {

constexpr int kLayers = 4;
constexpr double kMeshWidthMm = 1.0;  // a marrow space and its strut
constexpr double kFlatness = 1.25;    // the meshes of a lower jaw lie rather than stand
constexpr double kBendMm = 0.45;      // how far the struts bend from a regular mesh
constexpr double kFineShare = 0.35;   // struts of half the size
constexpr double kPatchMm = 5.0;      // regions of denser and of looser bone
constexpr double kStrutMean = 0.36;   // mean of the strut function below, measured over 10^6 points

double LevelAt(uint64_t seed, int64_t x, int64_t y) {
    return static_cast<double>(StirBits(seed, x, y) >> 11) * 0x1p-53;
}

// Goes from 0 to 1 with no slope and no bend at both ends.
double Blend(double t) { return t * t * t * (t * (t * 6.0 - 15.0) + 10.0); }

// 1 on the middle line of a strut, falling off fast to both sides. Middle lines are where the noise passes
// its mean, which gives closed meshes.
double Strut(uint64_t seed, double x, double y) {
    const double off = std::fabs(SmoothNoise(seed, x, y) - 0.5) * 2.6;
    const double near = std::max(0.0, 1.0 - off);
    return near * near;
}

}  // namespace

double SmoothNoise(uint64_t seed, double x, double y) {
    const double left = std::floor(x);
    const double top = std::floor(y);
    const auto column = static_cast<int64_t>(left);
    const auto row = static_cast<int64_t>(top);
    const double across = Blend(x - left);
    const double down = Blend(y - top);
    const double upper =
        LevelAt(seed, column, row) * (1.0 - across) + LevelAt(seed, column + 1, row) * across;
    const double lower =
        LevelAt(seed, column, row + 1) * (1.0 - across) + LevelAt(seed, column + 1, row + 1) * across;
    return upper * (1.0 - down) + lower * down;
}

double TrabecularDensity(uint64_t seed, double x, double y) {
    double sum = 0.0;
    for (int layer = 0; layer < kLayers; ++layer) {
        const uint64_t own = seed + static_cast<uint64_t>(layer) * 8;
        const double bentX = x + (SmoothNoise(own + 1, x, y) - 0.5) * 2.0 * kBendMm;
        const double bentY = y + (SmoothNoise(own + 2, x, y) - 0.5) * 2.0 * kBendMm;
        // Each layer is turned against the others, or the rows of the noise would show.
        const double turn = 0.35 * (layer - 1.5);
        const double u = (bentX + turn * bentY) / (kMeshWidthMm * kFlatness);
        const double v = (bentY - turn * bentX) / kMeshWidthMm;
        sum += (1.0 - kFineShare) * Strut(own + 3, u, v) + kFineShare * Strut(own + 4, u * 2.1, v * 2.1);
    }
    const double patch = 0.8 + 0.4 * SmoothNoise(seed + 5, x / kPatchMm, y / kPatchMm);
    return patch * (0.2 + 0.8 * sum / (kLayers * kStrutMean));
}

}  // namespace vastrelline
