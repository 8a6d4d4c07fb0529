// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Smooth noise over the plane: a random level at each whole coordinate, blended in between. 0 to 1, mean 0.5,
// structures about one unit wide.
double SmoothNoise(uint64_t seed, double x, double y);

// The fine network of struts in spongy bone, seen through several layers of it: the share of bone at a point,
// relative to the mean. Mostly 0.5 (a wide marrow space) to 1.7 (struts behind each other), 1 on average.
//
// x, y   in mm
double TrabecularDensity(uint64_t seed, double x, double y);

}  // namespace vastrelline
