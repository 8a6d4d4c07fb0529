// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "platform/MessageDialog.h"

namespace vastrelline {

// The platform's own way to show a message, without the handler that tests put in front of it. Only
// ShowMessage calls it.
void ShowPlatformMessage(const std::wstring& text, MessageIcon icon);

}  // namespace vastrelline
