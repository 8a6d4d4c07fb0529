// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <span>

#include "messages/Finding.h"

namespace vastrelline {

// {severity, file, line, column, text, rule}; line 0 stands for the whole file.
nlohmann::ordered_json FindingToJson(const Finding& finding);

// An array of them.
nlohmann::ordered_json FindingsJson(std::span<const Finding> findings);

}  // namespace vastrelline
