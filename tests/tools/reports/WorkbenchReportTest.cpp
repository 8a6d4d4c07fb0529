// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "reports/WorkbenchReport.h"

namespace vastrelline {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string PageOf(const WorkbenchReport& report) {
    const std::vector<uint8_t> bytes = MakeWorkbenchReport(report);
    return {bytes.begin(), bytes.end()};
}

std::shared_ptr<const Frame> Levels(std::vector<uint16_t> levels) {
    return std::make_shared<const Frame>(Frame{2, 2, std::move(levels)});
}

ReportedRun MakeRun(uint64_t number, const std::string& text, std::vector<uint16_t> result) {
    ReportedRun run;
    run.number = number;
    run.when = "2026-11-23 10:00 UTC";
    run.frameName = "tooth.raw";
    run.section = "General";
    run.change = "first";
    run.profileText = text;
    run.profileHash = "p" + std::to_string(number);
    run.resultHash = "r" + std::to_string(number);
    run.elapsedMs = 38.0;
    run.stages = {{"CLAHE", 11.0}, {"Median", std::nullopt}};
    run.read = Levels({1, 2, 3, 4});
    run.result = Levels(std::move(result));
    return run;
}

WorkbenchReport TwoRuns() {
    WorkbenchReport report;
    report.profileName = "p.ini";
    report.savedText = "[A]\nK=0\n";
    report.runs = {MakeRun(9, "[A]\nK=1\n", {10, 20, 30, 40}), MakeRun(14, "[A]\nK=2\n", {10, 20, 30, 47})};
    report.version = "1.0.0";
    report.made = "2026-11-23 11:00 UTC";
    return report;
}

TEST(WorkbenchReport, TellsFirstWhatChanged) {
    const std::string page = PageOf(TwoRuns());
    // One of four pixels, from 40 to 47.
    EXPECT_THAT(
        page, AllOf(HasSubstr("25.0 % of the pixels changed"),
                    HasSubstr("From run 9 to run 14: no setting differs; the largest change is 7 levels.")));
    EXPECT_THAT(page, HasSubstr("data-first=\"A: Run 9\" data-second=\"B: Run 14\""));
    EXPECT_THAT(page, AllOf(HasSubstr("<span class=\"gone\">-K=1</span>"),
                            HasSubstr("<span class=\"new\">+K=2</span>"),
                            HasSubstr("<span class=\"head\">--- p.ini, run 9</span>")));
    EXPECT_LT(page.find("What changed"), page.find("Before and after"));
    EXPECT_LT(page.find("Before and after"), page.find("What was run"));
    EXPECT_THAT(page, HasSubstr("r14"));
    EXPECT_THAT(page, HasSubstr("p9"));
    EXPECT_THAT(page, HasSubstr("What lint says of the profile</h2>\n<p>Nothing.</p>"));
}

TEST(WorkbenchReport, ShowsOneRunAgainstItsFrameAndTheSavedProfile) {
    WorkbenchReport report = TwoRuns();
    report.runs.erase(report.runs.begin());
    report.runs[0].name = "sharper";
    const std::string page = PageOf(report);
    EXPECT_THAT(page, HasSubstr("data-first=\"A: frame as it was read\" data-second=\"B: Run 14, sharper\""));
    EXPECT_THAT(page, AllOf(HasSubstr("-K=0"), HasSubstr("+K=2")));
    EXPECT_THAT(page, HasSubstr("Against the saved profile: no setting differs."));
}

TEST(WorkbenchReport, DoesNotCountPixelsOfTwoFramesAsChanged) {
    WorkbenchReport report = TwoRuns();
    report.runs[0].frameName = "molar.raw";
    const std::string page = PageOf(report);
    EXPECT_THAT(page, HasSubstr("Two frames: their pixels tell nothing of the settings"));
    EXPECT_THAT(page, HasSubstr("From run 9 on molar.raw to run 14 on tooth.raw: no setting differs."));
    EXPECT_THAT(page, AllOf(Not(HasSubstr("of the pixels changed")), Not(HasSubstr("the largest change"))));
}

TEST(WorkbenchReport, SetsTimesOfStagesSideBySide) {
    WorkbenchReport report = TwoRuns();
    report.runs[1].stages = {{"CLAHE", 8.0}, {"CLAHE", 0.0}};
    const std::string page = PageOf(report);
    EXPECT_THAT(page, HasSubstr("<td>CLAHE</td><td class=\"number\">11</td><td class=\"number\">8</td>"));
    EXPECT_THAT(
        page,
        HasSubstr(
            "<td>Median</td><td class=\"number\">not known</td><td class=\"number\">does not run</td>"));
    EXPECT_THAT(
        page,
        HasSubstr("<td>CLAHE</td><td class=\"number\">does not run</td><td class=\"number\">under 1</td>"));
}

TEST(WorkbenchReport, SaysWhatIsNotInMemory) {
    WorkbenchReport report = TwoRuns();
    report.runs[0].result = nullptr;
    report.runs[0].picture = std::make_shared<const SmallPicture>(SmallPicture{1, 1, {128}});
    const std::string page = PageOf(report);
    EXPECT_THAT(page, HasSubstr("Not both pictures are in the workbench&#39;s memory any more"));
    EXPECT_THAT(page, HasSubstr("alt=\"Small picture of run 9\""));
    EXPECT_THAT(page, Not(HasSubstr("of the pixels changed")));
}

TEST(WorkbenchReport, TakesEveryTextForAText) {
    WorkbenchReport report = TwoRuns();
    report.profileName = "<script>";
    report.runs[1].name = "<b>";
    report.runs[1].change = "\"<i>\"";
    report.runs[1].profileText = "<u>\n";
    report.findings = {{Severity::Warning, "<script>", 2, 1, "<s>", "unknown-key"}};
    const std::string page = PageOf(report);
    for (const char* const raw : {"<b>", "<i>", "<u>", "<s>"}) EXPECT_THAT(page, Not(HasSubstr(raw)));
    EXPECT_THAT(page, HasSubstr("&lt;s&gt;"));
    EXPECT_THAT(page, HasSubstr("<title>&lt;script&gt; on tooth.raw</title>"));
}

}  // namespace
}  // namespace vastrelline
