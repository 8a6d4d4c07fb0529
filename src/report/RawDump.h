// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vastrelline {

// Writes a frame to a raw file: headerless, 16 bits a pixel, little-endian, row after row. The file's name
// is stored in lower case, and ".raw" is appended to a path that holds it nowhere. No folder is made, and a
// failure is silent: dumps are there for people and must not change a run.
//
// path     the full path, its name in any case
// pixels   width * height pixels
void DumpRaw(std::wstring_view path, const uint16_t* pixels, int32_t width, int32_t height);

// The path under which DumpRaw stores a frame.
std::wstring StoredRawPath(std::wstring_view path);

// Writes width * height elements of `bits` bits as they lie in memory; the file is made or truncated, and
// open for this call alone. Returns 1, or 0 if it cannot be made or written.
int32_t SaveRawFile(const std::wstring& path, const void* data, int32_t width, int32_t height, int32_t bits);

// The path of a numbered dump: the folder text of the profile joined directly to the name, so a folder
// without a separator at its end glues to it.
//
// nameFormat   takes the number, as "%02d_Result.raw"
std::wstring MakeDumpPath(std::wstring_view writePath, std::wstring_view nameFormat, int32_t number);

// Dumps a frame under the number that `dumpNumber` holds, and steps it by 1, also when nothing could be
// written.
void DumpNumbered(std::wstring_view writePath, std::wstring_view nameFormat, int32_t& dumpNumber,
                  const uint16_t* pixels, int32_t width, int32_t height);

}  // namespace vastrelline
