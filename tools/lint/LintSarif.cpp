// SPDX-License-Identifier: Apache-2.0
#include <nlohmann/json.hpp>

#include "lint/LintJson.h"
#include "lint/LintRules.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

Json MakeRules() {
    Json rules = Json::array();
    for (const LintRule& rule : LintRules())
        rules.push_back({{"id", rule.id},
                         {"shortDescription", {{"text", rule.summary}}},
                         {"help", {{"text", rule.remedy}}},
                         {"defaultConfiguration", {{"level", SeverityName(rule.severity)}}}});
    return rules;
}

size_t IndexOf(const std::string& rule) {
    size_t index = 0;
    for (const LintRule& each : LintRules()) {
        if (each.id == rule) break;
        ++index;
    }
    return index;
}

// A path as a URI reference: what has a meaning of its own there goes in percent.
std::string UriOf(const std::string& path) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    constexpr std::string_view kPlain = "-._~/!$&'()*+,=@";
    std::string uri;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (c == '\\')
            uri += '/';
        else if (isLetter || kPlain.find(c) != std::string_view::npos)
            uri += c;
        else
            uri.append({'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]});
    }
    return uri;
}

Json MakeResult(const LintFinding& each) {
    Json location = {{"artifactLocation", {{"uri", UriOf(each.finding.file)}}}};
    if (each.finding.line > 0)
        location["region"] = {{"startLine", each.finding.line}, {"startColumn", each.finding.column}};
    return {{"ruleId", each.finding.rule},
            {"ruleIndex", IndexOf(each.finding.rule)},
            {"level", SeverityName(each.finding.severity)},
            {"message", {{"text", each.finding.text}}},
            {"locations", Json::array({{{"physicalLocation", std::move(location)}}})}};
}

}  // namespace

std::string FormatLintSarif(std::span<const LintedFile> files) {
    Json results = Json::array();
    Json notifications = Json::array();
    for (const LintedFile& file : files) {
        for (const LintFinding& each : file.findings) results.push_back(MakeResult(each));
        if (file.error)
            notifications.push_back({{"level", "error"}, {"message", {{"text", file.error->what()}}}});
    }
    Json invocation = {{"executionSuccessful", notifications.empty()}};
    if (!notifications.empty()) invocation["toolExecutionNotifications"] = std::move(notifications);
    Json driver = {{"name", "vastrelline"}, {"version", VASTRELLINE_VERSION}, {"rules", MakeRules()}};
    Json run = {{"tool", {{"driver", std::move(driver)}}},
                {"columnKind", "unicodeCodePoints"},
                {"invocations", Json::array({std::move(invocation)})},
                {"results", std::move(results)}};
    const Json json = {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                       {"version", "2.1.0"},
                       {"runs", Json::array({std::move(run)})}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace vastrelline
