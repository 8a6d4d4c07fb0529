#pragma once

#include <cstdint>
#include <vector>

#include "frames/Frame.h"
#include "frames/FrameSize.h"

namespace vastrelline {

// Raw frames: 16-bit levels, low byte first, nothing else in the file.

// Throws std::runtime_error with a text for the user if a raw frame of this size has another number of bytes.
void TestRawSize(uint64_t byteCount, FrameSize size);

// Errors   as TestRawSize
Frame DecodeRaw(const std::vector<uint8_t>& bytes, FrameSize size);

std::vector<uint8_t> EncodeRaw(const Frame& frame);

}  // namespace vastrelline
