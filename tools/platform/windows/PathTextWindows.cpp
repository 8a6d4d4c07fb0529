// SPDX-License-Identifier: Apache-2.0
#include "platform/PathText.h"
#include "platform/windows/WideText.h"

namespace vastrelline {

std::filesystem::path PathOf(std::string_view text) { return WidenUtf8(text); }

}  // namespace vastrelline
