// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline {

// The Gaussian surface that a layer of the fusion is blurred with is as large as the frame and stands about
// its centre: entry (x, y) is exp(-(X * X + Y * Y) / (2 * sigma * sigma)), with X and Y from
// MakeCentredCoordinates, divided by the sum of all entries.

// Positions relative to the centre: (i + 1) - count / 2 - 0.5, the half rounded down. Never 0: the centre of
// an even count lies between two pixels, and that of an odd one is put half a pixel before the middle one.
std::vector<float> MakeCentredCoordinates(int32_t count);

// The sum of a surface's entries that blurs are divided by: a running single-precision sum, row after row. It
// loses every entry below half of its own last place, and so a wide surface's sum is short by some 1e-4 of
// it, which is part of the picture.
//
// width, height, sigma   above 0
float SumGaussianSurface(int32_t width, int32_t height, double sigma);

// The same, kept until the next other surface: frames of one sensor ask for one sum again and again, and a
// wide surface's takes as long as a step of the fusion. Any threads may ask.
float KeptSumOfGaussianSurface(int32_t width, int32_t height, double sigma);

}  // namespace vastrelline
