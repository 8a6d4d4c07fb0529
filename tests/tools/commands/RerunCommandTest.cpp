// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "formats/BmpFormat.h"
#include "formats/PngFormat.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

// A frame of the levels 0, 1, 2, 3 in one folder, its results in another one.
class RerunCommandTest : public testing::Test {
protected:
    RerunCommandTest() {
        fs::create_directory(folder_.Path() / "out");
        WriteBytes(folder_.Path() / "Doe_Jane_2x2.raw", "\0\0\1\0\2\0\3\0"s);
        WriteBytes(folder_.Path() / "p.ini", "[A]\nPROCMODE=2\nOUTPUTRANGE=255\nFunctionCount=0\n");
    }

    std::string Out(const std::string& leaf) const { return folder_.Narrow("out") + "/" + leaf; }

    ToolRun Make(const std::vector<std::string>& more, const ExportCaller& callExport) const {
        std::vector<std::string> words{"run",       folder_.Narrow("Doe_Jane_2x2.raw"),
                                       "--profile", folder_.Narrow("p.ini"),
                                       "--section", "A"};
        words.insert(words.end(), more.begin(), more.end());
        if (std::find(more.begin(), more.end(), "--record") == more.end())
            words.insert(words.end(), {"--record", Out("t.json")});
        return RunTool(words, callExport);
    }

    ToolRun Rerun(const std::string& leaf, const std::vector<std::string>& more,
                  const ExportCaller& callExport) const {
        std::vector<std::string> words{"rerun", Out(leaf)};
        words.insert(words.end(), more.begin(), more.end());
        return RunTool(words, callExport);
    }

    std::vector<std::string> NamedInputs() const {
        return {"--frame", folder_.Narrow("Doe_Jane_2x2.raw"), "--profile", folder_.Narrow("p.ini")};
    }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
};

int32_t TimesTen(ExportRequest& request) {
    for (size_t i = 0; i < request.frame.pixels.size(); ++i)
        request.output[i] = static_cast<uint16_t>(10 * request.frame.pixels[i]);
    return 0;
}

int32_t TimesTwenty(ExportRequest& request) {
    for (size_t i = 0; i < request.frame.pixels.size(); ++i)
        request.output[i] = static_cast<uint16_t>(20 * request.frame.pixels[i]);
    return 0;
}

TEST_F(RerunCommandTest, TellsTheSameFromDifferent) {
    ASSERT_EQ(Make({"--out", Out("t.tif")}, TimesTen).exitCode, 0);
    const ToolRun same = Rerun("t.json", {}, TimesTen);
    EXPECT_EQ(same.exitCode, 0) << same.errors;
    EXPECT_THAT(same.report, HasSubstr("t.json: the same\n"));
    const ToolRun other = Rerun("t.json", {"--json"}, TimesTwenty);
    EXPECT_EQ(other.exitCode, 1) << other.errors;
    const nlohmann::json json = nlohmann::json::parse(other.report);
    EXPECT_EQ(json["same"], false);
    EXPECT_EQ(json["sameLibrary"], true);
    EXPECT_NE(json["sha256"], json["record"]["result"]["sha256"]);
}

TEST_F(RerunCommandTest, RecordsNameFilesFromTheirFolder) {
    ASSERT_EQ(Make({"--out", Out("t.tif")}, TimesTen).exitCode, 0);
    const std::string record = ReadBytes(folder_.Path() / "out" / "t.json");
    EXPECT_THAT(record, Not(HasSubstr(folder_.Path().string())));
    const nlohmann::json json = nlohmann::json::parse(record);
    EXPECT_EQ(json["record"]["frame"]["file"], "../Doe_Jane_2x2.raw");
    EXPECT_EQ(json["record"]["profile"]["file"], "../p.ini");
}

TEST_F(RerunCommandTest, FindsFilesFromARecordInALinkedFolder) {
    fs::create_directories(folder_.Path() / "deep" / "er");
    fs::create_directory_symlink(folder_.Path() / "deep" / "er", folder_.Path() / "out" / "link");
    ASSERT_EQ(Make({"--out", Out("link/t.png"), "--record", Out("link/r.json")}, TimesTen).exitCode, 0);
    const ToolRun run = Rerun("link/r.json", {}, TimesTen);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
}

TEST_F(RerunCommandTest, SaysAtTheResultWhatItDoesNotKnow) {
    ASSERT_EQ(Make({"--out", Out("t.tif")}, TimesTen).exitCode, 0);
    nlohmann::json json = nlohmann::json::parse(ReadBytes(folder_.Path() / "out" / "t.json"));
    json["record"]["export"] = "ImageProcessing_X";
    WriteBytes(folder_.Path() / "out" / "x.json", json.dump());
    const ToolRun unknown = Rerun("x.json", {}, MustNotBeCalled);
    EXPECT_EQ(unknown.exitCode, 3);
    EXPECT_THAT(unknown.errors, HasSubstr("x.json: was made by the export 'ImageProcessing_X', which"));
    json["record"]["export"] = "ImageProcessing";
    json["record"]["frame"].erase("file");
    WriteBytes(folder_.Path() / "out" / "y.json", json.dump());
    const ToolRun nameless = Rerun("y.json", {}, MustNotBeCalled);
    EXPECT_EQ(nameless.exitCode, 2);
    EXPECT_THAT(nameless.errors,
                HasSubstr("y.json: the record does not name all files; give the frame by --frame\n"));
}

TEST_F(RerunCommandTest, APngHasItsRecordInside) {
    ASSERT_EQ(Make({"--out", Out("t.png")}, TimesTen).exitCode, 0);
    const std::string png = ReadBytes(folder_.Path() / "out" / "t.png");
    EXPECT_THAT(png, Not(HasSubstr("Doe")));
    const ToolRun unnamed = Rerun("t.png", {}, MustNotBeCalled);
    EXPECT_EQ(unnamed.exitCode, 2);
    EXPECT_THAT(unnamed.errors,
                HasSubstr("t.png: a PNG names no files, so that it may be passed on; give the "
                          "frame by --frame and the profile by --profile\n"));
    const ToolRun half = Rerun("t.png", {"--frame", folder_.Narrow("Doe_Jane_2x2.raw")}, MustNotBeCalled);
    EXPECT_EQ(half.exitCode, 2);
    EXPECT_THAT(half.errors, HasSubstr("passed on; give the profile by --profile\n"));
    const ToolRun same = Rerun("t.png", NamedInputs(), TimesTen);
    EXPECT_EQ(same.exitCode, 0) << same.errors;
    EXPECT_THAT(same.report, HasSubstr("shows this result"));
    EXPECT_EQ(Rerun("t.png", NamedInputs(), TimesTwenty).exitCode, 1);
}

TEST_F(RerunCommandTest, APngThatSomebodyPaintedOnIsDifferent) {
    ASSERT_EQ(Make({"--out", Out("t.png")}, TimesTen).exitCode, 0);
    const std::string png = ReadBytes(folder_.Path() / "out" / "t.png");
    const std::string text = FindPngText({png.begin(), png.end()}, "vastrelline").value_or("");
    const std::vector<uint8_t> painted = EncodePng8({0, 10, 20, 31}, 2, 2, {{"vastrelline", text}});
    WriteBytes(folder_.Path() / "out" / "t.png", std::string(painted.begin(), painted.end()));
    const ToolRun run = Rerun("t.png", NamedInputs(), TimesTen);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.report, HasSubstr("1 pixels are not those of the run"));
}

TEST_F(RerunCommandTest, InputsThatAreGoneOrChangedAreNoDifference) {
    ASSERT_EQ(Make({"--out", Out("t.tif")}, TimesTen).exitCode, 0);
    WriteBytes(folder_.Path() / "p.ini", "[A]\nPROCMODE=2\nOUTPUTRANGE=255\nFunctionCount=0 \n");
    const ToolRun profile = Rerun("t.json", {}, MustNotBeCalled);
    EXPECT_EQ(profile.exitCode, 3);
    EXPECT_THAT(profile.errors, HasSubstr("is not the profile that the result was made of"));
    WriteBytes(folder_.Path() / "Doe_Jane_2x2.raw", "\0\0\1\0\2\0\4\0"s);
    const ToolRun changed = Rerun("t.json", {}, MustNotBeCalled);
    EXPECT_EQ(changed.exitCode, 3);
    EXPECT_THAT(changed.errors, HasSubstr("is not the frame that the result was made of"));
    WriteBytes(folder_.Path() / "Doe_Jane_2x2.raw", "\0\0\1\0"s);
    EXPECT_EQ(Rerun("t.json", {}, MustNotBeCalled).exitCode, 3) << "of another size";
    fs::remove(folder_.Path() / "Doe_Jane_2x2.raw");
    EXPECT_EQ(Rerun("t.json", {}, MustNotBeCalled).exitCode, 3);
}

TEST_F(RerunCommandTest, TakesRecordsOnly) {
    EXPECT_EQ(Rerun("none.json", {}, MustNotBeCalled).exitCode, 3);
    WriteBytes(folder_.Path() / "out" / "t.json", "{\"tool\": \"vastrelline\"}");
    EXPECT_THAT(Rerun("t.json", {}, MustNotBeCalled).errors,
                HasSubstr("holds no record of a run; name what"));
    const std::vector<uint8_t> png = EncodePng8({1}, 1, 1);
    WriteBytes(folder_.Path() / "out" / "t.png", std::string(png.begin(), png.end()));
    EXPECT_EQ(Rerun("t.png", {}, MustNotBeCalled).exitCode, 3);
}

TEST_F(RerunCommandTest, MakesBitmapsAgain) {
    const auto writeBitmap = [](uint8_t level) {
        return [level](ExportRequest& request) {
            const std::vector<uint8_t> bytes = EncodeBmp8({level, 2, 3, 4}, 2, 2);
            WriteBytes(request.bitmapPath, std::string(bytes.begin(), bytes.end()));
            return 0;
        };
    };
    ASSERT_EQ(Make({"--out", Out("t.bmp"), "--export", "N"}, writeBitmap(1)).exitCode, 0);
    EXPECT_EQ(Rerun("t.json", {}, writeBitmap(1)).exitCode, 0);
    EXPECT_EQ(Rerun("t.json", {}, writeBitmap(2)).exitCode, 1);
}

TEST_F(RerunCommandTest, GivesTheCallWhatItHadThen) {
    ASSERT_EQ(Make({"--out", Out("t.tif"), "--export", "S", "--mapping", "--geometry", "1", "2", "3", "4",
                    "5", "6", "7", "8", "9", "10"},
                   TimesTen)
                  .exitCode,
              0);
    const ToolRun again = Rerun("t.json", {}, [](ExportRequest& request) {
        EXPECT_EQ(request.kind, ExportKind::S);
        EXPECT_TRUE(request.applyMapping);
        EXPECT_FALSE(request.applySpotCorrection);
        EXPECT_EQ(request.geometry, (std::array<int32_t, kGeometryValues>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
        EXPECT_EQ(request.section, "A");
        return TimesTen(request);
    });
    EXPECT_EQ(again.exitCode, 0) << again.errors;
}

TEST_F(RerunCommandTest, ARecordNeedsAProfileThatStays) {
    const ToolRun run = Make({"--out", Out("t.tif"), "--in-place"}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("--record does not go with --in-place"));
}

}  // namespace
}  // namespace vastrelline
