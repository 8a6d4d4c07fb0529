// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/EffectiveValues.h"

namespace vastrelline {

// A value that two runs do not share. One of them may lack it: the other's chain has a key more.
struct ValueDifference {
    std::string name;  // without position, as the stage of the configured chain calls it
    std::optional<EffectiveValue> first;
    std::optional<EffectiveValue> second;
    bool hasEffect = true;
};

enum class PlaceChange : uint8_t { Changed, OnlyInFirst, OnlyInSecond, Moved };

// A place of two runs in which they differ.
struct PlaceDifference {
    PlaceChange change = PlaceChange::Changed;
    std::string title;        // without position
    int32_t stageNumber = 0;  // 0: settings
    bool isOfWeakFrame = false;
    std::optional<int32_t> firstPosition;  // in the list; none in the fixed chain
    std::optional<int32_t> secondPosition;
    std::vector<ValueDifference> values;  // of a stage that only one has: those that are not defaults
};

// In what two runs differ, place by place in the order of the first, with defaults filled in. Stages are set
// side by side by their kinds and not by their positions. Those that are passed over or switched off count as
// not there; so do FunctionCount, the numbers of the list and the switches.
std::vector<PlaceDifference> DiffPlaces(const std::vector<EffectivePlace>& first,
                                        const std::vector<EffectivePlace>& second);

// "only-in-a" and so on.
std::string_view ChangeName(PlaceChange change);

}  // namespace vastrelline
