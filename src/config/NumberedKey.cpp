// SPDX-License-Identifier: Apache-2.0
#include "config/NumberedKey.h"

#include "platform/TextFormat.h"

namespace vastrelline {

std::wstring MakeNumberedKey(int32_t position, std::wstring_view key) {
    return FormatText(L"%02d_", {position}).append(key);
}

}  // namespace vastrelline
