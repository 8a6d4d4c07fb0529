// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frames/Frame.h"
#include "frames/FrameSize.h"

namespace vastrelline {

// Raw frames: 16-bit levels, low byte first, nothing else in the file.

// The number of bytes of a raw frame of this size.
uint64_t RawByteCount(FrameSize size);

struct RawMismatch {
    std::string what;    // both numbers of bytes, and what these may be instead
    std::string remedy;  // for a person at a command line
};

// Why so many bytes are no raw frame of this size, which has another number of them.
RawMismatch DescribeRawMismatch(uint64_t byteCount, FrameSize size);

// Errors   std::runtime_error with what DescribeRawMismatch says, for another number of bytes
Frame DecodeRaw(const std::vector<uint8_t>& bytes, FrameSize size);

std::vector<uint8_t> EncodeRaw(const Frame& frame);

}  // namespace vastrelline
