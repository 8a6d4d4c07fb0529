// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "library/ExportRequest.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"

namespace vastrelline {

// The export that somebody names: as in the header, or what stands behind "ImageProcessing" ("S", "NE"),
// whatever the case of its letters. An empty name is the export that the section is made for: the one that
// knows PROCMODE 3 where the section has it.
//
// Errors   UsageError: no such export
ExportKind ChooseNamedExport(const ProfileFile& file, std::string_view section, std::string_view exportName);

// What a run of a section would do.
//
// Errors   UsageError: no such section, or no such export; InputError: the profile has no section at all
SectionPlan PlanNamedSection(const ProfileFile& file, const std::string& section,
                             std::string_view exportName);

// The terminal's width in characters, as the environment variable COLUMNS tells; 80 without it.
size_t TerminalWidth();

}  // namespace vastrelline
