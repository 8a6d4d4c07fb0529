// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "commands/RunOptions.h"
#include "formats/PictureFile.h"
#include "library/ExportRequest.h"

namespace vastrelline {

// How the result goes into the picture of the options: a .png shows 8 bits through a window, unless all
// levels are wanted.
PictureStyle MakeStyle(const RunOptions& options, int32_t topLevel);

// "8 bits, window 0 to 4095"
std::string DescribeStyle(const PictureStyle& style);

// The bitmap that an export left. The library writes it in a folder of the tool: a call that is ended in the
// middle leaves nothing beside the user's files, and a long path does not matter.
//
// Errors   ProcessingError if there is none
std::vector<uint8_t> ReadBitmap(const std::string& path, const ExportTraits& traits);

}  // namespace vastrelline
