// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// Writes an 8-bit grey bitmap file: rows bottom-up, zeros behind each row's pixels, a palette of 256 greys.
//
// path       written as SaveWholeFile does: the file takes this name only when it is whole, and one that
// stood
//            there stays until then, wherever that can be
// rowBytes   bytes from one row of `pixels` to the next and of each row in the file: the width rounded up to
//            a multiple of 4
// pixels     height rows, the top one first. Null, or no memory for the file: the file is left empty and a
//            message is shown
// Returns    1, or 0 if there is no such file now: a missing folder, a folder as the path, no permission, no
//            room, no pixels, negative sizes, rows narrower than the width, 4 GiB or more
int32_t SaveBitmap8(const std::wstring& path, int32_t rowBytes, int32_t width, int32_t height,
                    const uint8_t* pixels);

// Renders a frame through the window of centre 2047 and width 4096 and saves it as a bitmap. Returns what
// SaveBitmap8 returns.
//
// frame   width * height pixels
int32_t SaveFrameBitmap(const uint16_t* frame, int32_t width, int32_t height, const std::wstring& path);

}  // namespace vastrelline
