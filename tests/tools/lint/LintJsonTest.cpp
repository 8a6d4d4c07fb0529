// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "commands/JsonObject.h"
#include "lint/LintJson.h"
#include "lint/LintedFiles.h"

namespace vastrelline {
namespace {

TEST(LintJson, HoldsEveryFindingWithItsPlace) {
    const nlohmann::json json = LintToJson(TwoFiles());
    EXPECT_EQ(json["warnings"], 2);
    EXPECT_EQ(json["errors"], 0);
    EXPECT_EQ(json["notes"], 0);
    ASSERT_EQ(json["files"].size(), 2U);
    const nlohmann::json& finding = json["files"][0]["findings"][0];
    EXPECT_EQ(finding["file"], "a b.ini");
    EXPECT_EQ(finding["line"], 3);
    EXPECT_EQ(finding["column"], 2);
    EXPECT_EQ(finding["severity"], "warning");
    EXPECT_EQ(finding["rule"], "unknown-key");
    EXPECT_EQ(finding["text"], "SAVE_LOGG is read by no run; did you mean SAVE_LOG?");
    EXPECT_EQ(json["files"][1]["error"]["where"], "none.ini");
    EXPECT_EQ(json["files"][1]["error"]["what"], "does not exist");
}

TEST(LintJson, OffersAFixWhereThereIsOne) {
    const std::vector<LintedFile> files{Linted("P.ini", "[A]\nSAVE_LOGG=1\n")};
    const nlohmann::json json = LintToJson(files);
    EXPECT_EQ(json["files"][0]["findings"][0]["fix"], "write SAVE_LOG");
}

TEST(LintJson, TakesBytesThatAreNoText) {
    const std::vector<LintedFile> files{Linted("P.ini", "[A]\n\xFF\xE4=1\n")};
    std::ostringstream out;
    PrintObject(out, "profile lint", ExitCode::Findings, LintToJson(files));
    EXPECT_TRUE(nlohmann::json::accept(out.str()));
}

}  // namespace
}  // namespace vastrelline
