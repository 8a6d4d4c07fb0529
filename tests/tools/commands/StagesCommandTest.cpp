// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "files/Sha256.h"
#include "formats/BmpFormat.h"
#include "formats/PngFormat.h"
#include "profile/ProfileFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

namespace fs = std::filesystem;

// A frame of the levels 0, 1, 2, 3, and a section with a gamma curve.
class StagesCommandTest : public testing::Test {
protected:
    StagesCommandTest() {
        WriteBytes(folder_.Path() / "in_2x2.raw", "\0\0\1\0\2\0\3\0"s);
        WriteBytes(folder_.Path() / "p.ini",
                   "[A]\nPROCMODE=2\nOUTPUTRANGE=255\nFunctionCount=1\n00_Function_Number=10\n"
                   "00_POST_GAMMA_RATIO=2\n");
    }

    ToolRun Run(const std::vector<std::string>& more, const ExportCaller& callExport) const {
        std::vector<std::string> arguments{
            "stages", folder_.Narrow("in_2x2.raw"), "--profile", folder_.Narrow("p.ini"), "--section", "A",
            "--out",  folder_.Narrow("out")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunTool(arguments, callExport);
    }

    bool HasOnlyItsOwnFiles() const { return std::distance(fs::directory_iterator(folder_.Path()), {}) == 2; }

    nlohmann::json Index() const {
        return nlohmann::json::parse(ReadBytes(folder_.Path() / "out" / "stages.json"));
    }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
};

std::string DumpFolder(const ExportRequest& request) {
    const ProfileFile copy = ProfileFile::Read(request.profile);
    const ProfileEntry* const entry = copy.FindEntry(request.section, "WRITE_PATH");
    if (entry == nullptr) return {};
    const std::wstring path = copy.ValueOf(*entry).value_or(L"");
    return {path.begin(), path.end()};
}

// The library's part: levels times ten, with dumps where they are asked for.
int32_t TimesTen(ExportRequest& request) {
    request.output = {0, 10, 20, 30};
    const std::string dumps = DumpFolder(request);
    if (dumps.empty()) return 0;
    WriteBytes(dumps + "00_originalimage.raw", "\0\0\1\0\2\0\3\0"s);
    WriteBytes(dumps + "01_GammaCurve.txt", "0\t0\r\n3\t30\r\n");
    WriteBytes(dumps + "01_result_gamma.raw", "\0\0\x0A\0\x14\0\x1E\0"s);
    WriteBytes(dumps + "02_result.raw", "\0\0\x0A\0\x14\0\x1E\0"s);
    return 0;
}

TEST_F(StagesCommandTest, LeavesPicturesTableAndIndex) {
    const ToolRun run = Run({}, TimesTen);
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    for (const char* const leaf : {"00_input.png", "01_gamma_curve.png", "01_gamma_curve.svg",
                                   "02_result.png", "contact.png", "stages.json", "stages.txt"})
        EXPECT_TRUE(fs::exists(folder_.Path() / "out" / leaf)) << leaf;
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Path() / "out"), {}), 7);
    const std::string png = ReadBytes(folder_.Path() / "out" / "01_gamma_curve.png");
    EXPECT_EQ(DecodePng({png.begin(), png.end()}).pixels, (std::vector<uint16_t>{0, 10, 20, 30}));
    EXPECT_THAT(run.report, HasSubstr("00_POST_GAMMA_RATIO=2 (line 6)"));
    EXPECT_THAT(run.report, HasSubstr("75.0 %"));
    EXPECT_THAT(ReadBytes(folder_.Path() / "out" / "stages.txt"),
                HasSubstr("00_POST_GAMMA_RATIO=2 (line 6)"));
}

TEST_F(StagesCommandTest, TellsProgramsEverything) {
    const ToolRun run = Run({"--json"}, TimesTen);
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    const nlohmann::json json = Index();
    EXPECT_EQ(nlohmann::json::parse(run.report), json);
    EXPECT_EQ(json["command"], "stages");
    EXPECT_EQ(json["frame"]["sha256"], Sha256Of("\0\0\1\0\2\0\3\0"s));
    EXPECT_EQ(json["profileSha256"], Sha256Of(ReadBytes(folder_.Path() / "p.ini")));
    EXPECT_EQ(json["record"]["frame"]["file"], "../in_2x2.raw");
    EXPECT_EQ(json["record"]["result"]["sha256"], Sha256Of("\0\0\x0A\0\x14\0\x1E\0"s));
    ASSERT_EQ(json["points"].size(), 3U);
    const nlohmann::json& gamma = json["points"][1];
    EXPECT_EQ(gamma["point"], "stage");
    EXPECT_EQ(gamma["title"], "Gamma curve");
    EXPECT_EQ(gamma["position"], 0);
    EXPECT_EQ(gamma["number"], 10);
    EXPECT_EQ(gamma["curve"], "01_gamma_curve.svg");
    EXPECT_EQ(gamma["keys"][1]["key"], "00_POST_GAMMA_RATIO");
    EXPECT_EQ(gamma["keys"][1]["line"], 6);
    const nlohmann::json& frame = gamma["frame"];
    EXPECT_EQ(frame["picture"], "01_gamma_curve.png");
    EXPECT_EQ(frame["window"]["high"], 255);
    EXPECT_EQ(frame["greatest"], 30);
    EXPECT_EQ(frame["median"], 10);
    EXPECT_EQ(frame["changedShare"], 0.75);
    EXPECT_EQ(frame["sha256"], Sha256Of("\0\0\x0A\0\x14\0\x1E\0"s));
}

TEST_F(StagesCommandTest, TimesARunWithoutDumps) {
    std::vector<bool> dumped;
    ASSERT_EQ(Run({},
                  [&](ExportRequest& request) {
                      dumped.push_back(!DumpFolder(request).empty());
                      return TimesTen(request);
                  })
                  .exitCode,
              0);
    EXPECT_EQ(dumped, (std::vector<bool>{false, true}));
}

// A profile that asks for dumps would have them in the run that is timed, and in its user's folder.
TEST_F(StagesCommandTest, LeavesNoDumpsWhereTheProfileWantsThem) {
    WriteBytes(folder_.Path() / "p.ini",
               "[A]\nPROCMODE=2\nSAVE_IMAGE=1\nWRITE_PATH=" + folder_.Narrow("") + "/\nSAVE_BACKUP=1\n");
    std::vector<std::wstring> switches;
    const ToolRun run = Run({}, [&](ExportRequest& request) {
        const ProfileFile copy = ProfileFile::Read(request.profile);
        for (const char* const key : {"SAVE_IMAGE", "SAVE_BACKUP"})
            switches.push_back(copy.ValueOf(*copy.FindEntry("A", key)).value_or(L""));
        if (switches.size() > 2) return TimesTen(request);
        request.output = {0, 10, 20, 30};
        return 0;
    });
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(switches, (std::vector<std::wstring>{L"0", L"0", L"1", L"0"}));
    EXPECT_FALSE(fs::exists(folder_.Path() / "00_originalimage.raw"));
}

TEST_F(StagesCommandTest, AnExportThatGivesABitmapShowsItsLastDump) {
    const ToolRun run = Run({"--export", "N", "--json"}, [](ExportRequest& request) {
        EXPECT_FALSE(request.bitmapPath.empty());
        const int32_t code = TimesTen(request);
        request.output = {0, 0, 0, 0};
        const std::vector<uint8_t> bitmap = EncodeBmp8({0, 1, 2, 3}, 2, 2);
        WriteBytes(request.bitmapPath, std::string(bitmap.begin(), bitmap.end()));
        return code;
    });
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(Index()["points"][2]["frame"]["greatest"], 30);
}

TEST_F(StagesCommandTest, ReplacesItsOwnFolderOnlyWithForce) {
    ASSERT_EQ(Run({}, TimesTen).exitCode, 0);
    const ToolRun again = Run({}, MustNotBeCalled);
    EXPECT_EQ(again.exitCode, 5);
    EXPECT_THAT(again.errors, HasSubstr("exists already; --force"));
    EXPECT_EQ(Run({"--force"}, TimesTen).exitCode, 0);
    WriteBytes(folder_.Path() / "out" / "mine.txt", "x");
    EXPECT_EQ(Run({"--force"}, MustNotBeCalled).exitCode, 5);
    EXPECT_TRUE(fs::exists(folder_.Path() / "out" / "mine.txt"));
}

TEST_F(StagesCommandTest, LeavesNothingWhereTheRunFails) {
    EXPECT_EQ(Run({}, [](ExportRequest&) { return 6; }).exitCode, 4);
    EXPECT_TRUE(HasOnlyItsOwnFiles());
    // Without dumps there is nothing to show.
    EXPECT_EQ(Run({}, [](ExportRequest&) { return 0; }).exitCode, 5);
    EXPECT_TRUE(HasOnlyItsOwnFiles());
}

TEST_F(StagesCommandTest, RefusesTwoRunsThatDiffer) {
    int calls = 0;
    const ToolRun run = Run({}, [&](ExportRequest& request) {
        const int32_t code = TimesTen(request);
        request.output[0] = static_cast<uint16_t>(++calls);
        return code;
    });
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_THAT(run.errors, HasSubstr("different results"));
    EXPECT_TRUE(HasOnlyItsOwnFiles());
}

TEST_F(StagesCommandTest, RefusesWrongOptions) {
    EXPECT_EQ(Run({"--window", "wide"}, MustNotBeCalled).exitCode, 2);
    EXPECT_EQ(Run({"--export", "Nonsense"}, MustNotBeCalled).exitCode, 2);
    EXPECT_EQ(Run({"--timeout", "0"}, MustNotBeCalled).exitCode, 2);
    EXPECT_EQ(Run({"--mapping", "--export", "CR"}, MustNotBeCalled).exitCode, 2);
    EXPECT_TRUE(HasOnlyItsOwnFiles());
}

}  // namespace
}  // namespace vastrelline
