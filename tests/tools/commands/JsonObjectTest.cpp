// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "ToolRun.h"
#include "commands/JsonObject.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

// The last word of "vastrelline 1.0".
std::string Version() {
    const std::string line = RunTool({"--version"}, MustNotBeCalled).report;
    return line.substr(line.find(' ') + 1, line.find('\n') - line.find(' ') - 1);
}

TEST(JsonObject, HasTheHeadThatAllHave) {
    std::ostringstream out;
    PrintObject(out, "profile lint", ExitCode::Findings, {{"b", 1}, {"a", "\xFF"}});
    EXPECT_EQ(out.str(), "{\n  \"tool\": \"vastrelline\",\n  \"version\": \"" + Version() +
                             "\",\n  \"command\": \"profile lint\",\n  \"exit\": 1,\n  \"b\": 1,\n  \"a\": "
                             "\"\xEF\xBF\xBD\"\n}\n");
}

TEST(JsonObject, IsALineWhereACommandPrintsMany) {
    std::ostringstream out;
    PrintLine(out, {{"b", {1, 2}}, {"a", "\n\xFF"}});
    EXPECT_EQ(out.str(), "{\"b\":[1,2],\"a\":\"\\n\xEF\xBF\xBD\"}\n");
}

TEST(JsonObject, IsWhatEveryCommandPrints) {
    const TemporaryFolder folder;
    const std::string profile = folder.Narrow("p.ini");
    const std::string frame = folder.Narrow("f_1x1.raw");
    WriteBytes(profile, "[A]\nPROCMODE=2\n");
    WriteBytes(frame, std::string("\x01\x00", 2));
    const std::vector<std::vector<std::string>> runs{
        {"run", frame, "--profile", profile, "--section", "A", "--out", folder.Narrow("o.raw")},
        {"info", frame},
        {"compare", frame, frame},
        {"convert", frame, folder.Narrow("o.pgm")},
        {"profile", "lint", profile},
        {"profile", "show", profile, "--section", "A"},
        {"profile", "diff", profile, profile, "--section", "A"},
        {"profile", "set", profile, "SAVE_LOG=1", "--section", "A"},
        {"profile", "explain", "MAX_SLOPE"},
        {"profile", "show", profile, "--section", "missing"},
        {"info", folder.Narrow("missing_1x1.raw")}};
    for (std::vector<std::string> words : runs) {
        const std::string command = words[0] == "profile" ? words[0] + " " + words[1] : words[0];
        words.emplace_back("--json");
        const ToolRun run = RunTool(words, [](ExportRequest&) { return 0; });
        const nlohmann::json object = nlohmann::json::parse(run.report);
        EXPECT_EQ(object.at("tool"), "vastrelline");
        EXPECT_EQ(object.at("version"), Version());
        EXPECT_EQ(object.at("command"), command);
        EXPECT_EQ(object.at("exit"), run.exitCode) << run.report;
    }
}

}  // namespace
}  // namespace vastrelline
