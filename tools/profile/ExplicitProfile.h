// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "profile/EffectiveValues.h"

namespace vastrelline {

// A profile of all values of a run, those that were defaults included, each with its meaning as a comment:
// UTF-8, with a mark if a value is not ASCII. A run of it reads the same values as they stand.
//
// head   comment at the file's begin, a line or more
std::string WriteExplicitProfile(const std::string& head, const std::vector<EffectivePlace>& places);

}  // namespace vastrelline
