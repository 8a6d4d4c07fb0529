// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "operators/curves/TonedFrame.h"
#include "stages/pyramid/BandResponse.h"
#include "stages/pyramid/PyramidObserver.h"
#include "stages/pyramid/PyramidParams.h"

namespace vastrelline {

// In what the pyramid differs from chain to chain.
struct PyramidForm {
    TailMode tailMode;
    bool isRebuildSmoothed;  // false keeps what the expansion interpolated
};

// Boosts fine detail band by band, in place: takes the frame apart into a Laplacian pyramid (Burt and
// Adelson, 1983), passes each band through EnhanceBand and adds the bands up again.
//
// frame      its curves are applied on the way; where the pyramid changes nothing they go on waiting
// maxValue   the largest pixel value stored, 0 or more
// settings   a number of layers below 1, or so large that the padded frame would pass 2^29 pixels, leaves the
//            frame as it is
// observer   null if nobody looks on
// Edges      padded at the right and at the bottom by the last column and row, up to a multiple of 2^layers
//            and by a whole one where the size is a multiple already; every smoothing repeats the edge pixels
// Memory     the padded frame and a third for the length of the call; with an observer, another one
void PyramidProcess(TonedFrame& frame, int32_t maxValue, BandCurve curve, const PyramidParams& settings,
                    const PyramidForm& form, PyramidObserver* observer);

}  // namespace vastrelline
