// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "commands/RunOptions.h"
#include "formats/FrameFile.h"
#include "frames/Frame.h"
#include "library/ExportRequest.h"
#include "messages/Finding.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "runs/FrameRun.h"

namespace vastrelline {

// The profile of the options. The library takes both kinds of separators, and so does this.
//
// Errors   InputError
ProfileFile ReadRunProfile(const RunOptions& options);

// Refuses a run that would go by nothing of the profile; where that is what the user wants, it is a finding.
//
// Errors   ToolError
void TestMeaning(const ProfileFile& file, const RunOptions& options, std::vector<Finding>& findings);

// The export that is known before the profile is read; null if it depends on that.
const ExportTraits* FindNamedTraits(const RunOptions& options);

// The export that is asked for by name, or that fits profile, picture and the other options.
const ExportTraits& FindTraits(const ProfileFile& file, const RunOptions& options);

// The call that the options ask for; profile, section and the bitmap's path are still open.
ExportRequest MakeCall(const RunOptions& options, const ExportTraits& traits, const Frame& frame);

// What of frame and profile is to be said before the run.
std::vector<Finding> LookBeforeRun(const RunOptions& options, const LoadedFrame& frame,
                                   const ProfileFile& file, const SectionPlan& plan,
                                   const ExportTraits& traits);

// Errors   OutputError for a code about a bitmap that was not saved, ProcessingError for any other but 0
void TestCode(const FrameRun& run, const ExportTraits& traits);

}  // namespace vastrelline
