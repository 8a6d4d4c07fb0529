// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "files/Sha256.h"
#include "formats/BmpFormat.h"
#include "formats/PngFormat.h"
#include "messages/ToolError.h"
#include "profile/ProfileFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

constexpr const char* kProfile =
    "[A]\nPROCMODE=2\nOUTPUTRANGE=255\nFunctionCount=1\n00_Function_Number=11\n"
    "00_POST_LINEAR_MODE=2\n00_POST_LINEAR_BRIGHTOPT=5\n";

// A frame of the levels 0, 1, 2, 3, and a section with a linear curve.
class SweepCommandTest : public testing::Test {
protected:
    SweepCommandTest() {
        WriteBytes(folder_.Path() / "in_2x2.raw", "\0\0\1\0\2\0\3\0"s);
        WriteBytes(folder_.Path() / "p.ini", kProfile);
    }

    ToolRun Run(const std::vector<std::string>& more, const ExportCaller& callExport) const {
        std::vector<std::string> arguments{
            "sweep", folder_.Narrow("in_2x2.raw"), "--profile", folder_.Narrow("p.ini"), "--section", "A",
            "--out", folder_.Narrow("out")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunTool(arguments, callExport);
    }

    bool Exists(const std::string& leaf) const { return fs::exists(folder_.Path() / "out" / leaf); }
    bool HasOnlyItsOwnFiles() const { return std::distance(fs::directory_iterator(folder_.Path()), {}) == 2; }

    nlohmann::json Index() const {
        return nlohmann::json::parse(ReadBytes(folder_.Path() / "out" / "sweep.json"));
    }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
};

std::string ValueOf(const ExportRequest& request, const std::string& key) {
    const ProfileFile copy = ProfileFile::Read(request.profile);
    const ProfileEntry* const entry = copy.FindEntry(request.section, key);
    if (entry == nullptr) return {};
    const std::wstring value = copy.ValueOf(*entry).value_or(L"");
    return {value.begin(), value.end()};
}

// The library's part: as many levels more as the section says.
int32_t AddBrightness(ExportRequest& request) {
    const int more = std::stoi(ValueOf(request, "00_POST_LINEAR_BRIGHTOPT"));
    for (size_t i = 0; i < request.frame.pixels.size(); ++i)
        request.output[i] = static_cast<uint16_t>(request.frame.pixels[i] + more);
    return 0;
}

constexpr const char* kSet = "00_POST_LINEAR_BRIGHTOPT=4:6:1";

TEST_F(SweepCommandTest, LeavesAPictureForEachValueTableAndIndex) {
    const ToolRun run = Run({"--set", kSet}, AddBrightness);
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    for (const char* const leaf :
         {"00_POST_LINEAR_BRIGHTOPT=4.png", "00_POST_LINEAR_BRIGHTOPT=5.png",
          "00_POST_LINEAR_BRIGHTOPT=6.png", "unchanged.png", "contact.png", "sweep.json", "sweep.txt"})
        EXPECT_TRUE(Exists(leaf)) << leaf;
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Path() / "out"), {}), 7);
    const std::string png = ReadBytes(folder_.Path() / "out" / "00_POST_LINEAR_BRIGHTOPT=6.png");
    EXPECT_EQ(DecodePng({png.begin(), png.end()}).pixels, (std::vector<uint16_t>{6, 7, 8, 9}));
    EXPECT_THAT(run.report, HasSubstr("00_POST_LINEAR_BRIGHTOPT is 5 in the profile (line 7)"));
    EXPECT_THAT(run.report, HasSubstr("100.0 %  00_POST_LINEAR_BRIGHTOPT=4.png"));
    EXPECT_THAT(run.report, HasSubstr("\n*                         5 "));
    EXPECT_THAT(run.report, Not(HasSubstr("*                         6")));
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), kProfile);
}

TEST_F(SweepCommandTest, TellsProgramsEverything) {
    const ToolRun run = Run({"--set", kSet, "--json"}, AddBrightness);
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    const nlohmann::json json = Index();
    EXPECT_EQ(nlohmann::json::parse(run.report), json);
    EXPECT_EQ(json["command"], "sweep");
    EXPECT_EQ(json["profileSha256"], Sha256Of(std::string(kProfile)));
    EXPECT_EQ(json["keys"][0]["key"], "00_POST_LINEAR_BRIGHTOPT");
    EXPECT_EQ(json["keys"][0]["own"]["value"], 5);
    EXPECT_EQ(json["keys"][0]["values"], (std::vector<std::string>{"4", "5", "6"}));
    EXPECT_EQ(json["unchanged"]["picture"], "unchanged.png");
    ASSERT_EQ(json["pictures"].size(), 3U);
    const nlohmann::json& last = json["pictures"][2];
    EXPECT_EQ(last["values"], std::vector<std::string>{"6"});
    EXPECT_EQ(last["isOwn"], false);
    EXPECT_EQ(json["pictures"][1]["isOwn"], true);
    EXPECT_EQ(json["pictures"][1]["frame"]["changedShare"], 0.0);
    std::string changed = kProfile;
    changed.replace(changed.find("OPT=5"), 5, "OPT=6");
    EXPECT_EQ(last["profileSha256"], Sha256Of(changed));
    EXPECT_EQ(last["frame"]["least"], 6);
    EXPECT_EQ(last["frame"]["median"], 7);
    EXPECT_EQ(last["frame"]["greatest"], 9);
    EXPECT_EQ(last["frame"]["window"]["high"], 255);
    EXPECT_EQ(last["frame"]["changedShare"], 1.0);
    EXPECT_EQ(last["frame"]["sha256"], Sha256Of("\6\0\7\0\x08\0\x09\0"s));
}

TEST_F(SweepCommandTest, LeavesNoDumpsWhateverTheProfileSays) {
    const std::string profile = ReadBytes(folder_.Path() / "p.ini");
    WriteBytes(folder_.Path() / "p.ini", profile + "SAVE_IMAGE=1\nSAVE_BACKUP=1\n");
    std::mutex mutex;
    std::vector<std::string> switches;
    const ToolRun run = Run({"--set", kSet}, [&](ExportRequest& request) {
        const std::lock_guard lock(mutex);
        switches.push_back(ValueOf(request, "SAVE_IMAGE") + ValueOf(request, "SAVE_BACKUP"));
        return AddBrightness(request);
    });
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(switches, (std::vector<std::string>(4, "00")));
}

TEST_F(SweepCommandTest, TwoKeysMakeAGrid) {
    const ToolRun run =
        Run({"--set", "00_POST_LINEAR_BRIGHTOPT=4,5", "--set", "SATURATION_VALUE=255,128"}, AddBrightness);
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    const nlohmann::json json = Index();
    ASSERT_EQ(json["pictures"].size(), 4U);
    EXPECT_EQ(json["pictures"][1]["values"], (std::vector<std::string>{"5", "255"}));
    EXPECT_EQ(json["pictures"][2]["values"], (std::vector<std::string>{"4", "128"}));
    EXPECT_TRUE(Exists("00_POST_LINEAR_BRIGHTOPT=4,SATURATION_VALUE=128.png"));
}

TEST_F(SweepCommandTest, TellsOfAKeyThatIsNotRead) {
    const ToolRun run = Run({"--set", "00_POST_LINEAR_BRIGHT=1,2"}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("section 'A' reads no key '00_POST_LINEAR_BRIGHT'; did you mean "
                                      "'00_POST_LINEAR_BRIGHTOPT'?"));
    EXPECT_TRUE(HasOnlyItsOwnFiles());
    EXPECT_EQ(Run({"--set", "00_MAX_SLOPE=1,2"}, MustNotBeCalled).exitCode, 2) << "of another stage";
}

TEST_F(SweepCommandTest, RefusesWhatIsNoSweep) {
    EXPECT_THAT(Run({}, MustNotBeCalled).errors, HasSubstr("--set"));
    EXPECT_EQ(Run({"--set", "A=1", "--set", "B=1", "--set", "C=1"}, MustNotBeCalled).exitCode, 2);
    EXPECT_THAT(Run({"--set", "SATURATION_VALUE=1,2", "--set", "saturation_value=3"}, MustNotBeCalled).errors,
                HasSubstr("twice"));
    EXPECT_THAT(Run({"--set", "SATURATION_VALUE=0:100:1"}, MustNotBeCalled).errors, HasSubstr("--limit"));
    EXPECT_THAT(Run({"--set", "SATURATION_VALUE=0:9:1", "--set", "BITSTORED=1:11:1"}, MustNotBeCalled).errors,
                HasSubstr("the grid has 110 pictures"));
    EXPECT_EQ(Run({"--set", kSet, "--limit", "1001"}, MustNotBeCalled).exitCode, 2);
    EXPECT_EQ(Run({"--set", kSet, "--limit", "2"}, MustNotBeCalled).exitCode, 2);
    EXPECT_EQ(Run({"--set", kSet, "--jobs", "0"}, MustNotBeCalled).exitCode, 2);
    EXPECT_TRUE(HasOnlyItsOwnFiles());
}

TEST_F(SweepCommandTest, TellsOfAValueThatFailsAndKeepsTheOthers) {
    const ToolRun run = Run({"--set", kSet}, [](ExportRequest& request) {
        return ValueOf(request, "00_POST_LINEAR_BRIGHTOPT") == "6" ? 6 : AddBrightness(request);
    });
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_THAT(run.errors, HasSubstr("00_POST_LINEAR_BRIGHTOPT=6: ImageProcessing returned 6"));
    EXPECT_TRUE(Exists("00_POST_LINEAR_BRIGHTOPT=4.png"));
    EXPECT_FALSE(Exists("00_POST_LINEAR_BRIGHTOPT=6.png"));
    const nlohmann::json json = Index();
    EXPECT_EQ(json["exit"], 4);
    EXPECT_EQ(json["pictures"][2]["exit"], 4);
    EXPECT_TRUE(json["pictures"][2]["picture"].is_null());
    EXPECT_TRUE(json["pictures"][2]["frame"].is_null());
}

TEST_F(SweepCommandTest, TellsNoShareIfTheProfileAsItIsFails) {
    const ToolRun run = Run({"--set", "00_POST_LINEAR_BRIGHTOPT=4,6"}, [](ExportRequest& request) {
        return ValueOf(request, "00_POST_LINEAR_BRIGHTOPT") == "5" ? 6 : AddBrightness(request);
    });
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_THAT(run.errors, HasSubstr("the profile as it is: ImageProcessing returned 6"));
    EXPECT_TRUE(Index()["pictures"][0]["frame"]["changedShare"].is_null());
}

TEST_F(SweepCommandTest, LeavesNothingIfEveryValueFails) {
    EXPECT_EQ(Run({"--set", kSet}, [](ExportRequest&) { return 6; }).exitCode, 4);
    EXPECT_TRUE(HasOnlyItsOwnFiles());
}

TEST_F(SweepCommandTest, LeavesNothingIfItIsCancelled) {
    const ToolRun run = Run({"--set", kSet, "--jobs", "2"}, [](ExportRequest& request) -> int32_t {
        if (ValueOf(request, "00_POST_LINEAR_BRIGHTOPT") == "6") throw CancelledError();
        return AddBrightness(request);
    });
    EXPECT_EQ(run.exitCode, 130);
    EXPECT_TRUE(HasOnlyItsOwnFiles());
}

TEST_F(SweepCommandTest, ShowsTheLevelsOfABitmap) {
    const ToolRun run = Run({"--set", kSet, "--export", "N"}, [](ExportRequest& request) {
        const std::vector<uint8_t> bytes = EncodeBmp8({1, 2, 3, 4}, 2, 2);
        WriteBytes(request.bitmapPath, std::string(bytes.begin(), bytes.end()));
        return 0;
    });
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(Index()["pictures"][0]["frame"]["greatest"], 4);
    EXPECT_EQ(Index()["pictures"][0]["frame"]["window"]["high"], 255);
}

TEST_F(SweepCommandTest, MarksADefaultAsTheProfilesOwn) {
    const ToolRun run = Run({"--set", "SATURATION_VALUE=4095,100", "--json"}, AddBrightness);
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    const nlohmann::json json = Index();
    EXPECT_EQ(json["keys"][0]["own"]["mark"], "default");
    EXPECT_EQ(json["pictures"][0]["isOwn"], json["keys"][0]["own"]["value"] == 4095);
    EXPECT_EQ(json["pictures"][1]["isOwn"], false);
}

}  // namespace
}  // namespace vastrelline
