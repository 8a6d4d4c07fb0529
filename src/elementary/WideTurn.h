// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elementary/WideValue.h"

namespace vastrelline {

// Sine and cosine by their series, to some 250 bits: their definition. Slow, tens of microseconds. The angle,
// in radians, is finite and may be as large as it wants (Payne and Hanek, 1983); of one below 2^-70 the sine
// lacks as many of its bits as it lies lower.
WideValue WideSin(double x);
WideValue WideCos(double x);

}  // namespace vastrelline
