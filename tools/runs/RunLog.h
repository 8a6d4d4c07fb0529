// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vastrelline {

// A stage as the log of a run tells it.
struct LoggedStage {
    std::string name;  // the log's own, misspellings included
    double elapsedMs = 0.0;
    std::vector<std::pair<std::string, std::string>> values;  // "MaskSize", "0.90"

    bool operator==(const LoggedStage&) const = default;
};

// Which family of chains wrote a log.
enum class LoggedChain { Configured, Fixed, Cr };

// One run of a log.
struct RunLog {
    LoggedChain chain = LoggedChain::Configured;
    std::string version;  // of the profile
    std::string section;
    std::vector<LoggedStage> stages;
    std::optional<double> totalMs;  // none: the run did not come to its end
};

// The last run in the text of ExtraOralLog.txt; nothing if there is none. Lines of another kind are passed
// over. Times of the configured family are in steps of a millisecond.
std::optional<RunLog> ReadLastRun(std::string_view text);

}  // namespace vastrelline
