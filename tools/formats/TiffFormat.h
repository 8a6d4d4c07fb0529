// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "formats/DecodedFrame.h"

namespace vastrelline {

// Grey TIFF files with 8 or 16 unsigned bits in one sample a pixel, in strips or tiles, plain or packed
// without loss. Of several pages the first is taken, and levels that are stored with 0 as white are inverted;
// the notes say so. Otherwise levels are taken as they are.
//
// Errors   std::runtime_error with a text for the user: another kind of file or of TIFF, damaged, an unusable
//          size. A size that so short a file cannot hold is refused before memory is taken.
DecodedFrame DecodeTiff(const std::vector<uint8_t>& bytes);

enum class TiffPacking : uint8_t { None, Deflate };

// One page in strips, 0 as black, of 16 or 8 bits. The same frame gives the same bytes.
//
// levels   width * height
// Errors   std::runtime_error with a text for the user: 4 GiB or more, which the format cannot tell
std::vector<uint8_t> EncodeTiff16(const Frame& frame, TiffPacking packing);
std::vector<uint8_t> EncodeTiff8(const std::vector<uint8_t>& levels, int32_t width, int32_t height,
                                 TiffPacking packing);

}  // namespace vastrelline
