#pragma once

#include <string>
#include <string_view>

namespace vastrelline {

// Where the last folder separator of a path stands, or std::wstring_view::npos if there is none.
// Separators are '\' on Windows, and '/' and '\' elsewhere: paths are composed with '\' everywhere, and
// only the calls into the operating system turn it into '/'.
size_t FindLastSeparator(std::wstring_view path);

// The part of a path before its last separator; a path without one lies in the current folder, ".".
std::wstring FolderOfPath(std::wstring_view path);

// A dump's path in lower case (ASCII letters). Windows: all of it. Elsewhere file systems tell the cases of
// a folder apart, so only the part behind the last separator.
std::wstring LowerCaseFileName(std::wstring_view path);

}  // namespace vastrelline
