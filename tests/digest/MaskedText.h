// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vastrelline::digest {

// A text that a run wrote, with "{folder}" for the run's folder and with patterns for what the clock says:
// dates, times of day and durations, of exactly the right form only. All else stays, numbers above all.
std::string MaskText(std::string_view text, std::string_view folder);

// The names of the files of one run without what differs from run to run, in the same order: "T_" for the
// stamp at the beginning of a backup's name, and running numbers counted from the smallest of them, "+0_"
// being the first.
std::vector<std::string> MaskNames(const std::vector<std::string>& names);

}  // namespace vastrelline::digest
