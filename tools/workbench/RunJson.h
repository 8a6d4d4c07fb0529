// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <vector>

#include "workbench/KeptRun.h"
#include "workbench/RunShelf.h"

namespace vastrelline {

// A run as the page gets it.
nlohmann::ordered_json RunToJson(const KeptRun& run);

// The last twenty runs with the times of their stages, newest first.
nlohmann::ordered_json TimingsToJson(const std::vector<const HistoryRow*>& rows);

}  // namespace vastrelline
