// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "operators/curves/TonedFrame.h"

namespace vastrelline {

// A power curve over the level range of one frame.
struct GammaCurve {
    int32_t low;                  // the first level of the curve itself
    int32_t high;                 // the last one, which can lie beyond the table
    std::vector<uint16_t> table;  // one entry for each level 0..maxValue
};

// The power curve as a function of the level.
class GammaShape {
public:
    // outputRange, gamma, inverse   as BuildGammaCurve
    GammaShape(int32_t low, int32_t high, int32_t outputRange, double gamma, int32_t inverse);

    int32_t Low() const { return low_; }
    int32_t High() const { return high_; }
    uint16_t EntryAt(int32_t level) const;

private:
    int32_t low_;
    int32_t high_;
    int32_t outputRange_;
    double gamma_;
    double sign_;
    int32_t offset_;
    int32_t base_;
};

// Builds the curve from a frame.
//
// maxValue      top level of the table, 0..65535
// outputRange   top of the output; 0 keeps the frame's own range and begins at its lowest level
// gamma         0 or more: output = outputRange * x^gamma. Below 0: outputRange * (1 - (1 - x)^(-1/gamma)),
//               the positive curve mirrored at the diagonal with the reciprocal exponent. x runs from 0 to
//               1 over low..high
// limitBin      above 0: low and high leave out levels whose count, smoothed over 50 levels, is not above
//               it; where no level is left, the frame's own end stays
// inverse       not 0: the curve is inverted. The tails below low and above high are not, and so do not
//               join it; results depend on it
// Rounding      truncation toward zero in doubles, then the low 16 bits
GammaCurve BuildGammaCurve(const uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                           int32_t outputRange, double gamma, int32_t limitBin, int32_t inverse);

// Its shape, and its table from that.
GammaShape FindGammaShape(TonedFrame& frame, int32_t maxValue, int32_t outputRange, double gamma,
                          int32_t limitBin, int32_t inverse);
GammaCurve MakeGammaTable(const GammaShape& shape, int32_t maxValue);

// The exponent for a frame.
//
// ratio         of magnitude 1 or more: the exponent itself. Below 1: the fraction of the frame's pixels
//               that counts as its brightest part; the darker that part, the nearer to 1 the exponent, from
//               2 for the top of the range to 1 for its lower half. A fraction that truncates to less than
//               no pixel (-1 < ratio < 0) gives 2
// outputRange   top of the range in which the frame's brightness is judged
double ChooseGamma(const uint16_t* pixels, int32_t width, int32_t height, int32_t outputRange, double ratio);
double ChooseGamma(TonedFrame& frame, int32_t outputRange, double ratio);

}  // namespace vastrelline
