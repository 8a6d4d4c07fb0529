// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "commands/SelftestReport.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

SelftestReport MakeReport(CheckState files, CheckState pixels) {
    return {"2026-03-01 10:00 UTC",
            "box <1>",
            "/bin/vastrelline",
            "/lib/x.so",
            "abc",
            {{"Files", files, "3 files", {}}, {"Pixels", pixels, "2 entries", {"a.raw differs"}}}};
}

TEST(SelftestReport, SaysWhatItIsAboutFirst) {
    const SelftestReport well = MakeReport(CheckState::Passed, CheckState::Passed);
    EXPECT_EQ(CodeOfSelftest(well), ExitCode::Well);
    EXPECT_EQ(DescribeSelftest(well), "This installation is whole.");
    const SelftestReport left = MakeReport(CheckState::Left, CheckState::Passed);
    EXPECT_EQ(CodeOfSelftest(left), ExitCode::Well);
    EXPECT_EQ(DescribeSelftest(left), "All that was looked at is as it should be; left out: Files.");
    const SelftestReport failed = MakeReport(CheckState::Left, CheckState::Failed);
    EXPECT_EQ(CodeOfSelftest(failed), ExitCode::Findings);
    EXPECT_EQ(DescribeSelftest(failed), "Something is not as it should be: Pixels.");
}

TEST(SelftestReport, TellsPeopleAndPrograms) {
    const SelftestReport report = MakeReport(CheckState::Passed, CheckState::Failed);
    EXPECT_EQ(FormatSelftest(report),
              "Files         passed: 3 files\n"
              "Pixels        failed: 2 entries\n"
              "    a.raw differs\n"
              "Verdict       Something is not as it should be: Pixels.\n");
    const nlohmann::json json = SelftestToJson(report);
    EXPECT_EQ(json["checks"][1]["state"], "failed");
    EXPECT_EQ(json["checks"][1]["faults"][0], "a.raw differs");
    EXPECT_EQ(json["library"]["sha256"], "abc");
}

TEST(SelftestReport, HasLinesForNamesOnPaper) {
    const std::vector<uint8_t> bytes = SelftestToHtml(MakeReport(CheckState::Passed, CheckState::Failed));
    const std::string html(bytes.begin(), bytes.end());
    EXPECT_THAT(html, HasSubstr("Not whole"));
    EXPECT_THAT(html, HasSubstr("a.raw differs"));
    EXPECT_THAT(html, HasSubstr("box &lt;1&gt;"));
    EXPECT_THAT(html, HasSubstr("Signature"));
    EXPECT_LT(html.find("Not whole"), html.find("a.raw differs"));
}

}  // namespace
}  // namespace vastrelline
