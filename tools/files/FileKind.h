// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vastrelline {

enum class FileKind : uint8_t { Raw, Pgm, Png, Tiff, Bmp, Other };

// What the ending of a path stands for, in any case of letters: .raw, .pgm, .png, .tif, .tiff, .bmp;
// everything else is Other.
FileKind FileKindOf(std::string_view path);

// Whether a frame can be written as a file of this kind: all but Other.
bool IsPictureKind(FileKind kind);

// What the first bytes of a file tell: Pgm, Png, Tiff, Bmp, or Other for everything else, raw levels among
// it. So little may be levels by chance that it needs more than the two letters of a bitmap or a grey map.
FileKind FileKindOfContent(const std::vector<uint8_t>& bytes);

// What a file seems to be by its first bytes, for sentences: "a PNG picture", "a JPEG picture", "an empty
// file". Empty if nothing is known of such bytes.
std::string DescribeContent(const std::vector<uint8_t>& bytes);

// "PNG picture", "raw frame"; of Other "file".
std::string_view FileKindName(FileKind kind);

// "raw", "pgm", "png", "tif", "bmp"; empty of Other.
std::string_view FileKindEnding(FileKind kind);

}  // namespace vastrelline
