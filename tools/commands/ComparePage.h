// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "commands/CompareOptions.h"
#include "comparison/PairOutcome.h"

namespace vastrelline {

// What the report of a comparison is made of.
struct ComparePageInput {
    const CompareOptions* options = nullptr;
    const std::vector<PairOutcome>* outcomes = nullptr;  // of folders sorted: SortWorstFirst
    bool areFolders = false;
    std::string commandLine;
    std::string made;  // the time, for people

    // Both frames of an outcome that was read. Throws ToolError if they cannot be read any more.
    std::function<FramePair(const PairOutcome&)> load;
};

// The report as an HTML file. Of folders, the worst pairs have their frames in it, as many as keep the file
// of a size that browsers take well; it tells how many have not.
std::vector<uint8_t> MakeComparePage(const ComparePageInput& input);

}  // namespace vastrelline
