// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "workbench/Desk.h"

namespace vastrelline {

// Every place of a run of the desk with its keys, and what the page needs to make controls of them.
//
// file, plan   of the desk's profile as it is edited, without anything switched off
// saved        the profile as the file has it
nlohmann::ordered_json PlacesToJson(const ProfileFile& file, const SectionPlan& plan,
                                    const ProfileFile& saved, const DeskState& desk);

}  // namespace vastrelline
