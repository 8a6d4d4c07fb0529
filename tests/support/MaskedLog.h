// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <regex>
#include <string>

namespace vastrelline {

// A log with every date, time of day and duration replaced by a pattern, so that the rest can be compared
// byte for byte. Only texts of exactly the right form are replaced.
inline std::string MaskTimes(std::string log) {
    static const std::regex date(" Log [ 0-9]{4}\\.[0-9]{2}\\.[0-9]{2} ");
    static const std::regex timeOfDay("#### [0-9]{2}:[0-9]{2}:[0-9]{2} ");
    static const std::regex seconds("\\( [0-9]+\\.[0-9]{3} sec");
    static const std::regex milliseconds("\\( [0-9]+ ms \\)");
    log = std::regex_replace(log, date, " Log YYYY.MM.DD ");
    log = std::regex_replace(log, timeOfDay, "#### hh:mm:ss ");
    log = std::regex_replace(log, seconds, "( S.SSS sec");
    return std::regex_replace(log, milliseconds, "( N ms )");
}

}  // namespace vastrelline
