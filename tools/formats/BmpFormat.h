// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "formats/DecodedFrame.h"

namespace vastrelline {

// Bitmaps of one byte for each pixel, whose palette tells the levels, or of 24 or 32 bits, all of whose
// pixels are grey; rows from the bottom or from the top. A fourth byte, mostly transparency, is not looked
// at.
//
// Errors   std::runtime_error with a text for the user: another kind of file, packed or coloured pixels, a
//          head that makes no sense, too few bytes for the size. Memory is taken only after these tests.
DecodedFrame DecodeBmp(const std::vector<uint8_t>& bytes);

// One byte for each pixel behind a palette of 256 greys, rows from the bottom: the bitmap that the library's
// exports write.
//
// levels   width * height
// Errors   std::runtime_error with a text for the user: 4 GiB or more, which the head cannot tell
std::vector<uint8_t> EncodeBmp8(const std::vector<uint8_t>& levels, int32_t width, int32_t height);

}  // namespace vastrelline
