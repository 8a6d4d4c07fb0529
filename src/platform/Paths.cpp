// SPDX-License-Identifier: Apache-2.0
#include "platform/Paths.h"

namespace vastrelline {

size_t FindLastSeparator(std::wstring_view path) { return path.find_last_of(L"/\\"); }

std::wstring FolderOfPath(std::wstring_view path) {
    const size_t separator = FindLastSeparator(path);
    if (separator == std::wstring_view::npos) return FolderOfName(path);
    // A file in the root has the empty folder: composed with a separator it leads to the root again.
    return std::wstring(path.substr(0, separator));
}

}  // namespace vastrelline
