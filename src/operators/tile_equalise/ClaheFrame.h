// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Equalises a frame in place with ClaheEqualize. For that it is taken as going on at the right and at the
// bottom, with the edge pixels repeated, up to whole tiles; where it ends with a tile, by one tile more.
//
// maxValue    top of the search for the darkest pixel: `min` of ClaheEqualize is at most this
// blockSize   edge of a tile in pixels; 0 or less leaves the frame as it is, as does one that leaves room for
//             one tile only or would bring the padded frame to 2^29 pixels
// bins        as for ClaheEqualize; a negative number counts as its unsigned self and so is refused
// Returns     1, whether it changed the frame or not
// Errors      std::bad_alloc; the frame may then be equalised in part
int32_t ClaheFrame(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t blockSize,
                   int32_t bins, double maxSlope);

}  // namespace vastrelline
