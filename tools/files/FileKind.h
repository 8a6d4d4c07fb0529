#pragma once

#include <cstdint>
#include <string_view>

namespace vastrelline {

enum class FileKind : uint8_t { Raw, Pgm, Png, Bmp, Other };

// What the ending of a path stands for, in any case of letters: .raw, .pgm, .png, .bmp; everything else is
// Other.
FileKind FileKindOf(std::string_view path);

}  // namespace vastrelline
