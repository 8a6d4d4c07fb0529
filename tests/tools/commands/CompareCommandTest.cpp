// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "formats/FrameFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
using Json = nlohmann::json;

class CompareCommandTest : public testing::Test {
protected:
    CompareCommandTest() {
        WriteBytes(folder_.Path() / "a_2x1.raw", "\x01\x00\x02\x01"s);
        WriteBytes(folder_.Path() / "b.pgm", "P5\n2 1\n999\n\x00\x01\x01\x02"s);
        WriteBytes(folder_.Path() / "c_2x1.raw", "\x01\x00\x05\x00"s);
        WriteBytes(folder_.Path() / "d_1x2.raw", "\x01\x00\x05\x00"s);
        WriteBytes(folder_.Path() / "cut.png", "\x89PNG\r\n\x1A\n"s);
    }

    ToolRun Compare(const std::string& first, const std::string& second,
                    const std::vector<std::string>& more = {}) const {
        std::vector<std::string> words{"compare", folder_.Narrow(first), folder_.Narrow(second)};
        words.insert(words.end(), more.begin(), more.end());
        return RunTool(words, MustNotBeCalled);
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
};

TEST_F(CompareCommandTest, TheCodeTellsDifferentFromUnreadable) {
    for (const std::vector<std::string>& more : {std::vector<std::string>{}, {"--json"}}) {
        EXPECT_EQ(Compare("a_2x1.raw", "b.pgm", more).exitCode, 0);
        EXPECT_EQ(Compare("a_2x1.raw", "c_2x1.raw", more).exitCode, 1);
        EXPECT_EQ(Compare("c_2x1.raw", "d_1x2.raw", more).exitCode, 1);
        EXPECT_EQ(Compare("a_2x1.raw", "missing.raw", more).exitCode, 3);
        EXPECT_EQ(Compare("a_2x1.raw", "cut.png", more).exitCode, 3);
    }
    EXPECT_EQ(RunTool({"compare", "-", "-"}, MustNotBeCalled).exitCode, 2);
}

// The fields of the pixels that tell where.
Json PlacesOf(const ToolRun& run) { return Json::parse(run.report)["pixels"]["firstPlaces"]; }

TEST_F(CompareCommandTest, JsonHoldsWhatTheTextSays) {
    const Json equal = Json::parse(Compare("a_2x1.raw", "b.pgm", {"--json"}).report);
    EXPECT_EQ(equal["exit"], 0);
    EXPECT_EQ(equal["equal"], true);
    EXPECT_EQ(equal["firstSize"], (Json{2, 1}));
    EXPECT_EQ(equal["pixels"]["count"], 0);
    EXPECT_EQ(equal["pixels"]["largest"], 0);
    EXPECT_EQ(equal["pixels"]["firstPlaces"], Json::array());
    const ToolRun different = Compare("a_2x1.raw", "c_2x1.raw", {"--json"});
    EXPECT_EQ(Json::parse(different.report)["exit"], 1);
    EXPECT_EQ(Json::parse(different.report)["pixels"]["largest"], 253);
    EXPECT_EQ(PlacesOf(different), Json::parse(R"([{"x": 1, "y": 0, "first": 258, "second": 5}])"));
    const Json sizes = Json::parse(Compare("c_2x1.raw", "d_1x2.raw", {"--json"}).report);
    EXPECT_EQ(sizes["equal"], false);
    EXPECT_EQ(sizes["state"], "different-sizes");
    EXPECT_EQ(sizes["secondSize"], (Json{1, 2}));
    EXPECT_EQ(sizes["pixels"], nullptr);
}

TEST_F(CompareCommandTest, ToleranceThatIsMetIsWell) {
    const ToolRun met = Compare("a_2x1.raw", "c_2x1.raw", {"--tolerance", "253"});
    EXPECT_EQ(met.exitCode, 0);
    EXPECT_THAT(met.report, testing::StartsWith("within tolerance: 1 of 2 pixels (50.0000 %) differ, by at "
                                                "most 253; the tolerance is 253\n"));
    const ToolRun missed = Compare("a_2x1.raw", "c_2x1.raw", {"--tolerance", "252"});
    EXPECT_EQ(missed.exitCode, 1);
    EXPECT_THAT(missed.report, testing::HasSubstr("1 of them by more than the tolerance of 252"));
}

// 253 levels at gain 0.5 are 126.5 of 255: through a window of 510 levels, (2 * 253 * 255 + 510) / 1020 =
// 127.
TEST_F(CompareCommandTest, DrawsTheDifferenceWithGain) {
    const auto levelsOf = [&](const std::string& leaf, const std::vector<std::string>& more) {
        std::vector<std::string> words{"--difference", folder_.Narrow(leaf)};
        words.insert(words.end(), more.begin(), more.end());
        EXPECT_EQ(Compare("a_2x1.raw", "c_2x1.raw", words).exitCode, 1);
        return ReadFrameFile(folder_.Narrow(leaf), FrameSize{2, 1}).pixels;
    };
    EXPECT_THAT(levelsOf("auto.png", {}), testing::ElementsAre(0, 255));
    EXPECT_THAT(levelsOf("half.png", {"--gain", "0.5"}), testing::ElementsAre(0, 127));
    EXPECT_THAT(levelsOf("twice.bmp", {"--gain", "2"}), testing::ElementsAre(0, 255));
    EXPECT_THAT(levelsOf("levels.raw", {}), testing::ElementsAre(0, 253));
    const ToolRun again = Compare("a_2x1.raw", "c_2x1.raw", {"--difference", folder_.Narrow("auto.png")});
    EXPECT_EQ(again.exitCode, 5);
    EXPECT_THAT(again.errors, testing::HasSubstr("--force replaces it"));
}

TEST_F(CompareCommandTest, OtherSizesHaveNoDifferencePicture) {
    const ToolRun run = Compare("c_2x1.raw", "d_1x2.raw", {"--difference", folder_.Narrow("none.png")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, testing::HasSubstr("none.png: not written, for the sizes differ"));
    EXPECT_FALSE(std::filesystem::exists(folder_.Narrow("none.png")));
}

TEST_F(CompareCommandTest, NeverWritesOverAFrameThatIsCompared) {
    const ToolRun run =
        Compare("a_2x1.raw", "c_2x1.raw", {"--difference", folder_.Narrow("c_2x1.raw"), "--force"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(ReadBytes(folder_.Path() / "c_2x1.raw"), "\x01\x00\x05\x00"s);
}

class CompareFoldersTest : public CompareCommandTest {
protected:
    CompareFoldersTest() {
        for (const char* const name : {"one", "two"})
            std::filesystem::create_directory(folder_.Path() / name);
        Put("one/same_2x1.raw", "\x01\x00\x02\x01"s);
        Put("two/same_2x1.raw", "\x01\x00\x02\x01"s);
    }

    void Put(const std::string& leaf, const std::string& bytes) const {
        WriteBytes(folder_.Path() / leaf, bytes);
    }
};

TEST_F(CompareFoldersTest, AreEqualIfAllFramesAre) {
    const ToolRun run = Compare("one", "two");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.report, "equal: 1 name: 1 equal\n");
}

TEST_F(CompareFoldersTest, AFrameOfOneAloneIsAFinding) {
    Put("two/new_2x1.raw", "\x01\x00\x02\x01"s);
    const ToolRun run = Compare("one", "two");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.report, testing::HasSubstr("only in B"));
}

TEST_F(CompareFoldersTest, WhatCannotBeReadIsNeverDifferent) {
    Put("one/bad_2x1.raw", "\x01"s);
    Put("two/bad_2x1.raw", "\x01\x00\x02\x01"s);
    Put("one/other_2x1.raw", "\x01\x00\x02\x01"s);
    Put("two/other_2x1.raw", "\x01\x00\x03\x01"s);
    const ToolRun run = Compare("one", "two", {"--json"});
    EXPECT_EQ(run.exitCode, 3);
    const Json object = Json::parse(run.report);
    EXPECT_EQ(object["exit"], 3);
    EXPECT_EQ(object["pairs"][0]["state"], "unreadable");
    EXPECT_THAT(object["pairs"][0]["error"]["what"], testing::HasSubstr("byte"));
    EXPECT_EQ(object["pairs"][1]["state"], "different");
    EXPECT_EQ(object["counts"]["equal"], 1);
}

TEST_F(CompareFoldersTest, WriteJunitOfNamesAsTheyAre) {
    const std::string name = "a\"<b>\n\xFF_2x1.raw";
    Put("one/" + name, "\x01\x00\x02\x01"s);
    Put("two/" + name, "\x01\x00\x03\x01"s);
    const ToolRun run = Compare("one", "two", {"--junit", folder_.Narrow("j.xml"), "--json"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(Json::parse(run.report)["pairs"][0]["name"], "a\"<b>\n\uFFFD_2x1.raw");
    const std::string junit = ReadBytes(folder_.Path() / "j.xml");
    EXPECT_THAT(junit, testing::HasSubstr("name=\"a&quot;&lt;b&gt;\u240A\uFFFD_2x1.raw\">"));
    EXPECT_THAT(junit, testing::HasSubstr("tests=\"2\" failures=\"1\" errors=\"0\""));
}

TEST_F(CompareFoldersTest, HaveAReport) {
    Put("one/other_2x1.raw", "\x01\x00\x02\x01"s);
    Put("two/other_2x1.raw", "\x01\x00\x03\x01"s);
    EXPECT_EQ(Compare("one", "two", {"--report", folder_.Narrow("r.html")}).exitCode, 1);
    const std::string page = ReadBytes(folder_.Path() / "r.html");
    EXPECT_THAT(page, testing::StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(page, testing::HasSubstr("<p>2 names: 1 equal, 1 different.</p>"));
    EXPECT_THAT(page, testing::HasSubstr("<td>vastrelline compare "));
    EXPECT_EQ(Compare("one", "two", {"--report", folder_.Narrow("r.html")}).exitCode, 5);
    EXPECT_EQ(Compare("one", "two", {"--report", folder_.Narrow("r.html"), "--force"}).exitCode, 1);
}

TEST_F(CompareFoldersTest, DoNotGoWithAFrame) {
    EXPECT_EQ(Compare("one", "a_2x1.raw").exitCode, 2);
    EXPECT_EQ(Compare("a_2x1.raw", "two").exitCode, 2);
    EXPECT_EQ(Compare("one", "two", {"--difference", folder_.Narrow("d.png")}).exitCode, 2);
    std::filesystem::create_directory(folder_.Path() / "empty");
    EXPECT_EQ(Compare("one", "empty").exitCode, 3);
}

}  // namespace
}  // namespace vastrelline
