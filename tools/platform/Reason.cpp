// SPDX-License-Identifier: Apache-2.0
#include "platform/Reason.h"

#include <cerrno>

namespace vastrelline {

std::string DescribeReason(const std::error_code& reason) {
    // The system's own texts are in its user's language and character set.
    const std::error_condition known = reason.default_error_condition();
    if (known.category() == std::generic_category()) return known.message();
    return "error " + std::to_string(reason.value()) + " of the system";
}

std::error_code LastReason() { return {errno, std::generic_category()}; }

}  // namespace vastrelline
