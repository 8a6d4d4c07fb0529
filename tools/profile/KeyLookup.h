// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keys/KeyTable.h"

namespace vastrelline {

// A key where it means one thing.
struct KeyTopic {
    const Key* key;                       // never null
    const Stage* stage;                   // that it belongs to; null: a setting, or the number of a position
    std::optional<SettingsGroup> group;   // of a plain key; nothing for a key with a position
    const Key* fixedKey = nullptr;        // the same in the fixed chain, if it has the same name there
    std::vector<std::string_view> notes;  // what is told of its stage or group and names it
};

// What a word of a person stands for.
struct LookedUp {
    std::string name;                 // the key without position, or the stage, as the table spells it
    std::optional<int32_t> position;  // that stood in front of the key
    std::vector<KeyTopic> keys;       // one name may be a key of several stages
    const Stage* stage = nullptr;     // the word is a stage's number, name, title or page
};

// Looks a key or stage up, letters of either case: "MAX_SLOPE", "04_max_slope", "CLAHE", "3", "gamma curve".
// Nothing: there is none of that name.
std::optional<LookedUp> LookUpKey(std::string_view word);

// What may be meant by a word that LookUpKey does not know, with the word's position; empty if nothing is
// near.
std::string FindNearestKey(std::string_view word);

}  // namespace vastrelline
