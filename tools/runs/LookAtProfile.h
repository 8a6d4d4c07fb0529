// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "library/ExportRequest.h"
#include "messages/Finding.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"

namespace vastrelline {

// The library takes a missing section or key without a word and runs something else. What is looked at before
// a run:

// What the run would do otherwise than the profile seems to say: warnings.
std::vector<Finding> LookAtProfile(const ProfileFile& file, const SectionPlan& plan,
                                   const ExportTraits& traits);

// A run that would go by nothing of the profile.
struct MeaninglessRun {
    bool isSectionWrong = false;  // the profile has others: it is the command line that is wrong
    Finding finding;              // an error
};

// Nothing: all is well. The names of sections match whatever the case of their letters.
std::optional<MeaninglessRun> FindMeaninglessRun(const ProfileFile& file, std::string_view section);

// What a call asks for beside the settings.
struct ExportWishes {
    bool wantsBitmap = false;
    bool hasGeometry = false;
    bool hasSensor = false;
};

// The export that runs what a section says: one that knows PROCMODE 3 where the section has it.
ExportKind ChooseExport(const ProfileFile& file, std::string_view section, const ExportWishes& wishes);

}  // namespace vastrelline
