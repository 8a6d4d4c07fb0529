// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

namespace vastrelline::digest {

// Values of one key. A list is one text, its values apart by blanks.
struct KeyValues {
    std::string_view key;
    std::string_view ordinary;  // what profiles hold, and the ends of it
    std::string_view odd;       // what is survived: too small, too large, no number
};

// A stage and what its keys are tried with.
struct StageValues {
    std::string_view group;   // name of the group of runs
    int number;               // in the stage list; 0 in the fixed chain
    std::string_view enable;  // keys of the fixed chain that switch it on; empty in the configured one
    KeyValues mode;  // the key that picks a method: every other key is tried in each; key empty: none
    std::vector<KeyValues> keys;
};

// The stages of the configured chain, and those of the fixed one in its order.
const std::vector<StageValues>& ConfiguredStages();
const std::vector<StageValues>& FixedStages();

// Settings of a whole run that are no stage's.
const std::vector<KeyValues>& CommonSettings();

// Settings of the range, in section Settings.
const std::vector<KeyValues>& RangeSettings();

std::vector<std::string_view> ListOf(std::string_view values);

}  // namespace vastrelline::digest
