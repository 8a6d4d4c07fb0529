#pragma once

#include <string>

namespace vastrelline {

// Writes a file so that it appears under its name only when it is whole: a full disk or a crash leaves what
// stood there before. An existing file is replaced.
//
// POSIX     the file keeps its mode and owner, and a symbolic link is followed
// Returns   false, and what the name stood for is as it was: a missing folder, a folder as the path, a file
//           that may not be written, a folder that takes no new file, no room
[[nodiscard]] bool SaveWholeFile(const std::wstring& path, const std::string& bytes);

}  // namespace vastrelline
