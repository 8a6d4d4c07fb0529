// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "library/ExportRequest.h"
#include "profile/EffectiveValues.h"
#include "profile/SectionPlan.h"

namespace vastrelline {

// "p.ini, section General: configured chain by ImageProcessing": what the values are of.
std::string DescribePlan(const std::string& path, const SectionPlan& plan, const ExportTraits& traits);

// "line 12", "default", "line 12, misread": where a value has come from.
std::string DescribeMark(const EffectiveValue& value);

// All values of a run as a table for people: place by place a line for each key with its value, where it has
// come from, and what makes sense there or why something else is read. A step that is switched off has its
// switch only.
//
// width   of the terminal: what does not fit is left out at the end of a line, never the value's mark
std::string FormatValueTable(const std::vector<EffectivePlace>& places, size_t width);

}  // namespace vastrelline
