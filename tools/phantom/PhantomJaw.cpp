// SPDX-License-Identifier: Apache-2.0
#include "phantom/PhantomJaw.h"

#include <algorithm>
#include <cmath>

#include "phantom/PhantomRandom.h"
#include "phantom/PhantomTexture.h"

namespace vastrelline {
namespace {

// All in mm.
constexpr double kCrestY = 14.6;        // upper edge of the bone
constexpr double kCrestRise = 0.9;      // how far it comes up between teeth and wanders
constexpr double kPlates = 1.9;         // both compact plates together
constexpr double kSpongyAtCrest = 2.2;  // the ridge is narrow at its edge ...
constexpr double kSpongyBelow = 8.6;    // ... and wide below
constexpr double kRidgeGrowsOver = 9.0;
constexpr double kGap = 0.24;            // between root and socket
constexpr double kSocketWall = 0.22;     // half the width of the wall's image
constexpr double kSocketWallBone = 2.0;  // compact bone in a ray along the wall
constexpr double kCrestWallBone = 1.3;
constexpr double kCanalY = 30.2;
constexpr double kCanalHalfWidth = 1.25;
constexpr double kGumAboveCrest = 2.4;
constexpr double kGum = 4.5;
constexpr double kCheek = 5.5;
constexpr double kCheekGrowth = 0.10;  // per mm downwards

double SmoothStep(double from, double to, double value) {
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

// 1 in the middle, 0 from `reach` on, smooth.
double Bump(double offset, double reach) {
    const double t = std::min(std::fabs(offset) / reach, 1.0);
    const double fall = 1.0 - t * t;
    return fall * fall;
}

double Wander(uint64_t seed, double x) { return SmoothNoise(seed, x, 0.5) - 0.5; }

}  // namespace

JawRay JawRayAt(uint64_t seed, const ToothRay& tooth, double x, double y) {
    const double crestY = kCrestY + kCrestRise * Wander(seed + 101, x / 4.0) + 0.25 * Wander(seed + 102, x);
    const double below = y - crestY;

    JawRay ray;
    ray.softTissue = std::max(0.0, kCheek + kCheekGrowth * y) +
                     1.5 * (SmoothNoise(seed + 103, x / 9.0, y / 9.0) - 0.5) +
                     kGum * SmoothStep(-kGumAboveCrest, -0.4, below) + tooth.pulp;
    const double isBone = SmoothStep(-0.15, 0.6, below);
    if (isBone <= 0.0) return ray;

    const double width =
        kSpongyAtCrest + (kSpongyBelow - kSpongyAtCrest) * SmoothStep(0.0, kRidgeGrowsOver, below);
    const double rootShare = tooth.dentine + tooth.pulp;
    double spongy = std::max(0.15 * width, width - rootShare);
    double compact = kPlates * (0.55 + 0.45 * SmoothStep(0.0, 4.0, below));

    // Only where the ray runs along the socket does it see the gap and the wall.
    const double distance = tooth.distanceToRoot;
    spongy *= 1.0 - 0.45 * Bump(distance - 0.4 * kGap, 0.9 * kGap);
    compact += kSocketWallBone * Bump(distance - kGap - 0.8 * kSocketWall, 1.3 * kSocketWall) *
               SmoothStep(0.0, 1.0, below);
    if (distance > kGap) compact += kCrestWallBone * Bump(below - 0.35, 0.4);

    const double canalY = kCanalY - 0.05 * x + 1.2 * Wander(seed + 104, x / 5.0);
    const double toCanal = std::fabs(y - canalY);
    spongy *= 1.0 - 0.35 * (1.0 - SmoothStep(0.6 * kCanalHalfWidth, 1.1 * kCanalHalfWidth, toCanal));
    compact += 0.55 * Bump(toCanal - kCanalHalfWidth - 0.1, 0.3);

    ray.spongyBone = isBone * spongy * TrabecularDensity(seed + 200, x, y);
    ray.compactBone = isBone * compact;
    return ray;
}

}  // namespace vastrelline
