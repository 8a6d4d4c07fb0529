// SPDX-License-Identifier: Apache-2.0
#include "platform/PlatformMessage.h"

namespace vastrelline {

// There is nobody to read it.
void ShowPlatformMessage(const std::wstring& /*text*/, MessageIcon /*icon*/) {}

}  // namespace vastrelline
