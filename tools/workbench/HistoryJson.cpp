// SPDX-License-Identifier: Apache-2.0
#include "workbench/HistoryJson.h"

#include <nlohmann/json.hpp>

namespace vastrelline {

using Json = nlohmann::ordered_json;

Json HistoryToJson(const RunShelf& runs, std::optional<uint64_t> before) {
    Json array = Json::array();
    for (const HistoryRow* const row : runs.Rows()) {
        if (array.size() == kShownRows) break;
        if (before && row->id >= *before) continue;
        const bool isLost = !row->lostFrame.empty();
        array.push_back({{"id", row->id},
                         {"name", row->name},
                         {"when", row->when},
                         {"frame", isLost ? Json(nullptr) : Json(row->desk.frame)},
                         {"lostFrame", isLost ? Json(row->lostFrame) : Json(nullptr)},
                         {"section", row->desk.section},
                         {"change", row->change},
                         {"sha256", row->hash},
                         {"elapsedMs", row->elapsedMs},
                         {"kept", runs.Find(row->id) != nullptr},
                         {"hasPicture", row->picture != nullptr}});
    }
    return array;
}

}  // namespace vastrelline
