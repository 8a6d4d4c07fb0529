// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "lint/LintJson.h"
#include "lint/LintRules.h"
#include "lint/LintedFiles.h"

namespace vastrelline {
namespace {

// What the format's schema requires of the parts that are used.
TEST(LintSarif, HasTheStructureOfVersion210) {
    const nlohmann::json json = nlohmann::json::parse(FormatLintSarif(TwoFiles()));
    EXPECT_EQ(json["version"], "2.1.0");
    EXPECT_TRUE(json["$schema"].get<std::string>().find("sarif-2.1.0") != std::string::npos);
    ASSERT_EQ(json["runs"].size(), 1U);
    const nlohmann::json& run = json["runs"][0];
    const nlohmann::json& driver = run["tool"]["driver"];
    EXPECT_EQ(driver["name"], "vastrelline");
    ASSERT_EQ(driver["rules"].size(), LintRules().size());
    std::set<std::string> ids;
    for (const nlohmann::json& rule : driver["rules"]) {
        EXPECT_TRUE(ids.insert(rule["id"].get<std::string>()).second);
        EXPECT_FALSE(rule["shortDescription"]["text"].get<std::string>().empty());
        const std::string level = rule["defaultConfiguration"]["level"];
        EXPECT_TRUE(level == "note" || level == "warning" || level == "error") << level;
    }
    EXPECT_EQ(run["columnKind"], "unicodeCodePoints");
    ASSERT_EQ(run["results"].size(), 2U);
    for (const nlohmann::json& result : run["results"]) {
        const auto index = result["ruleIndex"].get<size_t>();
        EXPECT_EQ(driver["rules"][index]["id"], result["ruleId"]);
        EXPECT_FALSE(result["message"]["text"].get<std::string>().empty());
        const nlohmann::json& place = result["locations"][0]["physicalLocation"];
        EXPECT_EQ(place["artifactLocation"]["uri"], "a%20b.ini");
        EXPECT_GE(place["region"]["startLine"].get<int>(), 1);
        EXPECT_GE(place["region"]["startColumn"].get<int>(), 1);
    }
    EXPECT_EQ(run["results"][0]["locations"][0]["physicalLocation"]["region"]["startColumn"], 2);
    EXPECT_EQ(run["invocations"][0]["executionSuccessful"], false);
    EXPECT_EQ(run["invocations"][0]["toolExecutionNotifications"][0]["message"]["text"],
              "none.ini: does not exist");
}

TEST(LintSarif, AFindingAboutAWholeFileHasNoRegion) {
    const std::vector<LintedFile> files{Linted("P.ini", "")};
    const nlohmann::json json = nlohmann::json::parse(FormatLintSarif(files));
    const nlohmann::json& result = json["runs"][0]["results"][0];
    EXPECT_EQ(result["level"], "error");
    EXPECT_FALSE(result["locations"][0]["physicalLocation"].contains("region"));
    EXPECT_EQ(json["runs"][0]["invocations"][0]["executionSuccessful"], true);
}

TEST(LintSarif, TakesBytesThatAreNoText) {
    const std::vector<LintedFile> files{Linted("P.ini", "[A]\n\xFF\xE4=1\n")};
    EXPECT_TRUE(nlohmann::json::accept(FormatLintSarif(files)));
}

}  // namespace
}  // namespace vastrelline
