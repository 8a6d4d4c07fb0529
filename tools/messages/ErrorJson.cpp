// SPDX-License-Identifier: Apache-2.0
#include "messages/ErrorJson.h"

#include <nlohmann/json.hpp>

namespace vastrelline {

nlohmann::ordered_json ErrorJson(const std::optional<ToolError>& error) {
    if (!error) return nullptr;
    return {{"where", error->Where()}, {"what", error->What()}, {"remedy", error->Remedy()}};
}

}  // namespace vastrelline
