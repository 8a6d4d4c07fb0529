#pragma once

#include <optional>
#include <string>

#include "frames/Frame.h"
#include "frames/FrameSize.h"

namespace vastrelline {

// Reads a frame: .pgm and .png by their ending (16-bit levels; 8-bit levels are taken as they are), any other
// file as raw levels.
//
// size     of a raw frame; without it the size that the file's name tells. PGM and PNG files tell their size
//          themselves: a size given here must be the same
// Errors   UsageError if the size of a raw frame is not known; InputError for everything that is wrong with
//          the file
Frame ReadFrameFile(const std::string& path, const std::optional<FrameSize>& size);

}  // namespace vastrelline
