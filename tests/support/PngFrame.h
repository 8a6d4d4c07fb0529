#pragma once

#include <filesystem>

#include "support/Frames.h"

namespace vastrelline {

// No distribution has the PNG library for the cross compiler: tests that read such files do not run on
// Windows.
#ifdef _WIN32
inline constexpr bool kReadsPng = false;
#else
inline constexpr bool kReadsPng = true;
#endif

// The frame that a grey PNG file of 16 bits holds, every level as it stands in the file, which therefore must
// not ask for another gamma.
//
// Errors   std::runtime_error: a missing or damaged file, another kind of PNG, or kReadsPng is false
Frame ReadPngFrame(const std::filesystem::path& path);

}  // namespace vastrelline
