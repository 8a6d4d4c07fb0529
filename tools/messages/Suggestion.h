// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace vastrelline {

// How many letters have to be put in, taken out, replaced or swapped with their neighbour to make one name of
// the other, whatever the case of ASCII letters: the restricted form of Damerau (1964).
size_t EditDistance(std::string_view one, std::string_view other);

// The candidate that is the nearest to what somebody wrote; empty if none is near: at most a third of the
// letters may differ. Of equally near ones the first counts.
std::string FindNearest(std::string_view written, std::span<const std::string> candidates);

// "did you mean 'run'?", or `otherwise` if no candidate is near.
std::string DidYouMean(std::string_view written, std::span<const std::string> candidates,
                       std::string_view otherwise = {});

}  // namespace vastrelline
