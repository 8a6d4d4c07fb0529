// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

#include "support/Frames.h"

namespace vastrelline {

// No distribution has the PNG library for a cross compiler: tests that read such files run only where they
// were compiled.
#ifdef VASTRELLINE_HAS_PNG
inline constexpr bool kReadsPng = true;
#else
inline constexpr bool kReadsPng = false;
#endif

// The frame that a grey PNG file of 16 bits holds, every level as it stands in the file, which therefore must
// not ask for another gamma.
//
// Errors   std::runtime_error: a missing or damaged file, another kind of PNG, or kReadsPng is false
Frame ReadPngFrame(const std::filesystem::path& path);

}  // namespace vastrelline
