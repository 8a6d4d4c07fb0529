#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "frames/Frame.h"
#include "frames/GreyWindow.h"

namespace vastrelline {

// How a frame is put into a file.
struct PictureStyle {
    std::optional<GreyWindow> window;  // PNG: 8 bits through this window; none: 16-bit levels as they are
    int32_t topLevel = 0;              // PGM: the level that viewers show as white, see EncodePgm
    bool mayReplace = false;           // an existing file is replaced
};

// Writes a frame as .raw, .pgm or .png, by the ending of the path; completely or not at all.
//
// Errors   UsageError for another ending; std::runtime_error with a text for the user if the file exists and
//          must not be replaced, or cannot be written
void WritePictureFile(const std::string& path, const Frame& frame, const PictureStyle& style);

}  // namespace vastrelline
