// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// No stage calls it: with the starts of 0 that the mid-band's step has, it would change nothing.
//
// Remaps a detail image through a power curve on each side of zero, in place: small detail linearly, larger
// detail by a power of its share of the largest.
//
// detail               width * height signed values
// startMax, startMin   where the search for the largest and the smallest value starts. Without a largest
//                      value above 0 and a smallest of 1 or more nothing is changed: so a start of 0 for the
//                      smallest switches the map off
// alpha                factor of the curve
// weight               share of the curve in the result; the rest is the value itself
// power                1 - power is the curve's exponent
// range                without effect
// Rounding             truncation of the curve and of the mixture
void MapDetailPower(int32_t* detail, int32_t startMax, int32_t startMin, int32_t width, int32_t height,
                    float alpha, float weight, float power, float range);

}  // namespace vastrelline
