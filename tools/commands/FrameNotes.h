// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "formats/FrameFile.h"
#include "messages/Messages.h"

namespace vastrelline {

// Says what a person should know of how a frame was read.
void ShowFrameNotes(const std::string& path, const LoadedFrame& loaded, Messages& messages);

// "PNG picture, 1300x1668 pixels, levels 0 to 4012"
std::string DescribeFrame(const LoadedFrame& loaded);

}  // namespace vastrelline
