// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "files/Sha256.h"
#include "messages/ToolError.h"
#include "profile/ProfileFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

const std::string kFrame = "\0\0\1\0\2\0\3\0"s;

std::string DumpFolder(const ExportRequest& request) {
    const ProfileFile copy = ProfileFile::Read(request.profile);
    const ProfileEntry* const entry = copy.FindEntry(request.section, "WRITE_PATH");
    const std::wstring path = copy.ValueOf(*entry).value_or(L"");
    return {path.begin(), path.end()};
}

// The library's part: a gamma curve that gives `levels`, then the result.
ExportCaller Giving(const std::string& levels, const std::string& result) {
    return [=](ExportRequest& request) {
        const std::string dumps = DumpFolder(request);
        WriteBytes(dumps + "00_originalimage.raw", kFrame);
        WriteBytes(dumps + "01_result_gamma.raw", levels);
        WriteBytes(dumps + "02_result.raw", result);
        for (size_t i = 0; i < request.output.size(); ++i)
            request.output[i] = static_cast<uint16_t>(static_cast<uint8_t>(result[2 * i]));
        return 0;
    };
}

const std::string kLevels = "\0\0\x0A\0\x14\0\x1E\0"s;
const std::string kOtherLevels = "\0\0\x0A\0\x15\0\x1E\0"s;

// A manifest of one entry: a frame of the levels 0, 1, 2, 3 through a gamma curve.
class VerifyCommandTest : public testing::Test {
protected:
    VerifyCommandTest() {
        WriteBytes(folder_.Path() / "in_2x2.raw", kFrame);
        WriteBytes(folder_.Path() / "p.ini",
                   "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=10\n00_POST_GAMMA_RATIO=2\n");
        const ToolRun run =
            Verify({"--add", "--frame", folder_.Narrow("in_2x2.raw"), "--profile", folder_.Narrow("p.ini")},
                   Giving(kLevels, kLevels));
        if (run.exitCode != 0) throw std::runtime_error(run.errors);
    }

    ToolRun Verify(const std::vector<std::string>& more, const ExportCaller& callExport) const {
        std::vector<std::string> arguments{"verify", folder_.Narrow("m.json")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunTool(arguments, callExport);
    }

    nlohmann::json Manifest() const { return nlohmann::json::parse(ReadBytes(folder_.Path() / "m.json")); }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
};

TEST_F(VerifyCommandTest, AddsEntriesWithTheHashesOfEveryStage) {
    const nlohmann::json entry = Manifest()["entries"][0];
    EXPECT_EQ(entry["frame"]["file"], "in_2x2.raw");
    EXPECT_EQ(entry["profile"], "p.ini");
    EXPECT_EQ(entry["frameSha256"], Sha256Of(kFrame));
    EXPECT_EQ(entry["profileSha256"], Sha256Of(ReadBytes(folder_.Path() / "p.ini")));
    ASSERT_EQ(entry["points"].size(), 3U);
    EXPECT_EQ(entry["points"][0]["sha256"], Sha256Of(kFrame));
    EXPECT_EQ(entry["points"][1]["title"], "Gamma curve");
    EXPECT_EQ(entry["points"][1]["position"], 0);
    EXPECT_EQ(entry["points"][1]["sha256"], Sha256Of(kLevels));
    EXPECT_EQ(entry["points"][2]["point"], "result");
    EXPECT_EQ(entry["points"][2]["sha256"], Sha256Of(kLevels));
    EXPECT_FALSE(Manifest()["madeWith"]["version"].get<std::string>().empty());
}

TEST_F(VerifyCommandTest, FindsTheSameEqual) {
    const std::string before = ReadBytes(folder_.Path() / "m.json");
    const ToolRun run = Verify({}, Giving(kLevels, kLevels));
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_THAT(run.report, HasSubstr("result   1 entry, equal\n"));
    EXPECT_EQ(ReadBytes(folder_.Path() / "m.json"), before);
    EXPECT_EQ(Verify({"--update", "--reason", "none"}, Giving(kLevels, kLevels)).exitCode, 0);
    EXPECT_EQ(ReadBytes(folder_.Path() / "m.json"), before);
}

TEST_F(VerifyCommandTest, NamesTheFirstStageThatDiffers) {
    const ToolRun stage = Verify({}, Giving(kOtherLevels, kOtherLevels));
    EXPECT_EQ(stage.exitCode, 1);
    EXPECT_THAT(stage.report, HasSubstr("in_2x2.raw, p.ini, A, ImageProcessing\n    differs first at stage 1 "
                                        "(Gamma curve, position 00); 2 of 3 points differ\n"));
    const ToolRun result = Verify({"--json"}, Giving(kLevels, kOtherLevels));
    EXPECT_EQ(result.exitCode, 1);
    const nlohmann::json json = nlohmann::json::parse(result.report);
    EXPECT_EQ(json["exit"], 1);
    EXPECT_EQ(json["different"], 1);
    const nlohmann::json& first = json["entries"][0]["firstDifference"];
    EXPECT_EQ(first["point"], "result");
    EXPECT_EQ(first["expectedSha256"], Sha256Of(kLevels));
    EXPECT_EQ(first["actualSha256"], Sha256Of(kOtherLevels));
}

TEST_F(VerifyCommandTest, TellsAChangedFrameOrProfileFromAChangedResultAndRunsNothing) {
    WriteBytes(folder_.Path() / "p.ini", "[A]\nPROCMODE=2\n");
    const ToolRun profile = Verify({}, MustNotBeCalled);
    EXPECT_EQ(profile.exitCode, 1);
    EXPECT_THAT(profile.report, HasSubstr("the profile is not the one of the manifest"));
    EXPECT_THAT(profile.report, HasSubstr("1 entry: 1 has another profile\n"));
    WriteBytes(folder_.Path() / "in_2x2.raw", kLevels);
    const ToolRun frame = Verify({}, MustNotBeCalled);
    EXPECT_EQ(frame.exitCode, 1);
    EXPECT_THAT(frame.report, HasSubstr("the frame is not the one of the manifest"));
}

TEST_F(VerifyCommandTest, UpdatesForAReasonAndKeepsTheOldHashes) {
    EXPECT_EQ(Verify({"--update"}, MustNotBeCalled).exitCode, 2);
    EXPECT_EQ(Verify({"--update", "--reason", " "}, MustNotBeCalled).exitCode, 2);
    const ToolRun run =
        Verify({"--update", "--reason", "the curve was wrong"}, Giving(kOtherLevels, kOtherLevels));
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_THAT(run.report, HasSubstr("differs first at stage 1"));
    EXPECT_THAT(run.report, HasSubstr("update   written"));
    const nlohmann::json entry = Manifest()["entries"][0];
    EXPECT_EQ(entry["points"][2]["sha256"], Sha256Of(kOtherLevels));
    ASSERT_EQ(entry["history"].size(), 1U);
    EXPECT_EQ(entry["history"][0]["reason"], "the curve was wrong");
    EXPECT_EQ(entry["history"][0]["date"].get<std::string>().size(), 10U);
    EXPECT_EQ(entry["history"][0]["before"]["points"][2]["sha256"], Sha256Of(kLevels));
    EXPECT_EQ(Verify({}, Giving(kOtherLevels, kOtherLevels)).exitCode, 0);
}

TEST_F(VerifyCommandTest, CallsAFailureAFailure) {
    const std::string before = ReadBytes(folder_.Path() / "m.json");
    const ExportCaller fails = [](ExportRequest&) { return 6; };
    const ToolRun run = Verify({}, fails);
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_THAT(run.report, HasSubstr("ImageProcessing returned 6"));
    EXPECT_EQ(Verify({"--update", "--reason", "x"}, fails).exitCode, 4);
    EXPECT_EQ(ReadBytes(folder_.Path() / "m.json"), before);
    fs::remove(folder_.Path() / "in_2x2.raw");
    const ToolRun missing = Verify({"--json"}, MustNotBeCalled);
    EXPECT_EQ(missing.exitCode, 3);
    EXPECT_EQ(nlohmann::json::parse(missing.report)["entries"][0]["error"]["what"], "does not exist");
    EXPECT_EQ(RunTool({"verify", folder_.Narrow("none.json")}, MustNotBeCalled).exitCode, 3);
    WriteBytes(folder_.Path() / "m.json", R"({"format":"vastrelline-proof","formatVersion":1,"entries":[]})");
    EXPECT_EQ(Verify({}, MustNotBeCalled).exitCode, 3);
}

TEST_F(VerifyCommandTest, GivesTheOtherLibraryToTheCall) {
    std::string library;
    const ExportCaller caller = [&](ExportRequest& request) {
        library = request.library;
        return Giving(kLevels, kLevels)(request);
    };
    EXPECT_EQ(Verify({"--library", folder_.Narrow("p.ini")}, caller).exitCode, 0);
    EXPECT_EQ(library, folder_.Narrow("p.ini"));
    EXPECT_EQ(Verify({"--library", folder_.Narrow("none.so")}, MustNotBeCalled).exitCode, 3);
    // What cannot be loaded is said once, not of every entry.
    const ToolRun broken = Verify(
        {"--library", folder_.Narrow("p.ini")},
        [](ExportRequest& request) -> int32_t { throw InputError(request.library, "cannot be loaded"); });
    EXPECT_EQ(broken.exitCode, 3);
    EXPECT_EQ(broken.report, "");
    EXPECT_THAT(broken.errors, HasSubstr("p.ini: cannot be loaded"));
}

TEST_F(VerifyCommandTest, TellsBuildServers) {
    const std::string junit = folder_.Narrow("r.xml");
    EXPECT_EQ(Verify({"--junit", junit}, Giving(kOtherLevels, kLevels)).exitCode, 1);
    const std::string xml = ReadBytes(folder_.Path() / "r.xml");
    EXPECT_THAT(xml, HasSubstr(R"(tests="1" failures="1" errors="0")"));
    EXPECT_THAT(xml, HasSubstr(R"(<failure message="differs first at stage 1 (Gamma curve, position 00))"));
    EXPECT_EQ(Verify({"--junit", junit}, MustNotBeCalled).exitCode, 5);
    EXPECT_EQ(Verify({"--junit", junit, "--force"}, Giving(kLevels, kLevels)).exitCode, 0);
    EXPECT_THAT(ReadBytes(folder_.Path() / "r.xml"), Not(HasSubstr("failure message")));
}

// Two additions at once: the later one must not undo the other.
TEST_F(VerifyCommandTest, WritesNoManifestThatHasChangedMeanwhile) {
    const std::string other = ReadBytes(folder_.Path() / "m.json") + "\n";
    const ExportCaller give = Giving(kOtherLevels, kLevels);
    const ToolRun run = Verify({"--update", "--reason", "x"}, [&](ExportRequest& request) {
        WriteBytes(folder_.Path() / "m.json", other);
        return give(request);
    });
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_THAT(run.errors, HasSubstr("m.json: has changed meanwhile"));
    EXPECT_EQ(ReadBytes(folder_.Path() / "m.json"), other);
}

TEST_F(VerifyCommandTest, RefusesAPhantomThatNoManifestMayName) {
    const ToolRun run = Verify(
        {"--add", "--frame", "phantom:20000x20000", "--profile", folder_.Narrow("p.ini")}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("'phantom:20000x20000' is no phantom"));
}

TEST_F(VerifyCommandTest, TellsWhereANameIsTooLong) {
    const std::string name(5000, 'm');
    const ToolRun run = RunTool({"verify", name, "--add", "--frame", folder_.Narrow("in_2x2.raw"),
                                 "--profile", folder_.Narrow("p.ini")},
                                MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.errors, testing::StartsWith(name + ": cannot be read: "));
}

TEST_F(VerifyCommandTest, RefusesOptionsThatDoNotGoTogether) {
    for (const std::vector<std::string>& options : {std::vector<std::string>{"--add"},
                                                    {"--add", "--frame", "a"},
                                                    {"--frame", "a"},
                                                    {"--reason", "x"},
                                                    {"--add", "--update", "--reason", "x"},
                                                    {"--jobs", "0"},
                                                    {"--timeout", "0"},
                                                    {"--junit", "p.ini", "--force"},
                                                    {"--library", ""},
                                                    {"--section", "A"}})
        EXPECT_EQ(Verify(options, MustNotBeCalled).exitCode, 2) << options.front();
}

}  // namespace
}  // namespace vastrelline
