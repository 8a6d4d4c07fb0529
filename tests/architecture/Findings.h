// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace vastrelline {

// What breaks a rule, and the sentence that says what to do.
using Findings = std::map<std::string, std::string>;

// What may break a rule, and why.
using Exceptions = std::map<std::string, std::string>;

// The sentences of what no exception covers, and one for each exception that covers nothing.
inline std::vector<std::string> CompareFindings(const Findings& found, const Exceptions& allowed) {
    std::vector<std::string> complaints;
    for (const auto& [what, sentence] : found)
        if (!allowed.contains(what)) complaints.push_back(sentence);
    for (const auto& [what, reason] : allowed)
        if (!found.contains(what))
            complaints.push_back("strike " + what + " from the list: it needs no exception");
    return complaints;
}

// True without complaints; else a failure prints them, one a line.
inline testing::AssertionResult IsKept(const std::vector<std::string>& complaints) {
    if (complaints.empty()) return testing::AssertionSuccess();
    testing::AssertionResult broken = testing::AssertionFailure();
    for (const std::string& complaint : complaints) broken << "\n  " << complaint;
    return broken;
}

}  // namespace vastrelline
