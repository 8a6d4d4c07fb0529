// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include "platform/PlatformMessage.h"
#include "platform/posix/FileDescriptor.h"
#include "profile_text/Utf8.h"

namespace vastrelline {

void ShowPlatformMessage(const std::wstring& text, MessageIcon /*icon*/) {
    // One call, so that the texts of two threads do not mix. Nobody is there to be told if it fails.
    const std::string line = EncodeUtf8(text).append("\n");
    static_cast<void>(WriteAll(STDERR_FILENO, line.data(), line.size()));
}

}  // namespace vastrelline
