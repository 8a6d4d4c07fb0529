// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "commands/SweepRun.h"
#include "messages/ExitCode.h"
#include "messages/Finding.h"
#include "pictures/Canvas.h"

namespace vastrelline {

// What a sweep gave, for people and for programs.
struct SweepReport {
    const SweepPlan* plan = nullptr;
    const SweptPicture* unchanged = nullptr;              // of the profile as it is
    const std::vector<SweptPicture>* pictures = nullptr;  // the values of the first key change first
    std::string folder;
};

inline constexpr const char* kSweepIndexLeaf = "sweep.json";
inline constexpr const char* kSweepTableLeaf = "sweep.txt";
inline constexpr const char* kSweepSheetLeaf = "contact.png";

// The highest code of those that failed.
ExitCode CodeOf(const SweepReport& report);

// All pictures on one sheet with their values: one key in rows, two as a table, the first one across. A
// bright line marks the profile's own values; if they are not among those of the sweep, the picture of one
// key begins with them.
Canvas DrawSweepSheet(const SweepReport& report);

// A table with a line for each picture; the profile's own values are marked by a star.
std::string FormatSweep(const SweepReport& report);

// The same for programs, as docs/tool-json.md tells.
nlohmann::ordered_json SweepToJson(const SweepReport& report);

// What was found at several values is one finding, and says how often.
std::vector<Finding> SumUpFindings(const SweepReport& report);

}  // namespace vastrelline
