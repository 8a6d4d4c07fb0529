// SPDX-License-Identifier: Apache-2.0
#include "messages/FindingJson.h"

#include <nlohmann/json.hpp>

namespace vastrelline {

nlohmann::ordered_json FindingToJson(const Finding& finding) {
    return {{"severity", SeverityName(finding.severity)},
            {"file", finding.file},
            {"line", finding.line},
            {"column", finding.column},
            {"text", finding.text},
            {"rule", finding.rule}};
}

nlohmann::ordered_json FindingsJson(std::span<const Finding> findings) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const Finding& finding : findings) array.push_back(FindingToJson(finding));
    return array;
}

}  // namespace vastrelline
