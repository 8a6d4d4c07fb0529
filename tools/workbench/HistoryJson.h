// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "workbench/RunShelf.h"

namespace vastrelline {

// A page gets so many rows at a time.
inline constexpr size_t kShownRows = 200;

// Rows of the history as the page gets them, newest first.
//
// before   only those older than this run
nlohmann::ordered_json HistoryToJson(const RunShelf& runs, std::optional<uint64_t> before);

}  // namespace vastrelline
