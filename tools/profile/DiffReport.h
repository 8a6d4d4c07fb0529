// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "profile/ProfileDiff.h"

namespace vastrelline {

// The differences for people: place by place the values of both sides, with what is a default.
std::string FormatDifferences(const std::vector<PlaceDifference>& differences, size_t width);

// A value that differs as a table has it; a stage that was only moved, or has no value of its own, has no
// key.
struct DifferenceRow {
    std::string place;  // "04 CLAHE: only in A"
    std::string key;
    std::string first;
    std::string second;
    bool hasEffect = true;
};
std::vector<DifferenceRow> ListDifferences(const std::vector<PlaceDifference>& differences);

// "3 values differ, 1 stage only in A, 2 moved"; "equal" without a difference.
std::string SumUpDifferences(const std::vector<PlaceDifference>& differences);

// The same for programs, as docs/tool-json.md tells: an array of places.
nlohmann::ordered_json DifferencesToJson(const std::vector<PlaceDifference>& differences);

}  // namespace vastrelline
