// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "ToolRun.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using Json = nlohmann::json;

TEST(InfoCommand, TellsSeveralFramesABlockEach) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a_2x1.raw", "\x01\x00\x02\x10"s);
    WriteBytes(folder.Path() / "b.pgm", "P5\n2 1\n255\n\x05\x06"s);
    const ToolRun run =
        RunTool({"info", folder.Narrow("a_2x1.raw"), folder.Narrow("b.pgm")}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.report.rfind(folder.Narrow("a_2x1.raw") + "\n  format      raw frame\n", 0), 0U)
        << run.report;
    EXPECT_THAT(run.report, HasSubstr("\n\n" + folder.Narrow("b.pgm") + "\n  format      PGM picture\n"));
    EXPECT_THAT(run.report, HasSubstr("  levels      1 to 4098, mean 2049.5, 2 different\n"));
    EXPECT_THAT(run.report, HasSubstr("  mind        the brightest level needs 13 bits"));
}

TEST(InfoCommand, JsonIsOneObject) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a_2x2.raw", "\x00\x00\x10\x00\x20\x00\xFF\x0F"s);
    const ToolRun run = RunTool({"info", folder.Narrow("a_2x2.raw"), "--json"}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 0);
    const Json object = Json::parse(run.report);
    EXPECT_EQ(object["exit"], 0);
    const Json& frame = object["frames"].at(0);
    EXPECT_EQ(frame["file"], folder.Narrow("a_2x2.raw"));
    EXPECT_EQ(frame["format"], "raw");
    EXPECT_EQ(frame["width"], 2);
    EXPECT_EQ(frame["height"], 2);
    EXPECT_EQ(frame["bits"], 16);
    EXPECT_EQ(frame["bitsUsed"], 12);
    EXPECT_EQ(frame["fits12Bits"], true);
    EXPECT_EQ(frame["minimum"], 0);
    EXPECT_EQ(frame["maximum"], 4095);
    EXPECT_EQ(frame["mean"], 1035.75);
    EXPECT_EQ(frame["percentiles"]["50"], 16);
    EXPECT_EQ(frame["shareAtZero"], 0.25);
    EXPECT_EQ(frame["flatCorners"], Json::array());
    EXPECT_EQ(frame["advice"], Json::array());
}

TEST(InfoCommand, AFrameThatCannotBeReadDoesNotHideTheOthers) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "b.pgm", "P5\n2 1\n255\n\x05\x06"s);
    const std::vector<std::string> words{"info", folder.Narrow("missing.png"), folder.Narrow("b.pgm")};
    const ToolRun run = RunTool(words, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.errors, folder.Narrow("missing.png") + ": does not exist\n");
    EXPECT_THAT(run.report, HasSubstr("PGM picture"));

    std::vector<std::string> withJson = words;
    withJson.emplace_back("--json");
    const Json object = Json::parse(RunTool(withJson, MustNotBeCalled).report);
    EXPECT_EQ(object["exit"], 3);
    EXPECT_EQ(object["frames"].at(0)["error"]["what"], "does not exist");
    EXPECT_EQ(object["frames"].at(1)["maximum"], 6);
}

TEST(InfoCommand, OneFrameThatCannotBeReadIsAnError) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.raw", "1234");
    const ToolRun unknown = RunTool({"info", folder.Narrow("a.raw")}, MustNotBeCalled);
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.errors,
              folder.Narrow("a.raw") + ": 4 bytes fit 1x2 or 2x1 at 16 bits; say --size WxH\n");
    EXPECT_EQ(RunTool({"info", folder.Narrow("b.raw")}, MustNotBeCalled).exitCode, 3);
    EXPECT_EQ(RunTool({"info", "-", "-"}, MustNotBeCalled).exitCode, 2);
}

}  // namespace
}  // namespace vastrelline
