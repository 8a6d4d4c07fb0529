// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace vastrelline {

// One form for the upper and the lower case of a character, in any locale: Latin, Greek, Cyrillic and
// full-width letters. Characters without case, and of other scripts, stay as they are.
wchar_t FoldCase(wchar_t character);

// Whether two texts are the same but for the case of their letters.
bool EqualFolded(std::wstring_view one, std::wstring_view other);

}  // namespace vastrelline
