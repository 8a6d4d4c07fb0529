// SPDX-License-Identifier: Apache-2.0
#include "platform/posix/NativePath.h"

#include <algorithm>

#include "profile_text/Utf8.h"

namespace vastrelline {

std::string NativePath(std::wstring_view path) {
    std::string bytes = EncodeUtf8(path);
    std::replace(bytes.begin(), bytes.end(), '\\', '/');
    return bytes;
}

}  // namespace vastrelline
