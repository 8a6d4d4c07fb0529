// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "formats/DecodedFrame.h"
#include "formats/PngText.h"
#include "frames/Frame.h"

namespace vastrelline {

// Grey PNG files of 8 or 16 bits without transparency, interlaced or not. Levels are taken as they are: no
// scaling, no gamma.
//
// Errors   std::runtime_error with a text for the user: another kind of file or of PNG, damaged, an
//          unusable size. A size that so short a file cannot hold is refused before memory is taken.
DecodedFrame DecodePng(const std::vector<uint8_t>& bytes);

// texts    stand before the picture
std::vector<uint8_t> EncodePng16(const Frame& frame, const std::vector<PngText>& texts = {});

// levels   width * height
std::vector<uint8_t> EncodePng8(const std::vector<uint8_t>& levels, int32_t width, int32_t height,
                                const std::vector<PngText>& texts = {});

}  // namespace vastrelline
