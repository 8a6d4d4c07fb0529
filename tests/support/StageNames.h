// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <regex>
#include <string>
#include <vector>

namespace vastrelline {

// The names of the stages in a log, in their order: what stands between the time of day and the duration,
// without the start and the end of the run.
inline std::vector<std::string> StageNamesIn(const std::string& log) {
    static const std::regex line("#### [0-9:]{8} \t: ([^(\r\n]*) \\( [0-9.]+ (?:sec|ms) +\\)");
    std::vector<std::string> names;
    for (auto match = std::sregex_iterator(log.begin(), log.end(), line); match != std::sregex_iterator();
         ++match) {
        if ((*match)[1] != "End Post-Processing") names.push_back((*match)[1]);
    }
    return names;
}

}  // namespace vastrelline
