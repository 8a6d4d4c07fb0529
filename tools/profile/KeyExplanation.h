// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "profile/EffectiveValues.h"
#include "profile/KeyLookup.h"

namespace vastrelline {

// A key's place in a profile, as runs read it.
struct KeyOccurrence {
    std::string section;
    std::string place;  // "04 CLAHE"
    EffectiveValue value;
};

// Where runs of a section read a key that was looked up, or any key of the stage: at the position that was
// named, or at all.
std::vector<KeyOccurrence> FindOccurrences(const LookedUp& found, const std::vector<EffectivePlace>& places);

// What the table tells of a key or a stage, for people: meaning, range, default, looks, traps, names. Behind
// it the places in a profile, if there are any.
std::string ExplainForPeople(const LookedUp& found, const std::vector<KeyOccurrence>& occurrences,
                             size_t width);

// The same for programs, as docs/tool-json.md tells.
nlohmann::ordered_json ExplainToJson(const LookedUp& found, const std::vector<KeyOccurrence>& occurrences);

}  // namespace vastrelline
