// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "stages/pyramid/BandKernels.h"
#include "stages/pyramid/BandResponse.h"
#include "stages/pyramid/PyramidObserver.h"

namespace vastrelline {

// What becomes of each value of a band: its response in 16 bits, but for the smallest value, which stays.
class BandMap {
public:
    // responses   of the values from `min` on
    BandMap(std::span<const int32_t> responses, int32_t min);

    // Maps a piece of the band, in place.
    void Apply(int16_t* values, size_t count) const;

private:
    std::vector<int16_t> table_;  // also of 0, where the band has none
    size_t below_;                // entries before that of 0
};

// How a band is enhanced; see EnhanceBand.
struct BandEnhancement {
    double ratio;
    double noiseWidth;
    BandCurve curve;
    double cutLimit;
    TailMode tailMode;
};

// Where the search for a band's range starts.
BandRange StartOfBandRange(int32_t maxValue);

// The map that EnhanceBand passes a band through; none where it leaves the band as it is.
//
// range          of the band, from StartOfBandRange on
// seeResponses   is shown those of the values from range.min on; may be empty
std::optional<BandMap> PlanBandMap(const int16_t* band, size_t count, BandRange range,
                                   const BandEnhancement& how,
                                   const std::function<void(const std::vector<int32_t>&)>& seeResponses = {});

// Passes one band of a pyramid through a gain curve that is fitted to the band's own histogram: what is as
// frequent as noise is told apart from structure by the magnitude at which the histogram falls below the cut.
//
// band          width * height signed values, changed in place
// maxValue      top of the frame's range, 0 or more; the search for the band's range starts from it
// ratio         gain of the curve
// noiseWidth    width of the noise zone as a fraction of the noise limit
// cutLimit      the noise limit lies where the smoothed histogram falls to this fraction of its peak
// bandIndex     0 for the finest band; names what the observer sees
// observer      null if nobody looks on
// Traits        the band's smallest value is not remapped; the lowest bin of the histogram is not tried for
//               the upper end of the noise, so that alone above the cut it is both ends
// Returns       1, or 0 if the band was left as it is: fewer than 20 steps from its smallest to its largest
//               value, no bin above the cut, or a curve that does not exist
int32_t EnhanceBand(int16_t* band, int32_t width, int32_t height, int32_t maxValue, double ratio,
                    double noiseWidth, BandCurve curve, double cutLimit, TailMode tailMode, int32_t bandIndex,
                    PyramidObserver* observer);

}  // namespace vastrelline
