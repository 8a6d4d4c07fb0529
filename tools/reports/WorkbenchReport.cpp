// SPDX-License-Identifier: Apache-2.0
#include "reports/WorkbenchReport.h"

#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <sstream>
#include <string_view>

#include "frames/FrameDifference.h"
#include "messages/Markup.h"
#include "profile/DiffReport.h"
#include "profile/LineDifference.h"
#include "reports/LevelPlot.h"
#include "reports/PairViewer.h"
#include "reports/ReportPage.h"
#include "reports/StillPicture.h"

namespace vastrelline {
namespace {

constexpr size_t kMostLivePixels = size_t{1} << 25;  // of the frames of a page: some 60 megabytes of text
constexpr double kPercent = 100.0;
constexpr int32_t kWhite = 255;

std::string RunTitle(const ReportedRun& run) {
    std::string title = "Run " + std::to_string(run.number);
    if (!run.name.empty()) title.append(", ").append(run.name);
    return title;
}

std::string Milliseconds(double ms) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(ms < 10.0 ? 1 : 0) << ms;
    return text.str();
}

// Of two frames the results differ whatever the settings do.
bool IsOfOneFrame(const WorkbenchReport& report) {
    return report.runs.front().frameName == report.runs.back().frameName;
}

// "run 9", with its frame where that is not the other run's.
std::string RunWords(const WorkbenchReport& report, const ReportedRun& run) {
    std::string words = "run " + std::to_string(run.number);
    if (!IsOfOneFrame(report)) words.append(" on ").append(run.frameName);
    return words;
}

// The library's log counts in whole milliseconds.
std::string StageMilliseconds(const std::optional<double>& ms) {
    if (!ms) return "not known";
    return *ms < 1.0 ? "under 1" : std::to_string(static_cast<int64_t>(*ms));
}

// What the page looks at: the sides of its viewer, and their difference where they are of one size.
struct Sides {
    std::string firstName;
    const Frame* first = nullptr;
    std::string secondName;
    const Frame* second = nullptr;
    std::optional<FrameDifference> difference;
};

Sides SidesOf(const WorkbenchReport& report) {
    const ReportedRun& before = report.runs.front();
    const ReportedRun& after = report.runs.back();
    const bool isOne = report.runs.size() == 1;
    Sides sides{isOne ? "frame as it was read" : RunTitle(before),
                isOne ? before.read.get() : before.result.get(), RunTitle(after), after.result.get(),
                std::nullopt};
    const bool isOneSize = sides.first != nullptr && sides.second != nullptr &&
                           sides.first->width == sides.second->width &&
                           sides.first->height == sides.second->height;
    if (isOneSize) sides.difference = FindDifference(*sides.first, *sides.second);
    return sides;
}

std::string ShareText(const Sides& sides) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(1)
         << kPercent * static_cast<double>(sides.difference->count) /
                static_cast<double>(sides.first->pixels.size())
         << " %";
    return text.str();
}

void AddVerdict(ReportPage& page, const WorkbenchReport& report, const Sides& sides) {
    const ReportedRun& last = report.runs.back();
    const bool isOne = report.runs.size() == 1;
    std::string headline = RunTitle(last);
    if (!IsOfOneFrame(report))
        headline = "Two frames: their pixels tell nothing of the settings";
    else if (!isOne && sides.difference)
        headline =
            sides.difference->count == 0 ? "No pixel changed" : ShareText(sides) + " of the pixels changed";
    else if (!isOne)
        headline = RunTitle(report.runs.front()) + " and " + RunTitle(last);
    std::string sentence =
        isOne ? "Against the saved profile: " : "From " + RunWords(report, report.runs.front());
    if (!isOne) sentence.append(" to ").append(RunWords(report, last)).append(": ");
    sentence.append(report.keys.empty() ? "no setting differs" : SumUpDifferences(report.keys));
    if (!isOne && IsOfOneFrame(report) && sides.difference && sides.difference->count > 0)
        sentence.append("; the largest change is ")
            .append(std::to_string(sides.difference->largest))
            .append(sides.difference->largest == 1 ? " level" : " levels");
    page.SetVerdict(ReportVerdict::Well, headline, sentence.append("."));
}

void AddKeys(ReportPage& page, const WorkbenchReport& report) {
    page.BeginSection("What changed");
    const bool isOne = report.runs.size() == 1;
    if (report.keys.empty()) {
        page.AddParagraph(isOne ? "The run's settings are those of the saved profile."
                                : "Both runs have the same settings.");
        return;
    }
    const std::vector<DifferenceRow> differences = ListDifferences(report.keys);
    const bool hasIdle = std::any_of(differences.begin(), differences.end(),
                                     [](const DifferenceRow& row) { return !row.hasEffect; });
    std::vector<ReportColumn> columns{
        {"Place"},
        {"Key", CellKind::Code},
        {isOne ? "A: saved profile" : "A: run " + std::to_string(report.runs.front().number),
         CellKind::Number},
        {"B: run " + std::to_string(report.runs.back().number), CellKind::Number}};
    if (hasIdle) columns.push_back({"Note"});
    std::vector<ReportRow> rows;
    rows.reserve(differences.size());
    for (const DifferenceRow& row : differences)
        rows.push_back({{row.place, row.key, row.first, row.second, row.hasEffect ? "" : "has no effect"}});
    page.AddTable("Settings that differ, with defaults filled in", columns, rows);
}

void AddPictures(ReportPage& page, const WorkbenchReport& report, const Sides& sides) {
    const bool isOne = report.runs.size() == 1;
    page.BeginSection(isOne ? "Frame and result" : "Before and after");
    if (sides.first == nullptr || sides.second == nullptr) {
        page.AddParagraph(
            "Not both pictures are in the workbench's memory any more. Go back to the runs, and make the "
            "report again.");
        return;
    }
    const bool isLive = sides.first->pixels.size() + sides.second->pixels.size() <= kMostLivePixels;
    if (isLive)
        page.UseViewer();
    else
        page.AddParagraph("The frames are too large for this page: these are small pictures of them.");
    page.AddMarkup(PairViewerMarkup({1, sides.firstName, sides.first, sides.secondName, sides.second,
                                     sides.difference ? sides.difference->largest : 0, isLive}));
    page.AddMarkup("<div class=\"plots\"><figure>" + LevelPlotMarkup(*sides.first, *sides.second) +
                   "<figcaption>How many pixels have each level (heights are square roots)</figcaption>"
                   "</figure></div>\n");
}

void AddStages(ReportPage& page, const std::vector<ReportedRun>& runs) {
    page.BeginSection("Stages and their times");
    std::vector<ReportColumn> columns{{"Stage"}};
    std::vector<const ReportedRun*> shown{&runs.front()};
    if (runs.size() > 1) shown.push_back(&runs.back());
    for (const ReportedRun* const run : shown)
        columns.push_back({"Run " + std::to_string(run->number) + ", ms", CellKind::Number});
    // Stages of one name are the first, the second and so on of both runs.
    std::vector<ReportRow> rows;
    std::vector<size_t> usedOfLast;
    for (const auto& [title, ms] : runs.front().stages) {
        ReportRow row{{title, StageMilliseconds(ms)}};
        if (shown.size() > 1) {
            const auto& stages = runs.back().stages;
            size_t place = 0;
            while (place < stages.size() &&
                   (stages[place].first != title ||
                    std::find(usedOfLast.begin(), usedOfLast.end(), place) != usedOfLast.end()))
                ++place;
            if (place < stages.size()) usedOfLast.push_back(place);
            row.cells.push_back(place < stages.size() ? StageMilliseconds(stages[place].second)
                                                      : "does not run");
        }
        rows.push_back(std::move(row));
    }
    if (shown.size() > 1)
        for (size_t i = 0; i < runs.back().stages.size(); ++i)
            if (std::find(usedOfLast.begin(), usedOfLast.end(), i) == usedOfLast.end())
                rows.push_back({{runs.back().stages[i].first, "does not run",
                                 StageMilliseconds(runs.back().stages[i].second)}});
    ReportRow whole{{"The whole run"}};
    for (const ReportedRun* const run : shown) whole.cells.push_back(Milliseconds(run->elapsedMs));
    rows.push_back(std::move(whole));
    page.AddTable("Milliseconds by the log", columns, rows);
}

void AddLines(ReportPage& page, const WorkbenchReport& report) {
    page.BeginSection("Changed lines of the profile");
    const bool isOne = report.runs.size() == 1;
    const ReportedRun& last = report.runs.back();
    const std::string difference = UnifiedDifference(
        isOne ? report.savedText : report.runs.front().profileText, last.profileText,
        report.profileName + (isOne ? ", saved" : ", run " + std::to_string(report.runs.front().number)),
        report.profileName + ", run " + std::to_string(last.number));
    if (difference.empty()) {
        page.AddParagraph("The text is the same.");
        return;
    }
    std::string markup =
        "<pre class=\"lines\" tabindex=\"0\" role=\"group\" aria-label=\"Changed lines of the profile\">";
    for (const std::string_view line : SplitLines(difference)) {
        const bool isHead = line.starts_with("---") || line.starts_with("+++") || line.starts_with("@@");
        const char* const kind = isHead                  ? "head"
                                 : line.starts_with("-") ? "gone"
                                 : line.starts_with("+") ? "new"
                                                         : "same";
        markup.append("<span class=\"")
            .append(kind)
            .append("\">")
            .append(EscapeMarkup(line))
            .append("</span>\n");
    }
    page.AddMarkup(markup + "</pre>\n");
}

void AddFindings(ReportPage& page, const WorkbenchReport& report) {
    page.BeginSection("What lint says of the profile");
    if (report.findings.empty()) {
        page.AddParagraph("Nothing.");
        return;
    }
    std::vector<ReportRow> rows;
    for (const Finding& finding : report.findings)
        rows.push_back({{std::string(SeverityName(finding.severity)),
                         finding.line == 0 ? std::string("whole file") : std::to_string(finding.line),
                         finding.text, finding.rule},
                        finding.severity == Severity::Error     ? std::optional(ReportVerdict::Failed)
                        : finding.severity == Severity::Warning ? std::optional(ReportVerdict::Findings)
                                                                : std::nullopt});
    page.AddTable(
        "Profile of run " + std::to_string(report.runs.back().number),
        {{"Severity"}, {"Line", CellKind::Number}, {"What, and what to do"}, {"Rule", CellKind::Code}}, rows);
}

std::string PictureMarkup(const ReportedRun& run) {
    if (run.picture == nullptr) return {};
    const SmallPicture& small = *run.picture;
    const Frame frame{small.width, small.height, {small.grey.begin(), small.grey.end()}};
    const StillPicture still = DrawStill(frame, {0, kWhite}, kSmallPictureSide);
    std::ostringstream out;
    out << "<img src=\"" << still.source << "\" width=\"" << still.width << "\" height=\"" << still.height
        << "\" alt=\"Small picture of run " << run.number << "\">";
    return out.str();
}

void AddRuns(ReportPage& page, const WorkbenchReport& report) {
    page.BeginSection("What was run");
    std::string markup = "<ol class=\"timeline\">\n";
    for (const ReportedRun& run : report.runs)
        markup.append("<li>")
            .append(PictureMarkup(run))
            .append("<strong>")
            .append(EscapeMarkup(RunTitle(run)))
            .append("</strong><br>")
            .append(EscapeMarkup(run.change))
            .append("</li>\n");
    page.AddMarkup(markup + "</ol>\n");
    std::vector<ReportRow> rows;
    std::vector<ReportRow> hashes;
    for (const ReportedRun& run : report.runs) {
        std::string off;
        for (const std::string& key : run.offKeys) off.append(off.empty() ? "" : ", ").append(key);
        rows.push_back({{RunTitle(run), run.frameName, run.section, run.when, Milliseconds(run.elapsedMs),
                         off.empty() ? "none" : off}});
        hashes.push_back({{RunTitle(run), run.profileHash, run.resultHash}});
    }
    page.AddTable("Runs",
                  {{"Run"},
                   {"Frame", CellKind::Code},
                   {"Section", CellKind::Code},
                   {"Time"},
                   {"Took, ms", CellKind::Number},
                   {"Switched off", CellKind::Code}},
                  rows);
    page.AddTable(
        "SHA-256",
        {{"Run"}, {"Of the profile's bytes", CellKind::Code}, {"Of the result's levels", CellKind::Code}},
        hashes);
    std::vector<ReportRow> facts{{{"Profile", report.profileName}},
                                 {{"Tool", "vastrelline " + report.version}}};
    if (!report.libraryHash.empty()) facts.push_back({{"SHA-256 of its library", report.libraryHash}});
    facts.push_back({{"Report made", report.made}});
    page.AddFacts("How this was made", facts);
}

}  // namespace

std::vector<uint8_t> MakeWorkbenchReport(const WorkbenchReport& report) {
    const Sides sides = SidesOf(report);
    ReportPage page(report.profileName + " on " + report.runs.back().frameName);
    AddVerdict(page, report, sides);
    AddKeys(page, report);
    AddPictures(page, report, sides);
    AddLines(page, report);
    AddStages(page, report.runs);
    AddFindings(page, report);
    AddRuns(page, report);
    return page.Bytes();
}

}  // namespace vastrelline
