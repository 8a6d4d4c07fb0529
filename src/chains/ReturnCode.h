// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// What a processing export returns; the public header names the same numbers.
enum ReturnCode : int32_t {
    kSuccess = 0,
    kNoProfile = 1,
    kNoInput = 2,
    kNoOutput = 3,
    kNoSection = 4,
    kNoBitmap = 5,
    kInternalFailure = 6,
};

// The argument tests of a driver, first hit first: no profile that can be opened and read, null input, null
// output. A profile that the system fails to read now, though it is there, is an internal failure: its
// defaults would give another chain's picture.
ReturnCode TestDriverArguments(const std::wstring& iniPath, const uint16_t* input, const uint16_t* output);

// width * height of a frame whose sides are above 0.
//
// Errors   std::length_error from kPixelCountLimit pixels on
int32_t CountPixels(int32_t width, int32_t height);

// Whether a frame has pixels; without any there is nothing to do.
//
// Errors   as CountPixels
bool HasPixels(int32_t width, int32_t height);

}  // namespace vastrelline
