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
#include "messages/ToolError.h"
#include "profile/ProfileFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

// A frame of the levels 0, 1, 2, 3, a section with a gamma curve, and the file of another build.
class AgainstRunTest : public testing::Test {
protected:
    AgainstRunTest() {
        WriteBytes(folder_.Path() / "in_2x2.raw", "\0\0\1\0\2\0\3\0"s);
        WriteBytes(folder_.Path() / "p.ini",
                   "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=10\n00_POST_GAMMA_RATIO=2\n");
        WriteBytes(folder_.Path() / "old.so", "an older build");
    }

    ToolRun Run(const std::vector<std::string>& more, const ExportCaller& callExport) const {
        std::vector<std::string> words{
            "run",       folder_.Narrow("in_2x2.raw"), "--profile", folder_.Narrow("p.ini"), "--section", "A",
            "--against", folder_.Narrow("old.so")};
        words.insert(words.end(), more.begin(), more.end());
        return RunTool(words, callExport);
    }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
};

std::string DumpFolder(const ExportRequest& request) {
    const ProfileFile copy = ProfileFile::Read(request.profile);
    const std::wstring path = copy.ValueOf(*copy.FindEntry(request.section, "WRITE_PATH")).value_or(L"");
    return {path.begin(), path.end()};
}

// A build whose gamma curve gives this level for a 3.
int32_t RunWithGamma(ExportRequest& request, uint8_t level) {
    request.output = {0, 10, 20, level};
    const std::string last = "\0\0\x0A\0\x14\0"s + std::string(1, static_cast<char>(level)) + "\0"s;
    const std::string dumps = DumpFolder(request);
    WriteBytes(dumps + "00_originalimage.raw", "\0\0\1\0\2\0\3\0"s);
    WriteBytes(dumps + "01_result_gamma.raw", last);
    WriteBytes(dumps + "02_result.raw", last);
    return 0;
}

TEST_F(AgainstRunTest, NamesTheFirstStageThatDiffers) {
    const ExportCaller builds = [](ExportRequest& request) {
        return RunWithGamma(request, request.library.empty() ? 30 : 32);
    };
    const ToolRun run = Run({}, builds);
    EXPECT_EQ(run.exitCode, 1) << run.errors;
    EXPECT_THAT(run.report, HasSubstr("different from '00 Gamma curve' on: 1 pixel, by up to 2 levels\n"));
    const nlohmann::json json = nlohmann::json::parse(Run({"--json"}, builds).report);
    EXPECT_EQ(json["exit"], 1);
    EXPECT_EQ(json["same"], false);
    EXPECT_EQ(json["firstDifference"]["title"], "Gamma curve");
    EXPECT_EQ(json["firstDifference"]["position"], 0);
    EXPECT_EQ(json["firstDifference"]["differing"], 1);
    EXPECT_EQ(json["firstDifference"]["largest"], 2);
    EXPECT_EQ(json["points"][0]["differing"], 0);
    EXPECT_EQ(json["against"]["sha256"], Sha256Of("an older build"s));
}

// Two builds whose dumps went nowhere are not the same at every stage: nobody has looked.
TEST_F(AgainstRunTest, RunsWithoutDumpsCompareNothing) {
    const ToolRun run = Run({}, [](ExportRequest& request) {
        request.output = {0, 10, 20, 30};
        return 0;
    });
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_EQ(run.report, "");
    EXPECT_THAT(run.errors, HasSubstr("has no dumps of the run"));
}

TEST_F(AgainstRunTest, CallsBothBuildsAndLeavesNothing) {
    std::vector<std::string> libraries;
    const ToolRun run = Run({}, [&](ExportRequest& request) {
        libraries.push_back(request.library);
        return RunWithGamma(request, 30);
    });
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_THAT(run.report, HasSubstr("\nthe same pixels everywhere\n"));
    EXPECT_THAT(libraries, testing::UnorderedElementsAre("", folder_.Narrow("old.so")));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 3);
}

TEST_F(AgainstRunTest, DifferentCodesAreADifference) {
    const ToolRun run = Run(
        {}, [](ExportRequest& request) { return request.library.empty() ? RunWithGamma(request, 30) : 6; });
    EXPECT_EQ(run.exitCode, 1) << run.errors;
    EXPECT_THAT(run.report, HasSubstr("different codes: 0, and 6 of the other build"));
    EXPECT_EQ(Run({}, [](ExportRequest&) { return 6; }).exitCode, 4) << "the same failure compares nothing";
}

TEST_F(AgainstRunTest, ComparesBitmaps) {
    const ToolRun run = Run({"--export", "N"}, [](ExportRequest& request) {
        const auto level = static_cast<uint8_t>(request.library.empty() ? 4 : 9);
        const std::vector<uint8_t> bytes = EncodeBmp8({1, 2, 3, level}, 2, 2);
        WriteBytes(request.bitmapPath, std::string(bytes.begin(), bytes.end()));
        return RunWithGamma(request, 30);
    });
    EXPECT_EQ(run.exitCode, 1) << run.errors;
    EXPECT_THAT(run.report, HasSubstr("different from 'bitmap' on: 1 pixel, by up to 5 levels"));
}

TEST_F(AgainstRunTest, TellsWhatGoesWrongAtTheOtherBuild) {
    const ToolRun crash = Run({}, [](ExportRequest& request) -> int32_t {
        if (request.library.empty()) return RunWithGamma(request, 30);
        throw ProcessingError({}, "the run was ended by signal 11");
    });
    EXPECT_EQ(crash.exitCode, 4);
    EXPECT_THAT(crash.errors, HasSubstr("old.so: the run was ended by signal 11"));
    std::filesystem::remove(folder_.Path() / "old.so");
    const ToolRun missing = Run({}, MustNotBeCalled);
    EXPECT_EQ(missing.exitCode, 3);
    EXPECT_THAT(missing.errors, HasSubstr("old.so: does not exist"));
}

TEST_F(AgainstRunTest, MakesNoFile) {
    for (const std::vector<std::string>& more :
         {std::vector<std::string>{"--out", "x.png"}, {"--record", "x.json"}, {"--in-place"}}) {
        const ToolRun run = Run(more, MustNotBeCalled);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_THAT(run.errors, HasSubstr(more[0] + " does not go with --against"));
    }
}

}  // namespace
}  // namespace vastrelline
