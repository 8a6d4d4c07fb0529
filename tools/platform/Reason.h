// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <system_error>

namespace vastrelline {

// Why the system refused something, in the words of every system: "No such file or directory". Of reasons
// that only one system knows, the number.
std::string DescribeReason(const std::error_code& reason);

// The reason that the C library left behind, for what it did last.
std::error_code LastReason();

}  // namespace vastrelline
