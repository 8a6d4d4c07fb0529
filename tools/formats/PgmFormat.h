// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "formats/DecodedFrame.h"
#include "frames/Frame.h"

namespace vastrelline {

// Binary portable grey maps ("P5"): a short text head, then the levels, one byte each up to a maximum of
// 255, two bytes, high byte first, above it. Levels are taken as they are, not scaled to the maximum.
//
// Errors   std::runtime_error with a text for the user: another kind of file, a head that makes no sense, a
//          size that does not fit the number of bytes. Memory is taken only after that test.
DecodedFrame DecodePgm(const std::vector<uint8_t>& bytes);

// 16-bit levels. The head's maximum is `topLevel` if that makes two bytes and no pixel is above it, else
// 65535: viewers show the maximum as white.
std::vector<uint8_t> EncodePgm(const Frame& frame, int32_t topLevel);

}  // namespace vastrelline
