// SPDX-License-Identifier: Apache-2.0
#include "platform/Text.h"

#include <algorithm>

namespace vastrelline {

std::wstring LowerCaseAscii(std::wstring_view text) {
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](wchar_t character) {
        const bool isUpper = character >= L'A' && character <= L'Z';
        return isUpper ? static_cast<wchar_t>(character - L'A' + L'a') : character;
    });
    return lower;
}

}  // namespace vastrelline
