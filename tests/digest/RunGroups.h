// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "DigestRun.h"
#include "KeyTables.h"

namespace vastrelline::digest {

// Runs that are hashed together.
struct RunGroup {
    std::string name;
    DigestRuns runs;
};

// All runs, in the order in which they are listed: the same list in every process. What a group holds depends
// on its own name and tables only.
std::vector<RunGroup> AllGroups();

// One stage by itself: every ordinary value of each of its keys alone, in every mode; every odd value; and
// draws of all keys together.
DigestRuns StageRuns(const StageValues& stage);

// What concerns a whole run: settings that are no stage's, the sensor's values, and texts of numbers.
std::vector<RunGroup> SettingGroups();

// Several stages one after the other, as the five chains have them, and a few frames of real size.
std::vector<RunGroup> ChainGroups();

// Each exported function with what its arguments can be, and backups.
std::vector<RunGroup> ExportGroups();

}  // namespace vastrelline::digest
