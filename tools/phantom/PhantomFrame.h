// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include "frames/Frame.h"
#include "frames/FrameSize.h"

namespace vastrelline {

constexpr int32_t kPhantomTopLevel = 4095;

// What the tool makes at most, of any kind.
constexpr size_t kMostPhantomPixels = size_t{1} << 25;
constexpr double kMostPhantomDose = 100.0;

// The raw frame of a dental phantom: lower teeth in their jaw on a sensor of 26 mm x 33.36 mm, of which a
// frame of another shape sees the middle. Large values mean much radiation: the cheek alone is bright, enamel
// dark. The same arguments give the same pixels on every machine.
//
// size   both sides 1 or more
// dose   exposure, above 0; 1 brings the brightest parts close to, but mostly not onto, the top level
// seed   of the anatomy and of the noise
// Corners   pixels whose centre lies outside of the two lower corners' rounding are 0; the radius is 150
//           pixels, or half the shorter side if that is less
Frame MakePhantomFrame(FrameSize size, double dose, uint64_t seed);

}  // namespace vastrelline
