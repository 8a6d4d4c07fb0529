// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline {

// The shape of a band's gain curve.
enum class BandCurve : int32_t {
    SigmoidGate = 0,
    Power = 3,  // the one that the stages use
    PowerGate = 4,
};

// What the power curve makes of values from the noise limit on. Any other number removes them.
enum class TailMode : int32_t {
    Remove = 0,
    Pass = 1,    // strong structure keeps its amplitude
    Follow = 2,  // the curve goes on from where it stands
};

// What a band's histogram says of it; all are magnitudes of band values.
struct BandLevels {
    int32_t noiseLimit;  // where structure begins
    int32_t noise;       // where noise ends, a fraction of the noise limit
    int32_t absMax;      // the largest one
};

// The response of a band to each of its values.
//
// min, max   the band's values, both inclusive
// gain       of the curve
// Rounding   truncation toward zero in doubles; the 0.5 that the two gates add rounds positive values only
// Returns    max - min + 1 entries, the first for min; none for a curve that does not exist
std::vector<int32_t> BuildBandResponse(int32_t min, int32_t max, const BandLevels& levels, double gain,
                                       BandCurve curve, TailMode tailMode);

}  // namespace vastrelline
