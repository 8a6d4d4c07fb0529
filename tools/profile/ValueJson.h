// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "library/ExportRequest.h"
#include "profile/EffectiveValues.h"
#include "profile/SectionPlan.h"

namespace vastrelline {

// A value as JSON: integers and finite numbers as numbers, infinities and what is no number as text.
nlohmann::ordered_json ValueToJson(const ReadValue& value);

// One value with its key and where it has come from, as docs/tool-json.md tells.
nlohmann::ordered_json EffectiveToJson(const EffectiveValue& value);

// All values of a run, as docs/tool-json.md tells.
nlohmann::ordered_json ValuesToJson(const std::string& path, const SectionPlan& plan,
                                    const ExportTraits& traits, const std::vector<EffectivePlace>& places);

}  // namespace vastrelline
