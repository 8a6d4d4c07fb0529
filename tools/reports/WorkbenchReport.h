// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frames/Frame.h"
#include "messages/Finding.h"
#include "profile/ProfileDiff.h"
#include "views/SmallPicture.h"

namespace vastrelline {

// A run that a report of the workbench tells about.
struct ReportedRun {
    uint64_t number = 0;
    std::string name;  // that a person gave it
    std::string when;
    std::string frameName;
    std::string section;
    std::string change;  // to the run before
    std::string resultHash;
    std::string profileText;  // lines end with '\n'
    std::string profileHash;  // of its bytes
    std::vector<std::string> offKeys;
    double elapsedMs = 0.0;
    std::vector<std::pair<std::string, std::optional<double>>> stages;  // title and milliseconds
    std::shared_ptr<const Frame> read;            // as it was read; null: not in memory any more
    std::shared_ptr<const Frame> result;          // null: as above
    std::shared_ptr<const SmallPicture> picture;  // of the result; may be null
};

// What a report is made of.
struct WorkbenchReport {
    std::string profileName;
    std::string savedText;              // of the profile's file, lines end with '\n'
    std::vector<ReportedRun> runs;      // one at least, the oldest first
    std::vector<PlaceDifference> keys;  // between the first and the last run; of one run, to the file
    std::vector<Finding> findings;      // of the last run's profile
    std::string version;
    std::string libraryHash;  // may be empty
    std::string made;         // the time, for people
};

// The report as an HTML file: what changed between the first and the last run stands first, with both results
// to be looked at; of one run, what it changed against the file and the frame. Needs nothing from elsewhere.
std::vector<uint8_t> MakeWorkbenchReport(const WorkbenchReport& report);

}  // namespace vastrelline
