// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using Json = nlohmann::json;

TEST(PhantomCommand, TellsTheTruthAsJsonAndKeepsIt) {
    const TemporaryFolder folder;
    const ToolRun run = RunTool(
        {"phantom", "wedge", "--size", "40x8", "--steps", "2", "--bits", "8", "--low", "60", "--high", "200",
         "--noise", "1,5", "--out", folder.Narrow("a.raw"), "--truth", folder.Narrow("a.json"), "--json"},
        MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    const Json object = Json::parse(run.report);
    EXPECT_EQ(object["command"], "phantom");
    EXPECT_EQ(object["frame"], folder.Narrow("a.raw"));
    EXPECT_LT(object["least"], 60);
    EXPECT_GT(object["greatest"], 200);
    const Json truth = Json::parse(ReadBytes(folder.Path() / "a.json"));
    EXPECT_EQ(truth, Json::parse(R"({"kind": "wedge", "width": 40, "height": 8, "seed": 1, "topLevel": 255,
        "low": 60.0, "high": 200.0, "steps": [{"left": 0, "width": 20, "level": 60.0, "noise": 1.0},
                                              {"left": 20, "width": 20, "level": 200.0, "noise": 5.0}]})"));
    for (const auto& [name, value] : truth.items()) EXPECT_EQ(object[name], value) << name;
}

TEST(PhantomCommand, EveryKindIsOfTheSizeThatIsAskedFor) {
    for (const std::string kind : {"teeth", "wedge", "edge", "lines"}) {
        const TemporaryFolder folder;
        const ToolRun run =
            RunTool({"phantom", kind, "--size", "60x50", "--out", folder.Narrow("a.raw")}, MustNotBeCalled);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_THAT(run.report, HasSubstr("phantom  " + kind + ", 60x50 pixels"));
        EXPECT_EQ(std::filesystem::file_size(folder.Path() / "a.raw"), 6000U) << kind;
    }
}

TEST(PhantomCommand, TeethIsWhatComesWithoutAKind) {
    const TemporaryFolder folder;
    RunTool({"phantom", "--size", "60x50", "--out", folder.Narrow("a.raw")}, MustNotBeCalled);
    RunTool({"phantom", "teeth", "--size", "60x50", "--out", folder.Narrow("b.raw")}, MustNotBeCalled);
    EXPECT_EQ(ReadBytes(folder.Path() / "a.raw"), ReadBytes(folder.Path() / "b.raw"));
}

TEST(PhantomCommand, NothingIsLeftIfTheTruthCannotBeWritten) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.json", "old");
    const ToolRun run = RunTool({"phantom", "edge", "--size", "40x40", "--out", folder.Narrow("a.raw"),
                                 "--truth", folder.Narrow("a.json")},
                                MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "a.raw"));
    EXPECT_EQ(ReadBytes(folder.Path() / "a.json"), "old");
}

TEST(PhantomCommand, AMisspeltKindIsAnswered) {
    const ToolRun run = RunTool({"phantom", "wegde", "--out", "a.raw"}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("there is no phantom 'wegde'; did you mean 'wedge'?"));
}

}  // namespace
}  // namespace vastrelline
