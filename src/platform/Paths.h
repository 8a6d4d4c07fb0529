// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace vastrelline {

// Where the last folder separator of a path stands, or std::wstring_view::npos if there is none. Both '/' and
// '\' separate everywhere: paths are composed with '\', and only the calls into the operating system turn it
// into '/' where that is the only one.
size_t FindLastSeparator(std::wstring_view path);

// The folder of a path without a separator: the current one, ".". Windows: "C:." for a name behind a drive,
// which is the current folder of that drive.
std::wstring FolderOfName(std::wstring_view name);

// The part of a path before its last separator, or what FolderOfName gives.
std::wstring FolderOfPath(std::wstring_view path);

// A dump's path in lower case (ASCII letters). Windows: all of it. Elsewhere file systems tell the cases of
// a folder apart, so only the part behind the last separator.
std::wstring LowerCaseFileName(std::wstring_view path);

}  // namespace vastrelline
