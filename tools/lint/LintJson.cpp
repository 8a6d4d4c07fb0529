// SPDX-License-Identifier: Apache-2.0
#include "lint/LintJson.h"

#include <nlohmann/json.hpp>

#include "messages/ErrorJson.h"
#include "messages/FindingJson.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

Json MakeFinding(const LintFinding& each) {
    Json json = FindingsJson({&each.finding, 1})[0];
    if (each.fix) json["fix"] = each.fix->text;
    return json;
}

Json MakeFile(const LintedFile& file) {
    Json json = {{"file", file.path}};
    if (file.error) json["error"] = ErrorJson(file.error);
    if (file.fixCount > 0) json["fixes"] = file.fixCount;
    json["findings"] = Json::array();
    for (const LintFinding& each : file.findings) json["findings"].push_back(MakeFinding(each));
    return json;
}

}  // namespace

nlohmann::ordered_json LintToJson(std::span<const LintedFile> files) {
    Json json;
    json["errors"] = 0;
    json["warnings"] = 0;
    json["notes"] = 0;
    json["files"] = Json::array();
    for (const LintedFile& file : files) {
        json["files"].push_back(MakeFile(file));
        for (const LintFinding& each : file.findings) {
            const Severity severity = each.finding.severity;
            Json& count = json[std::string(SeverityName(severity)) + "s"];
            count = count.get<size_t>() + 1;
        }
    }
    return json;
}

}  // namespace vastrelline
