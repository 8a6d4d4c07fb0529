// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "library/ExportRequest.h"
#include "messages/Finding.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "runs/PrivateProfile.h"
#include "runs/RanStages.h"
#include "runs/RunLog.h"

namespace vastrelline {

// Where a run reads its settings.
enum class ProfileUse : uint8_t {
    PrivateCopy,  // the file stays as it is; the log is always kept
    InPlace,      // what a host does: sensor's values and log go to the file and beside it
};

// What a run left behind.
struct FrameRun {
    int32_t code = 0;               // of the export
    ExportRequest call;             // with output and record
    std::string logBytes;           // of the log's file; empty without one
    std::optional<RunLog> log;      // of this run
    std::vector<RanStage> stages;   // point into the plan
    std::vector<Finding> findings;  // what the library said, in words
};

// Calls an export on one frame with a section of a profile.
//
// file, plan   the profile as it was read, and what a run of the section does; both outlive the result
// call         profile and section are filled in here
// edits        of the private copy's section, beside those that keep message boxes away and the log on
// Errors       as the caller of exports
FrameRun RunFrame(const ProfileFile& file, const SectionPlan& plan, ProfileUse use,
                  const std::vector<KeyEdit>& edits, ExportRequest call, const ExportCaller& callExport);

// Edits that make a private copy's run write its dumps and curve files into a folder that exists, and nothing
// among the user's backups: such a run is one more beside the one that was asked for.
std::vector<KeyEdit> DumpInto(const std::string& folder);

// Edits that make a private copy's run leave no dumps and backups, whatever the profile says: those of many
// runs would write over each other, and writing them takes time that is not the run's.
std::vector<KeyEdit> WithoutDumps();

}  // namespace vastrelline
