// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace vastrelline {

// Opens an address in the user's browser; returns before it shows anything. False where the system has no
// way.
bool OpenInBrowser(const std::string& address);

}  // namespace vastrelline
