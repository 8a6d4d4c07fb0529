// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "profile/SectionPlan.h"

namespace vastrelline {

// A file that a run numbered: "03_clahe.raw" as 3 and "clahe.raw".
struct NumberedFile {
    int number = 0;
    std::string rest;  // in lower case
    std::string path;
};

// Nothing: the name begins with no number of two digits or more and a line below.
std::optional<NumberedFile> ReadNumberedName(const std::string& path);

// The numbered files of a folder, by number and name.
std::vector<NumberedFile> ListNumberedFiles(const std::string& folder);

// Which name of a list such as "NN_Unsharp<mode>.raw" a file has; `rest` in lower case.
std::optional<size_t> FindDumpName(std::span<const std::string_view> names, const std::string& rest);

// What a stage may dump; the last of it is its result.
std::span<const std::string_view> DumpsOf(const PlannedPlace& place);

// The curve files that a stage may leave.
std::span<const std::string_view> CurvesOf(const PlannedPlace& place);

}  // namespace vastrelline
