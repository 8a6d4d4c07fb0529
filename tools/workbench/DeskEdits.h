// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "messages/ToolError.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"

namespace vastrelline {

// Changes of a profile's bytes as the desk makes them: what is not concerned stays byte for byte. `path` is
// for messages.

// Sets one value; a new key comes behind the section's last line.
//
// Errors   InputError: such a line could not be read back
std::string SetKey(const std::string& path, const std::string& bytes, std::string_view section,
                   std::string_view key, std::string_view value);

// Takes a key back to what the file has for it, or away where the file lacks it.
//
// Errors   as SetKey
std::string UnsetKey(const std::string& path, const std::string& bytes, const std::string& fileBytes,
                     std::string_view section, std::string_view key);

// The profile that runs read while places are off: their switches are 0.
//
// Errors   as SetKey
std::string SwitchOff(const std::string& path, const std::string& bytes, std::string_view section,
                      const std::set<std::string>& offKeys);

// The key whose value 0 takes a place out of a run: its number in the list or the switch of a fixed step;
// empty where a place cannot be switched.
std::string SwitchKeyOf(const PlannedPlace& place);

// Why a run of the section would go by nothing of the profile; nothing: it would not.
std::optional<ToolError> WhyMeaningless(const ProfileFile& file, std::string_view section);

// What two states of a profile differ in, in a few words, that section's keys first: "04_MAX_SLOPE 1.3
// -> 1.5, 2 more", "[IP_LOWMODE] 00_GAUSSIAN_SIZE 0.9 -> 1.4"; empty: in no value.
std::string DescribeEdits(const ProfileFile& before, const ProfileFile& after, std::string_view section);

}  // namespace vastrelline
