// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/PngText.h"
#include "formats/TiffFormat.h"
#include "frames/Frame.h"
#include "frames/GreyWindow.h"

namespace vastrelline {

// How a frame is put into a file.
struct PictureStyle {
    // PNG and TIFF: 8 bits through this window; none: 16-bit levels as they are. A bitmap needs one.
    std::optional<GreyWindow> window;
    int32_t topLevel = 0;  // PGM: the level that viewers show as white, see EncodePgm
    TiffPacking tiffPacking = TiffPacking::None;
    bool mayReplace = false;     // an existing file is replaced
    std::vector<PngText> texts;  // of a PNG; other kinds have none
};

// The bytes of a frame's file, by the ending of the path.
//
// Errors   UsageError for another ending and for a bitmap without a window; OutputError if such a file cannot
//          hold so large a frame
std::vector<uint8_t> EncodePicture(const std::string& path, const Frame& frame, const PictureStyle& style);

// Writes a frame as .raw, .pgm, .png, .tif or .bmp, by the ending of the path; completely or not at all.
//
// Errors   UsageError for another ending and for a bitmap without a window; OutputError if the file exists
// and
//          must not be replaced, cannot be written, or cannot hold so large a frame
void WritePictureFile(const std::string& path, const Frame& frame, const PictureStyle& style);

}  // namespace vastrelline
