// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "files/FileKind.h"
#include "frames/Frame.h"
#include "frames/FrameSize.h"

namespace vastrelline {

// The path that stands for standard input.
inline constexpr const char* kStandardInput = "-";

// A frame, and where its levels come from.
struct LoadedFrame {
    Frame frame;
    FileKind kind = FileKind::Raw;
    int sourceBits = 16;             // of a level in the file: 8 or 16
    std::vector<std::string> notes;  // what a person should know of the reading, a sentence each
};

// Where the size of a raw frame comes from, the first that is there: `size`, the file's name, `profileSize`.
struct RawSizes {
    std::optional<FrameSize> size;         // the command line's; other files must be of this size
    std::optional<FrameSize> profileSize;  // that of the profile's sensor
};

// Reads a frame: raw, PGM, PNG, TIFF or bitmap; 8-bit levels are taken as they are. The content must be what
// the ending says; with an ending that says nothing, and from standard input, the content alone counts, and
// what is of no known kind is raw.
//
// Errors   ToolError with ExitCode::WrongUse if the size of a raw frame is not known, InputError for
// everything
//          that is wrong with the file
LoadedFrame LoadFrameFile(const std::string& path, const RawSizes& sizes);

// The frame alone.
Frame ReadFrameFile(const std::string& path, const std::optional<FrameSize>& size);

}  // namespace vastrelline
