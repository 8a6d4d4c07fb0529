// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "messages/ToolError.h"

namespace vastrelline {

// {where, what, remedy}; null for no error.
nlohmann::ordered_json ErrorJson(const std::optional<ToolError>& error);

}  // namespace vastrelline
