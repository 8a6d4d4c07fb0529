// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace vastrelline {

// Now, by the world's clock: "2026-11-23 06:41 UTC".
std::string UtcMinute();

// "2026-11-23"
std::string UtcDay();

}  // namespace vastrelline
